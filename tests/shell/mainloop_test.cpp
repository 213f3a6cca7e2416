#include <gtest/gtest.h>

#include "tests/shell/TestGame.h"

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

TEST(FramePacing, AFrameLongerThanTheIntervalIsFollowedAtOnce) {
    PacedRun r("slowframes");
    r.run(6, [](int) { return 60.0; });
    ASSERT_GE(r.frameStarts.size(), 6u);
    for (size_t i = 1; i < r.frameStarts.size(); ++i)
        EXPECT_EQ(r.frameStarts[i] - r.frameStarts[i - 1], 60000);
}

TEST(FramePacing, ShortFramesStartJustOverTheIntervalApart) {
    PacedRun r("fastframes");
    r.run(10, [](int) { return 10.0; });
    ASSERT_GE(r.frameStarts.size(), 10u);
    for (size_t i = 1; i < r.frameStarts.size(); ++i) {
        const int64_t gap = r.frameStarts[i] - r.frameStarts[i - 1];
        EXPECT_GT(gap, 40000);
        EXPECT_LT(gap, 41000);
    }
}

TEST(FramePacing, NoDebtBuildsUpAfterAStall) {
    PacedRun r("stall");
    r.run(6, [](int i) { return i == 2 ? 200.0 : 10.0; });
    ASSERT_GE(r.frameStarts.size(), 6u);
    EXPECT_EQ(r.frameStarts[3] - r.frameStarts[2], 200000);  // straight after the stall
    for (size_t i = 4; i < r.frameStarts.size(); ++i)
        EXPECT_GT(r.frameStarts[i] - r.frameStarts[i - 1], 40000);
}

TEST(FramePacing, WithoutFocusNothingMovesAndTheClockStandsStill) {
    TestGame t("focus");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.GameState = Playing;
    int unfocusedPasses = 0;
    int framesAtBlur = -1;
    t.hp.window.onProcess = [&](WindowEvents& w) {
        if (g.RaceFrames == 5 && t.hp.window.focus && framesAtBlur < 0) {
            t.hp.window.focus = false;
            framesAtBlur = g.RaceFrames;
        }
        if (!t.hp.window.focus && ++unfocusedPasses == 50) w.onClose();
    };
    g.runMainLoop();
    EXPECT_EQ(framesAtBlur, 5);
    EXPECT_LE(g.RaceFrames, framesAtBlur + 1);  // at most the frame in progress completes
    // Fifty unfocused passes took real (fake) time but no frame ran.
    EXPECT_GT(t.hp.clock.now, 50 * 5000);
}

TEST(FramePacing, MenusArePacedInsteadOfSpinning) {
    TestGame t("menupace");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    int passes = 0;
    t.hp.window.onProcess = [&](WindowEvents& w) {
        if (++passes == 61) w.onClose();
    };
    const int64_t start = t.hp.clock.now;
    g.runMainLoop();
    // Sixty menu passes at 60 a second take about a second.
    EXPECT_GE(t.hp.clock.now - start, 990000);
}

TEST(Mouse, IgnoredWhilePlayingAndAnyClickLeavesTheMadeItScreen) {
    TestGame t("mouse");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.GameState = Playing;
    g.Form_MouseDown(1, 400, 300);
    g.Form_MouseMove(400, 300);
    EXPECT_EQ(g.GameState, Playing);
    g.GameState = MadeIt;
    g.Form_MouseDown(1, 3, 3);
    EXPECT_EQ(g.GameState, TrackChoice);
}

TEST(RaceClock, CountsPlayFramesOnlyAndResets) {
    TestGame t("raceclock");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.GameState = Playing;
    for (int i = 0; i < 7; ++i) g.playFrame();
    EXPECT_EQ(g.RaceFrames, 7);
    g.ResetFPSCounter();
    EXPECT_EQ(g.RaceFrames, 0);
}

}  // namespace
}  // namespace qb
