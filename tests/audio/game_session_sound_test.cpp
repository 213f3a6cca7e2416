// The whole game with real sound output (SDL's disk driver writes the mix to a
// file in real time): through the menus, a jump, a star and the finish, each
// event must sound, in that order, with the track music under the drive and
// the win music after it. Every sound is a tone of its own pitch, so the mix
// can be taken apart again by frequency.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"
#include "platform/KeyboardDevice.h"
#include "platform/headless/HeadlessPlatform.h"
#include "platform/sdl/SdlAudio.h"
#include "shell/frmGame.h"
#include "tests/audio/AudioTestSupport.h"

namespace qb {
namespace {

namespace fs = std::filesystem;
using test::SleepMs;

constexpr double TransitHz = 600, JumpHz = 1200, StarHz = 2400, TrackHz = 300, WinHz = 450;

// Strength of one frequency in a stretch of samples (the Goertzel filter).
double Strength(const std::vector<float>& s, double hz) {
    if (s.empty()) return 0;
    const double w = 2.0 * 3.14159265358979 * hz / test::kRate;
    const double coeff = 2.0 * std::cos(w);
    double q1 = 0, q2 = 0;
    for (float v : s) {
        const double q0 = coeff * q1 - q2 + v;
        q2 = q1;
        q1 = q0;
    }
    return std::sqrt(q1 * q1 + q2 * q2 - coeff * q1 * q2) / static_cast<double>(s.size());
}

std::string SessionFolder() {
    const std::string dir = test::ToneGameFolder("session", 0.15);
    test::WriteToneWav(dir + "sfx/transit.wav", {{TransitHz, 0.15}}, 0.5);
    test::WriteToneWav(dir + "sfx/Jump.wav", {{JumpHz, 0.15}}, 0.5);
    test::WriteToneWav(dir + "sfx/getstar.wav", {{StarHz, 0.15}}, 0.5);
    test::WriteToneWav(dir + "music/track01.ogg", {{TrackHz, 20.0}}, 0.3);
    test::WriteToneWav(dir + "music/winlevel.ogg", {{WinHz, 3.0}}, 0.3);
    for (const char* sub : {"textures", "backgrounds", "models", "skins", "misc", "gui"})
        fs::create_directory_symlink(fs::path(QUORBIT_GAME_DIR) / sub, fs::path(dir) / sub);
    // A short straight road with a star on it and the finish at its end.
    TrackSource src;
    std::vector<SourceError> errors;
    const std::string text =
        "track 1 sound check\n gravity 10\n background \"_default.jpg\"\n texture wall \"wall.bmp\"\n"
        " texture road \"road.bmp\"\n texture flag \"finish.bmp\"\n"
        " block -2 0 -5 4 1 55 tex wall wall wall road\n"
        " block -2 0 50 4 1 4 tex wall wall wall flag finish\n"
        " star 0 1 38\n";
    EXPECT_TRUE(ParseTrackSource(text, "sound.trk", src, errors));
    const std::vector<uint8_t> bytes = EncodeLevelFile(JoinTrackSources({src}));
    std::ofstream(dir + "levels.dat", std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    // Music at full volume, effects at full volume.
    const unsigned char options[12] = {100, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0};
    std::ofstream(dir + "options.dat", std::ios::binary).write(reinterpret_cast<const char*>(options), 12);
    return dir;
}

TEST(GameSounds, MenusAJumpAStarAndTheFinishSoundInOrder) {
    const std::string dir = SessionFolder();
    const std::string outFile = dir + "mixed.raw";
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", outFile.c_str(), 1);
    HeadlessPlatform hp(dir);
    SdlAudio audio;
    Platform platform{hp.graphics, hp.keyboard, hp.gamepad, hp.clock,
                      hp.window,   audio,       hp.system,  hp.platform.paths};
    frmGame game(platform);
    ASSERT_TRUE(game.startup());
    ASSERT_EQ(game.GameState, MainMenu);

    auto mark = [&] { return test::FramesWritten(outFile); };
    struct Event {
        const char* what;
        double hz;
        size_t at;
    };
    std::vector<Event> events;
    // One menu pass with exactly these keys down.
    auto pass = [&](std::initializer_list<uint8_t> keys) {
        hp.keyboard.setOnly(keys);
        game.HandleKeyboard();
    };

    pass({});
    events.push_back({"main menu -> zones", TransitHz, mark()});
    pass({DIK_RETURN});
    ASSERT_EQ(game.GameState, ZoneChoice);
    SleepMs(500);
    pass({});
    events.push_back({"zones -> tracks", TransitHz, mark()});
    pass({DIK_RETURN});
    ASSERT_EQ(game.GameState, TrackChoice);
    SleepMs(500);
    pass({});
    events.push_back({"start", TransitHz, mark()});
    pass({DIK_RETURN});
    ASSERT_EQ(game.GameState, Playing);
    SleepMs(500);

    bool jumped = false, starred = false;
    for (int frame = 0; frame < 400 && game.GameState == Playing; ++frame) {
        const bool jump = !jumped && frame >= 15 && game.OnGround;
        hp.keyboard.setOnly(jump ? std::initializer_list<uint8_t>{DIK_UP, DIK_SPACE}
                                 : std::initializer_list<uint8_t>{DIK_UP});
        const size_t before = mark();
        const int32_t stars = game.StarsCollected;
        game.playFrame();
        if (jump) {
            jumped = true;
            events.push_back({"jump", JumpHz, before});
        }
        if (!starred && game.StarsCollected > stars) {
            starred = true;
            events.push_back({"star", StarHz, before});
        }
        SleepMs(40);
    }
    ASSERT_TRUE(jumped);
    ASSERT_TRUE(starred);
    ASSERT_TRUE(game.GameState == NameEntry || game.GameState == MadeIt) << game.GameState;
    events.push_back({"finish", WinHz, mark()});
    SleepMs(800);
    game.shutdown();

    // Read back the mix and check each event's window.
    const test::Capture mix = test::ReadCapture(outFile);
    const size_t window = 400 * test::kRate / 1000;
    size_t last = 0;
    for (const Event& e : events) {
        SCOPED_TRACE(e.what);
        EXPECT_GE(e.at, last);  // in order
        last = e.at;
        const std::vector<float> s = mix.left(e.at, e.at + window);
        const double want = Strength(s, e.hz);
        EXPECT_GT(want, 0.01) << "nothing at " << e.hz << " Hz";
        if (e.hz == WinHz) continue;
        for (double other : {TransitHz, JumpHz, StarHz}) {
            if (other == e.hz) continue;
            EXPECT_GT(want, 3 * Strength(s, other)) << other << " Hz too";
        }
    }
    // The track music runs under the drive; after the finish the win music
    // has taken its place.
    const std::vector<float> drive = mix.left(events[3].at, events[3].at + window);
    EXPECT_GT(Strength(drive, TrackHz), 0.01);
    const size_t end = events.back().at + window;
    const std::vector<float> won = mix.left(end, end + window);
    EXPECT_GT(Strength(won, WinHz), 0.01);
    EXPECT_LT(Strength(won, TrackHz), Strength(won, WinHz) / 5);
    fs::remove_all(dir);
}

}  // namespace
}  // namespace qb
