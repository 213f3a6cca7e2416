// Speeds under the keys: accelerating, braking, steering, ice.
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

const std::string Flat = TrackHead() + " block -20 0 -5 40 1 400 tex wall wall wall road\n";
const std::string FlatIce =
    TrackHead() + " texture icy \"ice.bmp\"\n block -20 0 -5 40 1 400 tex wall wall wall icy ice\n";

TEST(Accelerating, FromRestReachesTopSpeedAfterThirtyFramesAndStops) {
    Drive d("accel", Flat);
    ASSERT_TRUE(d.settle());
    for (int i = 1; i <= 29; ++i) {
        d.frame({DIK_UP});
        EXPECT_LT(d.car().ForwardVelocity(), 0.6f) << "frame " << i;
    }
    d.frame({DIK_UP});
    EXPECT_FLOAT_EQ(d.car().ForwardVelocity(), 0.6f);
    d.frames(10, {DIK_UP});
    EXPECT_FLOAT_EQ(d.car().ForwardVelocity(), 0.6f);
}

TEST(Accelerating, TheCarMovesByItsSpeedInTheSameFrame) {
    Drive d("integrate", Flat);
    ASSERT_TRUE(d.settle());
    const float z0 = d.car().Posz();
    d.frame({DIK_UP});
    EXPECT_FLOAT_EQ(d.car().Posz(), z0 + d.car().ForwardVelocity());
}

TEST(Braking, NeverLeavesANegativeSpeed) {
    Drive d("brake", Flat);
    ASSERT_TRUE(d.settle());
    d.frames(3, {DIK_UP});  // 0.06
    d.frame({DIK_DOWN});
    EXPECT_NEAR(d.car().ForwardVelocity(), 0.02f, 1e-6);
    d.frame({DIK_DOWN});
    EXPECT_EQ(d.car().ForwardVelocity(), 0.0f);
    d.frames(5, {DIK_DOWN});
    EXPECT_EQ(d.car().ForwardVelocity(), 0.0f);
}

TEST(Braking, OnIceRemovesOnlyAHundredth) {
    Drive d("brakeice", FlatIce);
    ASSERT_TRUE(d.settle());
    d.frames(10, {DIK_UP});
    const float before = d.car().ForwardVelocity();
    d.frame({DIK_DOWN});
    EXPECT_TRUE(d.rows.back().onIce);
    EXPECT_NEAR(before - d.car().ForwardVelocity(), 0.01f, 1e-6);
    EXPECT_FLOAT_EQ(d.car().Friction(), 0.01f);
}

TEST(Steering, SidewaysSpeedDropsAtOnceWithoutASteeringKey) {
    Drive d("steer", Flat);
    ASSERT_TRUE(d.settle());
    d.frame({DIK_RIGHT});
    EXPECT_FLOAT_EQ(d.car().HorizontalVelocity(), 0.12f);
    const float x = d.car().Posx();
    EXPECT_FLOAT_EQ(x, 0.12f);
    d.frame();
    EXPECT_EQ(d.car().HorizontalVelocity(), 0.0f);
    EXPECT_EQ(d.car().Posx(), x);
    d.frame({DIK_LEFT});
    EXPECT_FLOAT_EQ(d.car().HorizontalVelocity(), -0.12f);
}

TEST(Steering, BothKeysTogetherEndWithLeft) {
    Drive d("bothkeys", Flat);
    ASSERT_TRUE(d.settle());
    d.frame({DIK_LEFT, DIK_RIGHT});
    EXPECT_FLOAT_EQ(d.car().HorizontalVelocity(), -0.12f);
}

TEST(Steering, OnIceTheCarKeepsSliding) {
    Drive d("slide", FlatIce);
    ASSERT_TRUE(d.settle());
    d.frame({DIK_RIGHT});
    d.frames(3);
    EXPECT_FLOAT_EQ(d.car().HorizontalVelocity(), 0.12f);
    EXPECT_TRUE(d.car().ISPlayerOnAnIceBlock());
    // The model turns into the slide while no key holds it.
    EXPECT_NE(d.car().WorldMatrix().m[0][2], 0.0f);
}

TEST(Jumping, OnlyFromTheGroundAndAgainAtEachLanding) {
    Drive d("jump", Flat);
    // In the air after the start: the key does nothing.
    d.frame({DIK_SPACE});
    EXPECT_LT(d.car().verticalvelocity(), 0.0f);
    ASSERT_TRUE(d.settle());
    const int before = d.countSound(1);
    const SimRow& r = d.frame({DIK_SPACE});
    EXPECT_TRUE(r.events & EventJump);
    EXPECT_FLOAT_EQ(d.car().verticalvelocity(), 0.35f - 0.025f) << "the jump, then this frame's gravity";
    int landings = 0;
    for (int i = 0; i < 60; ++i)
        if (d.frame({DIK_SPACE}).events & EventJump) ++landings;
    EXPECT_GE(landings, 1);
    EXPECT_EQ(d.countSound(1), before + 1 + landings);
    EXPECT_EQ(d.game().stats->JumpCount, 1 + landings);
}

}  // namespace
}  // namespace qb
