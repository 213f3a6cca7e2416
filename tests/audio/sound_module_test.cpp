// The sound module's rules, on the recording audio device: what reaches the
// device for each call, the mute flags, and the volumes saved to options.dat.
#include <gtest/gtest.h>

#include <cmath>

#include "audio/DXmusicSFX.h"
#include "persist/AtomicFile.h"
#include "platform/headless/HeadlessPlatform.h"
#include "tests/audio/AudioTestSupport.h"

namespace qb {
namespace {

using Log = std::vector<std::string>;

// What switching the music does first: every piece stopped and rewound.
Log StopEveryPiece() {
    Log log;
    for (int piece = 1; piece <= 7; ++piece) log.push_back("stopmusic " + std::to_string(piece));
    return log;
}

struct Rig {
    std::string dir;
    HeadlessAudio device;
    optionsDat options;
    QuorbitDebug debug;
    DXmusicSFX sound;
    explicit Rig(const std::string& name, std::string folder = "")
        : dir(folder.empty() ? test::ToneGameFolder(name) : folder),
          options(dir + "options.dat"),
          sound(device, options, debug, dir) {}
    bool start(int32_t music = 0, int32_t sfx = 0) {
        options.Options.MusicVolume = music;
        options.Options.SfxVolume = sfx;
        const bool ok = sound.InitSound();
        device.log.clear();
        return ok;
    }
    OptionsRecord saved() const {
        const auto bytes = ReadWholeFile(dir + "options.dat");
        return optionsDat::Decode(bytes.data(), bytes.size());
    }
};

TEST(SoundModule, StartUpLoadsEveryEffectAndPieceAndAppliesTheSavedVolumes) {
    Rig r("startup");
    ASSERT_TRUE(r.start(40, -600));
    EXPECT_TRUE(r.sound.SoundReady);
    // Eight effects (there is no number 2) and seven pieces, from their folders.
    EXPECT_EQ(std::tuple(r.device.effects.size(), r.device.effects.count(2), r.device.effects.at(1),
                         r.device.effects.at(9)),
              std::tuple(8u, 0u, r.dir + "sfx/Jump.wav", r.dir + "sfx/transit.wav"));
    for (int piece = 1; piece <= 6; ++piece)
        EXPECT_EQ(r.device.music[piece], r.dir + "music/track0" + std::to_string(piece) + ".ogg");
    EXPECT_EQ(r.device.music[7], r.dir + "music/winlevel.ogg");
    EXPECT_FLOAT_EQ(r.device.musicGain, 0.40f);
    EXPECT_NEAR(r.device.effectGain[4], std::pow(10.0, -600.0 / 2000.0), 1e-6);
    EXPECT_EQ(r.device.effectGain.count(8), 0u) << "the roll-over blip keeps its full level";
    EXPECT_EQ(std::tuple(r.sound.SfxVolume, r.sound.MusicVolume, r.sound.MusicMuted, r.sound.SfxMuted),
              std::tuple(-600, 40, false, false));
}

TEST(SoundModule, FirstRunWritesTwelveZeroBytesOnceSoundStarts) {
    Rig r("firstrun");
    std::filesystem::remove(r.dir + "options.dat");
    ASSERT_TRUE(r.start());
    const auto bytes = ReadWholeFile(r.dir + "options.dat");
    EXPECT_EQ(bytes, std::vector<unsigned char>(12, 0));
    EXPECT_TRUE(r.sound.MusicMuted) << "music volume 0 on a first run means no music";
}

TEST(SoundModule, WithoutADeviceOrWithAMissingEffectEverythingStaysSilent) {
    Rig noDevice("nodevice");
    noDevice.device.available = false;
    EXPECT_FALSE(noDevice.start(100, 0));

    Rig missing("missing");
    std::filesystem::remove(missing.dir + "sfx/bouncepad.wav");
    EXPECT_FALSE(missing.start(100, 0));

    for (Rig* r : {&noDevice, &missing}) {
        EXPECT_FALSE(r->sound.SoundReady);
        for (int16_t n = 0; n <= 10; ++n) r->sound.PlayEffect(n);
        r->sound.StopFallSound();
        r->sound.PlayMusic(MusicTrack);
        r->sound.PlayMusic(MusicWin);
        r->sound.StopMusic();
        r->sound.PauseMusic();
        r->sound.ResumeMusic();
        r->sound.SetSfxVolume(-1000);
        r->sound.SetMusicVolume(50);
        EXPECT_EQ(r->device.log, Log{});
        EXPECT_TRUE(r->device.effectGain.empty());
        // The settings are still remembered and saved.
        EXPECT_EQ(r->saved().SfxVolume, -1000);
        EXPECT_EQ(r->saved().MusicVolume, 50);
    }
}

TEST(SoundModule, EachEffectFollowsItsOwnRestartRule) {
    Rig r("restart");
    ASSERT_TRUE(r.start());
    for (int16_t n : {1, 4, 6, 7, 8, 9}) {
        r.device.log.clear();
        r.sound.PlayEffect(n);
        const std::string s = std::to_string(n);
        EXPECT_EQ(r.device.log, (Log{"stop " + s, "rewind " + s, "play " + s})) << "effect " << n;
    }
    r.device.log.clear();
    r.sound.PlayEffect(SfxFall);
    EXPECT_EQ(r.device.log, (Log{"rewind 3", "play 3"}));
    r.device.log.clear();
    r.sound.PlayEffect(SfxBlowUp);
    EXPECT_EQ(r.device.log, (Log{"play 5"})) << "a sounding blow-up is never restarted";
    r.device.log.clear();
    r.sound.StopFallSound();
    EXPECT_EQ(r.device.log, (Log{"stop 3"}));
    // Numbers without an effect play nothing.
    r.device.log.clear();
    for (int16_t n : {-1, 0, 2, 10, 32767}) r.sound.PlayEffect(n);
    EXPECT_EQ(r.device.log, Log{});
}

TEST(SoundModule, EffectVolumeMutesAtTheBottomAndStaysInItsRange) {
    Rig r("sfxvolume");
    ASSERT_TRUE(r.start());
    r.sound.SetSfxVolume(-2000);
    EXPECT_TRUE(r.sound.SfxMuted);
    EXPECT_EQ(r.saved().SfxVolume, -2000);
    r.sound.PlayEffect(SfxJump);
    r.sound.PlayEffect(SfxRollover);  // muting silences the roll-over too
    EXPECT_EQ(r.device.log, Log{});

    r.sound.SetSfxVolume(-1800);
    EXPECT_FALSE(r.sound.SfxMuted);
    EXPECT_NEAR(r.device.effectGain[1], std::pow(10.0, -0.9), 1e-6);
    r.sound.PlayEffect(SfxJump);
    EXPECT_EQ(r.device.log.back(), "play 1");

    // Out of range: the nearest end, in play and in the file.
    r.sound.SetSfxVolume(200);
    EXPECT_EQ(r.sound.SfxVolume, 0);
    EXPECT_FALSE(r.sound.SfxMuted);
    EXPECT_NEAR(r.device.effectGain[1], 1.0, 1e-6);
    EXPECT_EQ(r.saved().SfxVolume, 0);
    r.sound.SetSfxVolume(-2200);
    EXPECT_TRUE(r.sound.SfxMuted);
    EXPECT_EQ(r.sound.SfxVolume, -2000);
    EXPECT_EQ(r.saved().SfxVolume, -2000);
}

TEST(SoundModule, TheWinPieceReplacesTheTrackMusicAndPlaysOnce) {
    Rig r("winpiece");
    ASSERT_TRUE(r.start(60, 0));
    r.sound.PlayMusic(MusicTrack);
    r.device.log.clear();
    r.sound.PlayMusic(MusicWin);
    Log expected = StopEveryPiece();
    expected.push_back("music 7");
    EXPECT_EQ(r.device.log, expected);
    EXPECT_EQ(r.sound.CurrentMusic, 7);

    // Pause and resume follow the piece last started.
    r.device.log.clear();
    r.sound.PauseMusic();
    r.sound.ResumeMusic();
    EXPECT_EQ(r.device.log, (Log{"pause", "music 7"}));

    // A zone's piece loops and resumes looping.
    r.device.log.clear();
    r.sound.PlayMusic(5);
    EXPECT_EQ(r.device.log.back(), "music 5 loop");
    r.device.log.clear();
    r.sound.PauseMusic();
    r.sound.ResumeMusic();
    EXPECT_EQ(r.device.log, (Log{"pause", "music 5 loop"}));

    // Any other number only stops the music and is remembered.
    r.device.log.clear();
    r.sound.PlayMusic(8);
    EXPECT_EQ(r.device.log, StopEveryPiece());
    EXPECT_EQ(r.sound.CurrentMusic, 8);
    r.sound.PauseMusic();
    r.sound.ResumeMusic();
    EXPECT_EQ(r.device.log.size(), 7u);
}

TEST(SoundModule, EveryZoneHasItsPieceAndOtherZonesFallBackToTheFirst) {
    for (int zone = 1; zone <= 6; ++zone) EXPECT_EQ(DXmusicSFX::ZoneMusic(zone), zone);
    EXPECT_EQ(DXmusicSFX::ZoneMusic(0), MusicTrack);
    EXPECT_EQ(DXmusicSFX::ZoneMusic(7), MusicTrack) << "the win piece is never a zone's";
    EXPECT_STREQ(DXmusicSFX::MusicFile(3), "music/track03.ogg");
    EXPECT_STREQ(DXmusicSFX::MusicFile(8), "");
}

}  // namespace
}  // namespace qb
