// The main loop: play frames paced on the clock (with smooth motion drawing
// between them, as the game starts), the mouse ignored in play, and a race
// frozen while another window has the focus. Idle menus: smooth_motion_test.
#include <gtest/gtest.h>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "tests/physics/DriveTest.h"
#include "tests/shell/TestGame.h"
#include "world/clsMovingPlatform.h"

namespace qb {
namespace {

using test::TestGame;

// Starts the game, puts it straight into play and records when each play
// frame began. Every frame "takes" durationMs(frameIndex) of fake time.
struct PacedRun {
    TestGame t;
    std::vector<int64_t> frameStarts;  // microseconds
    int64_t lastSeen = -1;

    explicit PacedRun(const char* name) : t(name) {}

    void run(int frames, const std::function<double(int)>& durationMs) {
        frmGame& g = *t.game;
        ASSERT_TRUE(g.startup());
        g.GameState = Playing;
        t.hp.window.onProcess = [&, frames](WindowEvents& w) {
            if (g.GameState != Playing) return;
            if (g.FrameStartCount != lastSeen && g.RaceFrames == static_cast<int>(frameStarts.size())) {
                lastSeen = g.FrameStartCount;
                frameStarts.push_back(g.FrameStartCount);
                t.hp.clock.advanceMs(durationMs(static_cast<int>(frameStarts.size()) - 1));
            }
            if (static_cast<int>(frameStarts.size()) > frames) w.onClose();
        };
        g.runMainLoop();
    }
};

// A frame longer than the interval is followed at once; short frames start
// just over the interval apart; a stall leaves no debt to catch up on.
TEST(FramePacing, FramesStartAnIntervalApartOrAtOnceAfterALongOne) {
    struct Case {
        const char* name;
        std::function<double(int)> durationMs;
        int64_t stalledGap;  // the gap after frame 2, in microseconds (0: a normal one)
    };
    const Case cases[] = {
        {"slowframes", [](int) { return 60.0; }, 0},
        {"fastframes", [](int) { return 10.0; }, 0},
        {"stall", [](int i) { return i == 2 ? 200.0 : 10.0; }, 200000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PacedRun r(c.name);
        r.run(8, c.durationMs);
        ASSERT_GE(r.frameStarts.size(), 8u);
        for (size_t i = 1; i < r.frameStarts.size(); ++i) {
            const int64_t gap = r.frameStarts[i] - r.frameStarts[i - 1];
            const double took = c.durationMs(static_cast<int>(i) - 1);
            if (i == 3 && c.stalledGap) {
                EXPECT_EQ(gap, c.stalledGap);
            } else if (took > frmGame::FrameInterval) {
                EXPECT_EQ(gap, static_cast<int64_t>(took * 1000)) << i;
            } else {
                EXPECT_GT(gap, 40000) << i;
                EXPECT_LT(gap, 41000) << i;
            }
        }
    }
}

TEST(Mouse, IgnoredWhilePlaying) {
    TestGame t("mouse");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.GameState = Playing;
    g.Form_MouseDown(1, 400, 300);
    g.Form_MouseMove(400, 300);
    EXPECT_EQ(g.GameState, Playing);
}

struct Snapshot {
    Vector3 car;
    float platform;
    int32_t clock;
    bool operator==(const Snapshot& o) const {
        return car.x == o.car.x && car.y == o.car.y && car.z == o.car.z && platform == o.platform &&
               clock == o.clock;
    }
};

// Another window takes the focus in the middle of a race: the music pauses,
// nothing on the track moves and the clock stands still, until the focus
// comes back.
TEST(Focus, LosingItPausesTheMusicAndFreezesTheRaceUntilItComesBack) {
    const std::string dir = test::MakeGameDir(
        "focus",
        test::TrackHead() +
            " block -2 0 -5 4 1 200 tex road\n platform 4 0 10 4 1 4 dir right speed 5 dist 3 loop\n");
    HeadlessPlatform hp(dir);
    frmGame g(hp.platform);
    ASSERT_TRUE(g.startup());
    g.sound->SetMusicVolume(50);
    g.gui->OpenZone(1);
    g.gui->Click(26);  // Play track
    ASSERT_EQ(g.GameState, Playing);
    ASSERT_EQ(hp.audio.musicPlaying, MusicTrack);

    auto now = [&] {
        return Snapshot{g.player->GetPosition(), g.track->platforms.at(0)->Xpos(), g.RaceFrames};
    };
    Snapshot frozen{};
    int unfocused = 0, refocusedAt = -1;
    int64_t blurredAt = 0, awayFor = 0;  // fake microseconds
    bool movedWhileAway = false, musicWhileAway = false;
    g.HandleKeyboard();  // a first pass on the track: Up goes down in play
    hp.keyboard.press(DIK_UP);
    hp.window.onProcess = [&](WindowEvents&) {
        if (hp.window.focus && refocusedAt < 0 && g.RaceFrames >= 10) {
            hp.window.focus = false;  // the frame in progress still ends
            return;
        }
        if (!hp.window.focus) {
            if (unfocused == 0) {
                frozen = now();
                blurredAt = hp.clock.now;
            }
            movedWhileAway |= !(now() == frozen);
            musicWhileAway |= hp.audio.musicPlaying != 0;
            if (++unfocused == 40) {
                awayFor = hp.clock.now - blurredAt;
                hp.window.focus = true;
                refocusedAt = g.RaceFrames;
            }
            return;
        }
        if (refocusedAt >= 0 && g.RaceFrames >= refocusedAt + 5) g.GameRunning = false;
    };
    g.runMainLoop();
    ASSERT_EQ(unfocused, 40);
    EXPECT_FALSE(movedWhileAway) << "the car, a platform or the clock moved without the focus";
    EXPECT_FALSE(musicWhileAway);
    EXPECT_NE(std::find(hp.audio.log.begin(), hp.audio.log.end(), "pause"), hp.audio.log.end());
    // Forty paced passes of fake time went by (no spinning), but the race
    // went on where it stopped.
    EXPECT_GT(awayFor, 39 * 5000);
    EXPECT_EQ(refocusedAt, frozen.clock);
    EXPECT_EQ(hp.audio.musicPlaying, MusicTrack);
    EXPECT_GT(g.player->GetPosition().z, frozen.car.z);
    EXPECT_NE(g.track->platforms.at(0)->Xpos(), frozen.platform);
}

}  // namespace
}  // namespace qb
