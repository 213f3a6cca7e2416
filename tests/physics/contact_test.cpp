// Landing, walls, undersides, ramps and squeezing platforms.
#include "level/TrackObjects.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

TEST(Standing, StaysAHairAboveTheTopAndOnTheGroundEveryFrame) {
    Drive d("stand", TrackHead() + " block -2 0 -5 4 1 20 tex wall wall wall road\n");
    ASSERT_TRUE(d.settle());
    for (int i = 0; i < 50; ++i) {
        const SimRow& r = d.frame();
        EXPECT_TRUE(r.onGround) << "frame " << i;
        EXPECT_NEAR(r.position.y, 1.0001f, 2e-6) << "frame " << i;
    }
}

TEST(Underside, ABumpWhileRisingEndsTheClimbJustBelowTheFace) {
    Drive d("ceiling", TrackHead() + " block -2 0 -5 4 1 20 tex road\n block -2 2.2 3 4 1 3 tex wall\n");
    ASSERT_TRUE(d.settle());
    d.car().Posz(5);  // under the ceiling
    d.frame({DIK_SPACE});
    EXPECT_GT(d.car().verticalvelocity(), 0.0f);
    d.frame();
    EXPECT_EQ(d.car().verticalvelocity(), 0.0f);
    EXPECT_NEAR(d.car().PosY(), 2.2f - 0.8001f, 2e-6);
    // Moving up through a top face is never stopped: the jump started from
    // the floor's top without being held back.
}

const std::string WallAhead = TrackHead() + " block -2 0 -5 4 1 20 tex road\n block -2 1 10 4 2 2 tex wall\n";

TEST(FrontFace, AtFourTenthsTheCarStopsAtTheWall) {
    Drive d("wall040", WallAhead);
    ASSERT_TRUE(d.settle());
    d.car().Posz(9.7f);
    d.car().ForwardVelocity(0.4f);
    const SimRow& r = d.frame();
    EXPECT_FALSE(r.exploding);
    EXPECT_NEAR(d.car().Posz(), 10.0f - 0.0001f, 2e-6);
    EXPECT_NEAR(d.car().ForwardVelocity(), 0.2999f, 2e-6);
    d.frames(5);
    EXPECT_FALSE(d.car().getexplodeStatus());
    EXPECT_LT(d.car().Posz(), 10.0f);
}

TEST(FrontFace, AnyFasterBlowsTheCarUp) {
    Drive d("wall041", WallAhead);
    ASSERT_TRUE(d.settle());
    d.car().Posz(9.7f);
    d.car().ForwardVelocity(0.41f);
    const SimRow& r = d.frame();
    EXPECT_TRUE(r.exploding);
    EXPECT_TRUE(r.events & EventExplode);
    EXPECT_LT(d.car().Posz(), 10.0f);
}

TEST(FrontFace, IsIgnoredWhileTheCarIsOnARamp) {
    // A wall standing across the middle of a ramp: the car drives up
    // through it at full speed.
    Drive d("rampwall", TrackHead() +
                            " block -2 0 -5 4 1 15 tex road\n ramp -2 1 10 4 2 6 tex road wall\n"
                            " block -2 0 16 4 3 10 tex road\n block -2 1 13 4 4 1 tex wall\n");
    ASSERT_TRUE(d.settle());
    bool passed = false, onRampAtWall = false;
    for (int i = 0; i < 80 && !passed; ++i) {
        const SimRow& r = d.frame({DIK_UP});
        ASSERT_FALSE(r.exploding) << "frame " << i << " z " << r.position.z;
        if (r.position.z > 12.8f && r.position.z < 14.2f && d.game().collision->OnRamp) onRampAtWall = true;
        passed = r.position.z > 16;
    }
    EXPECT_TRUE(onRampAtWall);
    EXPECT_TRUE(passed);
}

TEST(Ramp, TheCarClimbsWithTheGradientAndLandsOnTheHighRoad) {
    Drive d("ramp", TrackHead() +
                        " block -2 0 -5 4 1 15 tex road\n ramp -2 1 10 4 2 6 tex road wall\n"
                        " block -2 0 16 4 3 30 tex road\n");
    ASSERT_TRUE(d.settle());
    int onRamp = 0;
    while (d.car().Posz() < 32) {
        const SimRow& r = d.frame({DIK_UP});
        ASSERT_FALSE(r.exploding);
        ASSERT_LT(d.rows.size(), 200u);
        if (d.game().collision->OnRamp) {
            ++onRamp;
            EXPECT_FLOAT_EQ(r.velocity.y, r.velocity.z * (2.0f / 6.0f));
        }
    }
    EXPECT_GE(onRamp, 5);
    // Off the top at full speed the car flies a little, then drives on the
    // high road.
    EXPECT_TRUE(d.rows.back().onGround);
    EXPECT_NEAR(d.rows.back().position.y, 3.0001f, 2e-6);
}

const std::string Squeeze = TrackHead() +
                            " block -10 0 -5 20 1 20 tex road\n"
                            " platform -3 1 -1 1 1 3 tex wall dir right speed 10 dist 5 loop\n";

TEST(Platforms, OnePlatformPushesTheCarAlong) {
    Drive d("push", Squeeze);
    ASSERT_TRUE(d.settle());
    const float x0 = d.car().Posx();
    for (int i = 0; i < 30; ++i) ASSERT_FALSE(d.frame().exploding);
    const clsMovingPlatform& m = *d.game().track->platforms[0];
    EXPECT_GT(d.car().Posx(), x0 + 0.5f);
    // The car rides just clear of the platform's side.
    EXPECT_NEAR(d.car().Posx() - 0.4f, m.Xpos() + m.scaleX(), 0.0002f);
}

TEST(Platforms, TwoPlatformsSqueezingFromBothSidesBlowTheCarUp) {
    Drive d("squeeze", Squeeze + " platform 2 1 -1 1 1 3 tex wall dir left speed 10 dist 5 loop\n");
    bool exploded = false;
    for (int i = 0; i < 60 && !exploded; ++i) exploded = d.frame().exploding;
    EXPECT_TRUE(exploded);
    // Every platform stops where it is.
    EXPECT_FALSE(d.game().track->platforms[0]->isMoving());
    EXPECT_FALSE(d.game().track->platforms[1]->isMoving());
}

TEST(Contacts, AFaceTiltedAgainstAllThreeAxesEndsTheGame) {
    Drive d("bug", TrackHead() + " block -2 0 -5 4 1 20 tex road\n");
    d.game().Events.Add(Happening::BrokenTrack);
    EXPECT_EXIT(d.game().ApplyPlayEffects(), ::testing::ExitedWithCode(1), "Whoops: You got eaten by a bug");
}

}  // namespace
}  // namespace qb
