// Key scripts as presses and releases: what the checker moves about.
#include <gtest/gtest.h>

#include <algorithm>

#include "shell/CameraPicture.h"
#include "shell/KeyTimeline.h"

namespace qb {
namespace {

KeyScript Keys(const std::string& text) {
    KeyScript s;
    std::string error;
    EXPECT_TRUE(ParseKeyScript(text, s, error)) << error;
    return s;
}

std::string Text(const KeyScript& s) {
    std::string out;
    for (const KeyStep& step : s.steps) {
        out += std::to_string(step.count) + ":";
        std::vector<uint8_t> keys = step.keys;
        std::sort(keys.begin(), keys.end());
        for (uint8_t k : keys) out += std::to_string(k) + ",";
        out += " ";
    }
    return out;
}

TEST(KeyTimeline, HoldsChangesAndTheScriptBack) {
    const KeyScript script = Keys("10 Up\n5 Up+Space\n3 -\n4 Left\n8 Up\n");
    const KeyTimeline t(script);
    ASSERT_EQ(t.holds().size(), 4u);
    EXPECT_EQ(t.holds()[0].from, 0);
    EXPECT_EQ(t.holds()[0].to, 15);
    EXPECT_EQ(t.holds()[1].from, 10);  // Space
    EXPECT_EQ(t.holds()[1].to, 15);
    EXPECT_TRUE(t.holds()[3].open);  // Up again, down to the end
    // Up, Space down, both up, Left down, Left up with Up down.
    EXPECT_EQ(t.KeyChanges(), 5);
    EXPECT_EQ(Text(t.ToScript(0)), Text(script));
    // The last hold stays down past the end so that a late run can finish.
    EXPECT_EQ(t.ToScript(7).TotalFrames(), script.TotalFrames() + 7);
    // Up from the start and the open end are not timings.
    EXPECT_EQ(t.MovableEdges().size(), 6u);
}

TEST(KeyTimeline, MovedEdgesKeepAHoldAndStayInTheRun) {
    const KeyTimeline t(Keys("10 Up\n5 Up+Space\n20 Up\n"));
    const KeyTimeline later = t.Shifted(2, 3);  // Space pressed 3 frames late
    EXPECT_EQ(later.holds()[1].from, 13);
    const KeyTimeline gone = t.Shifted(2, 9);  // past its own release: one frame is left
    EXPECT_EQ(gone.holds()[1].to - gone.holds()[1].from, 1);
    const KeyTimeline early = t.Shifted(2, -30);
    EXPECT_EQ(early.holds()[1].from, 0);

    std::mt19937 a(5), b(5);
    bool moved = false;
    for (int i = 0; i < 50; ++i) {
        const KeyTimeline x = t.Jittered(a, 2), y = t.Jittered(b, 2);
        EXPECT_EQ(Text(x.ToScript(0)), Text(y.ToScript(0)));  // same seed, same draws
        EXPECT_EQ(x.holds()[0].from, 0);
        EXPECT_LE(std::abs(x.holds()[1].from - 10), 2);
        EXPECT_LE(std::abs(x.holds()[1].to - 15), 2);
        moved = moved || x.holds()[1].from != 10;
    }
    EXPECT_TRUE(moved);
}

TEST(CameraPicture, TheStartSeenFromTheRaceCamera) {
    const Vector3 eye{0, 25, -18}, at{0, 8, 0};
    for (float w : {800.0f, 1024.0f}) {
        const float h = w * 0.75f;
        const CameraPicture pic(eye, at, w, h);
        const CameraPicture::Spot mid = pic.Where(at);
        EXPECT_NEAR(mid.x, w / 2, 0.01);
        EXPECT_NEAR(mid.y, h / 2, 0.01);
        EXPECT_TRUE(pic.Inside({0, 3, 1}, 0.08f));      // the car at its start
        EXPECT_TRUE(pic.Inside({0, 1, 30}, 0.08f));     // the road well ahead
        EXPECT_FALSE(pic.Inside({0, 1, 70}, 0));        // beyond the top edge
        EXPECT_FALSE(pic.Inside({14, 1, 10}, 0.08f));   // far to the side
        EXPECT_FALSE(pic.Inside({0, 20, 5}, 0));        // high up near the car
        EXPECT_FALSE(pic.Where({0, 30, -30}).inFront);  // behind the camera
    }
}

}  // namespace
}  // namespace qb
