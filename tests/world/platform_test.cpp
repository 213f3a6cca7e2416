#include "tests/world/WorldTest.h"
#include "world/clsMovingPlatform.h"

namespace qb {
namespace {

using test::WorldRig;

void MakePlatform(clsMovingPlatform& p, float x, uint8_t speed, uint8_t dir, uint8_t dist, bool loop) {
    p.create(0, 0, 0);
    p.Xpos(x);
    p.Ypos(1);
    p.Zpos(5);
    p.scaleX(2);
    p.scaleY(1);
    p.scalez(3);
    p.Mdir(dir);
    p.Mspeed(speed);
    p.Mdist(dist);
    p.MloopBack(loop);
}

TEST(MovingPlatform, ShuttlesBetweenItsEnds) {
    WorldRig rig("platform-loop");
    clsMovingPlatform p(rig.res);
    MakePlatform(p, 10, 5, 3, 2, true);
    for (int i = 1; i <= 40; ++i) {
        EXPECT_FLOAT_EQ(p.GetVelocity().x, 0.05f) << i;
        p.move();
        EXPECT_FALSE(p.GetChangeDir());
        // Kept to three decimals: no drift however long it runs.
        EXPECT_EQ(p.Xpos(), static_cast<float>((1000 + 5 * i) / 100.0)) << i;
    }
    EXPECT_FLOAT_EQ(p.Xpos(), 12.0f);
    EXPECT_FLOAT_EQ(p.GetVelocity().x, 0.0f);  // the next step would pass the end
    p.move();
    EXPECT_TRUE(p.GetChangeDir());
    EXPECT_FLOAT_EQ(p.Xpos(), 12.0f);
    EXPECT_FLOAT_EQ(p.origin().x, 12.0f);
    EXPECT_EQ(p.Mdir(), 2);
    p.move();
    EXPECT_FALSE(p.GetChangeDir());
    EXPECT_FLOAT_EQ(p.Xpos(), 11.95f);
    EXPECT_FLOAT_EQ(p.GetVelocity().x, -0.05f);
    for (int i = 0; i < 39; ++i) p.move();
    EXPECT_FLOAT_EQ(p.Xpos(), 10.0f);
    p.move();
    EXPECT_TRUE(p.GetChangeDir());
    EXPECT_EQ(p.Mdir(), 3);
    // The planes follow every step.
    EXPECT_PLANE(p.GetCollisionPlane(1), -1, 0, 0, 10);
    EXPECT_PLANE(p.GetCollisionPlane(3), 0, 1, 0, -2);
}

TEST(MovingPlatform, OtherDirectionsZeroSpeedAndAStopStandStill) {
    WorldRig rig("platform-still");
    for (uint8_t dir : {0, 1, 4, 9}) {
        clsMovingPlatform p(rig.res);
        MakePlatform(p, 3, 20, dir, 4, true);
        for (int i = 0; i < 50; ++i) p.move();
        EXPECT_FLOAT_EQ(p.Xpos(), 3.0f);
        EXPECT_FLOAT_EQ(p.GetVelocity().x, 0.0f);
    }
    clsMovingPlatform slow(rig.res);
    MakePlatform(slow, 3, 0, 2, 4, true);
    for (int i = 0; i < 50; ++i) {
        slow.move();
        EXPECT_FALSE(slow.GetChangeDir());
    }
    EXPECT_FLOAT_EQ(slow.Xpos(), 3.0f);

    // A stopped platform stays but still reports its velocity.
    clsMovingPlatform p(rig.res);
    MakePlatform(p, 0, 10, 2, 3, true);
    p.move();
    EXPECT_FLOAT_EQ(p.Xpos(), -0.1f);
    p.stopMoving();
    p.move();
    EXPECT_FLOAT_EQ(p.Xpos(), -0.1f);
    EXPECT_FLOAT_EQ(p.GetVelocity().x, -0.1f);
    EXPECT_FALSE(p.isMoving());
}

}  // namespace
}  // namespace qb
