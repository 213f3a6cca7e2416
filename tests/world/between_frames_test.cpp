// Drawings between two play frames: each moving track object is placed the
// given share of the way from where the last frame found it.
#include <gtest/gtest.h>

#include <cmath>

#include "platform/D3DMath.h"
#include "tests/world/WorldTest.h"
#include "world/clsBlock.h"
#include "world/clsMovingPlatform.h"
#include "world/clsStar.h"

namespace qb {
namespace {

using test::WorldRig;

float DrawnY(WorldRig& rig, clsBlock& b, float blend) {
    b.draw(blend);
    return rig.device.world.m[3][1];
}

TEST(BetweenFrames, FallingAndBouncingBlocksAreDrawnPartWay) {
    WorldRig rig("between-block");
    clsBlock b(rig.res);
    b.create(0, 10, 0, 1, 1, 1);
    const WorldFrame playing{true, 0.5f};
    b.Fall();
    b.KeepDrawnState();
    b.Advance(playing);  // falls 0.5
    EXPECT_FLOAT_EQ(DrawnY(rig, b, 0.0f), 10.0f);
    EXPECT_FLOAT_EQ(DrawnY(rig, b, 0.5f), 9.75f);
    EXPECT_FLOAT_EQ(DrawnY(rig, b, 1.0f), 9.5f);
    // Drawing itself moves nothing.
    EXPECT_FLOAT_EQ(b.Ypos(), 9.5f);

    clsBlock pad(rig.res);
    pad.create(0, 5, 0, 1, 1, 1);
    pad.Bounce();
    pad.Advance(playing);  // phase -1: stays at its base
    pad.KeepDrawnState();
    pad.Advance(playing);  // rises to 5.19
    EXPECT_NEAR(DrawnY(rig, pad, 0.5f), 5.095f, 1e-5);
    // Outside play nothing moves, and whatever the blend it is drawn in place.
    pad.KeepDrawnState();
    pad.Advance(WorldFrame{false, 0.5f});
    EXPECT_FLOAT_EQ(DrawnY(rig, pad, 0.3f), pad.Ypos());
}

float DrawnX(WorldRig& rig, clsMovingPlatform& p, float blend) {
    p.draw(blend);
    return rig.device.world.m[3][0];
}

clsMovingPlatform& Shuttle(clsMovingPlatform& p, bool loopBack) {
    p.create(0, 0, 0);
    p.Xpos(10);
    p.scaleX(2);
    p.scaleY(1);
    p.scalez(2);
    p.Mspeed(50);
    p.Mdist(1);
    p.Mdir(3);
    p.MloopBack(loopBack);
    return p;
}

TEST(BetweenFrames, PlatformsSlideButAJumpBackToTheStartIsNotASlide) {
    WorldRig rig("between-platform");
    clsMovingPlatform ping(rig.res);
    Shuttle(ping, true);
    EXPECT_FLOAT_EQ(DrawnX(rig, ping, 0.5f), 10.0f);  // not moved yet: nothing to blend
    ping.KeepDrawnState();
    ping.move();  // 10.5
    EXPECT_FLOAT_EQ(DrawnX(rig, ping, 0.25f), 10.125f);
    ping.KeepDrawnState();
    ping.move();  // 11
    ping.KeepDrawnState();
    ping.move();  // turns at the far end: stays at 11, heads back
    EXPECT_TRUE(ping.GetChangeDir());
    EXPECT_FLOAT_EQ(DrawnX(rig, ping, 0.5f), 11.0f);
    ping.KeepDrawnState();
    ping.move();
    EXPECT_FLOAT_EQ(DrawnX(rig, ping, 0.5f), 10.75f);

    clsMovingPlatform wrap(rig.res);
    Shuttle(wrap, false);
    wrap.move();
    wrap.move();  // 11, the far end
    wrap.KeepDrawnState();
    wrap.move();  // back at 10 in one step
    EXPECT_FLOAT_EQ(wrap.Xpos(), 10.0f);
    for (float blend : {0.0f, 0.5f, 1.0f}) EXPECT_FLOAT_EQ(DrawnX(rig, wrap, blend), 10.0f) << blend;
}

// The angle a drawing turned the star by, in degrees (0..360).
float DrawnAngle(WorldRig& rig, clsStar& s, float blend) {
    s.draw(blend);
    const Matrix4& w = rig.device.world;
    float deg = std::atan2(-w.m[0][2], w.m[0][0]) * 57.2957795f;
    return deg < 0 ? deg + 360 : deg;
}

TEST(BetweenFrames, StarsTurnOnwardThroughTheWrapAtThreeSixty) {
    WorldRig rig("between-star");
    test::Touch(rig.dir + "models/orb.x");
    clsStar s(rig.res);
    s.load(rig.dir + "models/orb.x");
    const WorldFrame playing{true, 0};
    for (int i = 0; i < 70; ++i) s.Spin(playing);  // 350
    s.KeepDrawnState();
    s.Spin(playing);
    EXPECT_NEAR(DrawnAngle(rig, s, 0.4f), 352.0f, 1e-3);
    s.Spin(playing);  // 360
    s.KeepDrawnState();
    s.Spin(playing);  // wraps to 1
    EXPECT_EQ(s.spinAngle(), 1);
    // Half way is 0.5 degrees past the full turn, not half way back round.
    EXPECT_NEAR(DrawnAngle(rig, s, 0.5f), 0.5f, 1e-3);
    EXPECT_NEAR(DrawnAngle(rig, s, 1.0f), 1.0f, 1e-3);
}

}  // namespace
}  // namespace qb
