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

TEST(Mouse, IgnoredWhilePlaying) {
    TestGame t("mouse");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.GameState = Playing;
    g.Form_MouseDown(1, 400, 300);
    g.Form_MouseMove(400, 300);
    EXPECT_EQ(g.GameState, Playing);
}

}  // namespace
}  // namespace qb
