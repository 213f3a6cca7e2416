// What actually comes out of the mixer: the real SDL2_mixer device with SDL's
// disk driver, which writes the mixed output to a file in real time. The
// effects and pieces are test tones, so loudness and pitch say what sounded.
// Which calls reach the device at all (effect numbers, a failed start) is
// pinned on the recording device in sound_module_test.
#include <gtest/gtest.h>

#include <cstdlib>

#include "audio/DXmusicSFX.h"
#include "persist/optionsDat.h"
#include "platform/AssetLimits.h"
#include "platform/QuorbitDebug.h"
#include "platform/sdl/SdlAudio.h"
#include "tests/audio/AudioTestSupport.h"

namespace qb {
namespace {

using test::SleepMs;

struct DiskRig {
    std::string dir;
    std::string outFile;
    SdlAudio device;
    optionsDat options;
    QuorbitDebug debug;
    DXmusicSFX sound;
    explicit DiskRig(const std::string& name)
        : dir(test::ToneGameFolder(name)),
          outFile(dir + "mixed.raw"),
          options(dir + "options.dat"),
          sound(device, options, debug, dir) {
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", outFile.c_str(), 1);
    }
    bool start(int32_t music, int32_t sfx) {
        options.Options.MusicVolume = music;
        options.Options.SfxVolume = sfx;
        return sound.InitSound();
    }
    // Frames written so far: everything the mixer produces later lies beyond.
    size_t mark() const { return test::FramesWritten(outFile); }
    test::Capture capture() const { return test::ReadCapture(outFile); }
    // The output from `from` for `ms` milliseconds, once it has been written.
    std::vector<float> after(size_t from, int ms) const {
        const size_t to = from + static_cast<size_t>(ms) * test::kRate / 1000;
        for (int wait = 0; wait < 100 && mark() < to; ++wait) SleepMs(10);
        return capture().left(from, to);
    }
};

constexpr size_t ms(int n) {
    return static_cast<size_t>(n) * test::kRate / 1000;
}

TEST(SdlOutput, TheRolloverKeepsFullLevelWhileOtherEffectsAreTurnedDown) {
    DiskRig r("rollover");
    ASSERT_TRUE(r.start(0, -1800));
    size_t m = r.mark();
    r.sound.PlayEffect(SfxJump);
    const float jump = test::PeakOf(r.after(m + ms(60), 150));
    SleepMs(200);
    m = r.mark();
    r.sound.PlayEffect(SfxRollover);
    const float rollover = test::PeakOf(r.after(m + ms(60), 150));
    EXPECT_NEAR(rollover, 0.5f, 0.05f);
    EXPECT_NEAR(jump, 0.5f * std::pow(10.0f, -0.9f), 0.02f);
}

TEST(SdlOutput, RestartingEffectsStartOverButABlowUpRunsOn) {
    DiskRig r("restart");
    // Each effect: 150 ms low, then high. Replaying at 250 ms tells the rules apart.
    for (const char* f : {"getstar.wav", "blowup.wav"})
        test::WriteToneWav(r.dir + "sfx/" + f, {{500, 0.15}, {1500, 0.3}}, 0.5);
    ASSERT_TRUE(r.start(0, 0));
    for (int16_t effect : {SfxGetStar, SfxBlowUp}) {
        r.sound.PlayEffect(effect);
        SleepMs(250);
        const size_t m = r.mark();
        r.sound.PlayEffect(effect);
        const double hz = test::ToneHz(r.after(m + ms(50), 60));
        if (effect == SfxGetStar)
            EXPECT_NEAR(hz, 500.0, 40.0) << "the star chime starts again from its beginning";
        else
            EXPECT_NEAR(hz, 1500.0, 80.0) << "a blow-up still sounding goes on";
        SleepMs(450);
    }
}

TEST(SdlOutput, TheWinPieceStopsTheTrackMusicAndPlaysOnce) {
    DiskRig r("winpiece");
    ASSERT_TRUE(r.start(100, 0));
    size_t m = r.mark();
    r.sound.PlayMusic(MusicTrack);
    EXPECT_NEAR(test::ToneHz(r.after(m + ms(60), 150)), 440.0, 30.0);
    m = r.mark();
    r.sound.PlayMusic(MusicWin);
    EXPECT_NEAR(test::ToneHz(r.after(m + ms(60), 150)), 2000.0, 80.0);
    // The 300 ms win piece is over; the track music must not come back.
    SleepMs(250);
    EXPECT_EQ(test::PeakOf(r.after(r.mark(), 150)), 0.0f);
}

TEST(SdlOutput, MutedMusicStaysSilentAndComesBackFromTheStart) {
    DiskRig r("musicmute");
    ASSERT_TRUE(r.start(100, 0));
    size_t m = r.mark();
    r.sound.PlayMusic(MusicTrack);
    const float full = test::PeakOf(r.after(m + ms(50), 150));
    SleepMs(300);  // into the second, higher part of the piece
    r.sound.SetMusicVolume(0);
    SleepMs(60);
    m = r.mark();
    r.sound.PlayMusic(MusicTrack);
    EXPECT_EQ(test::PeakOf(r.after(m + ms(50), 100)), 0.0f);

    r.sound.SetMusicVolume(10);
    m = r.mark();
    r.sound.PlayMusic(MusicTrack);
    const auto again = r.after(m + ms(60), 150);
    EXPECT_NEAR(test::ToneHz(again), 440.0, 30.0) << "from its beginning";
    EXPECT_NEAR(test::PeakOf(again) / full, 0.10f, 0.03f);
}

TEST(SdlOutput, PauseHoldsTheMusicAndResumeGoesOn) {
    DiskRig r("pause");
    ASSERT_TRUE(r.start(100, 0));
    r.sound.PlayMusic(MusicTrack);
    SleepMs(100);
    r.sound.PauseMusic();
    SleepMs(60);
    EXPECT_EQ(test::PeakOf(r.after(r.mark(), 100)), 0.0f);
    r.sound.ResumeMusic();
    SleepMs(400);  // 100 ms played before the pause + 400 ms: past the 300 ms change
    EXPECT_NEAR(test::ToneHz(r.after(r.mark(), 100)), 880.0, 40.0);
}

TEST(SdlOutput, ATruncatedEffectCountsAsBroken) {
    DiskRig r("cuteffect");
    const std::string fall = r.dir + "sfx/fall.wav";
    std::string why;
    ASSERT_TRUE(CheckWaveFile(fall, why)) << why;
    std::filesystem::resize_file(fall, std::filesystem::file_size(fall) - 2);
    EXPECT_FALSE(CheckWaveFile(fall, why));
    EXPECT_NE(why.find("data"), std::string::npos) << why;
    EXPECT_FALSE(r.start(100, 0));
}

TEST(SdlOutput, AMissingMusicFileSilencesOnlyThatPiece) {
    DiskRig r("missingmusic");
    std::filesystem::remove(r.dir + "music/winlevel.ogg");
    ASSERT_TRUE(r.start(100, 0));
    size_t m = r.mark();
    r.sound.PlayMusic(MusicWin);
    EXPECT_EQ(test::PeakOf(r.after(m, 150)), 0.0f);
    m = r.mark();
    r.sound.PlayMusic(MusicTrack);
    EXPECT_NEAR(test::ToneHz(r.after(m + ms(50), 150)), 440.0, 30.0);
}

TEST(SdlOutput, TheGeneratedPiecesPlay) {
    DiskRig r("generated");
    for (const char* f : {"track01.ogg", "winlevel.ogg"})
        std::filesystem::copy_file(std::string(QUORBIT_GAME_DIR) + "/music/" + f, r.dir + "music/" + f,
                                   std::filesystem::copy_options::overwrite_existing);
    ASSERT_TRUE(r.start(100, 0));
    for (int16_t piece : {MusicTrack, MusicWin}) {
        const size_t m = r.mark();
        r.sound.PlayMusic(piece);
        EXPECT_GT(test::Rms(r.after(m + ms(50), 250)), 0.02) << "piece " << piece;
    }
}

TEST(SdlOutput, NoSoundDeviceMeansNoStart) {
    setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
    SdlAudio device;
    EXPECT_FALSE(device.open());
    device.playEffect(1);
    device.playMusic(1, true);
    device.pauseMusic();
    device.close();
}

}  // namespace
}  // namespace qb
