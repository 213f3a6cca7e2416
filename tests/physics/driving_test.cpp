// Speeds under the keys: accelerating, braking, steering, ice and jumping.
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

const std::string Flat = TrackHead() + " block -20 0 -5 40 1 400 tex wall wall wall road\n";
const std::string FlatIce =
    TrackHead() + " texture icy \"ice.bmp\"\n block -20 0 -5 40 1 400 tex wall wall wall icy ice\n";

constexpr uint8_t Up = DIK_UP, Down = DIK_DOWN, Left = DIK_LEFT, Right = DIK_RIGHT;

TEST(Driving, SpeedsAfterKeysHeldFromRest) {
    struct Step {
        int frames;
        std::vector<uint8_t> keys;  // owned: an initializer_list member dies with its line
    };
    struct Case {
        const char* what;
        bool ice;
        std::vector<Step> steps;
        float forward, sideways;
    } cases[] = {
        {"29 frames of Up stay under top speed", false, {{29, {Up}}}, 0.58f, 0},
        {"30 frames of Up reach it and 10 more keep it", false, {{40, {Up}}}, 0.6f, 0},
        {"braking takes 0.04 a frame", false, {{3, {Up}}, {1, {Down}}}, 0.02f, 0},
        {"and never leaves a negative speed", false, {{3, {Up}}, {7, {Down}}}, 0, 0},
        {"on ice only 0.01", true, {{10, {Up}}, {1, {Down}}}, 0.19f, 0},
        {"steering sets the sideways speed", false, {{1, {Right}}}, 0, 0.12f},
        {"without a steering key it drops at once", false, {{1, {Right}}, {1, {}}}, 0, 0},
        {"both keys end with left", false, {{1, {Left, Right}}}, 0, -0.12f},
        {"on ice the car keeps sliding", true, {{1, {Right}}, {3, {}}}, 0, 0.12f},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Drive d("keys", c.ice ? FlatIce : Flat);
        ASSERT_TRUE(d.settle());
        for (const Step& s : c.steps) d.frames(s.frames, s.keys);
        EXPECT_NEAR(d.car().ForwardVelocity(), c.forward, 1e-6);
        EXPECT_FLOAT_EQ(d.car().HorizontalVelocity(), c.sideways);
        EXPECT_EQ(d.rows.back().onIce, c.ice);
    }
}

TEST(Driving, TheCarMovesByItsSpeedsInTheSameFrame) {
    Drive d("integrate", Flat);
    ASSERT_TRUE(d.settle());
    const Vector3 at = d.car().GetPosition();
    d.frame({Up, Right});
    EXPECT_FLOAT_EQ(d.car().Posz(), at.z + d.car().ForwardVelocity());
    EXPECT_FLOAT_EQ(d.car().Posx(), at.x + 0.12f);
}

TEST(Driving, ASlideOnIceWithoutTheKeyTurnsTheNoseIntoIt) {
    Drive d("slide", FlatIce);
    ASSERT_TRUE(d.settle());
    d.frame({Right});
    EXPECT_EQ(d.car().WorldMatrix().m[0][2], 0.0f) << "held by the key";
    d.frame();
    EXPECT_NE(d.car().WorldMatrix().m[0][2], 0.0f);
}

TEST(Jumping, OnlyFromTheGroundAndAgainAtEachLanding) {
    Drive d("jump", Flat);
    // In the air after the start: the key does nothing.
    EXPECT_FALSE(d.frame({DIK_SPACE}).events & EventJump);
    ASSERT_TRUE(d.settle());
    EXPECT_TRUE(d.frame({DIK_SPACE}).events & EventJump);
    EXPECT_FLOAT_EQ(d.car().verticalvelocity(), 0.35f - 0.025f) << "the jump, then this frame's gravity";
    int landings = 0;
    for (int i = 0; i < 60; ++i)
        if (d.frame({DIK_SPACE}).events & EventJump) ++landings;
    EXPECT_GE(landings, 1);
    EXPECT_EQ(d.game().stats->JumpCount, 1 + landings);
}

}  // namespace
}  // namespace qb
