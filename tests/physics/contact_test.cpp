// Landing, walls, undersides, ramps, riding and squeezing platforms, and the
// pull of a track's own gravity.
#include <cmath>
#include <sstream>

#include "level/TrackObjects.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

std::string Num(float v) {
    std::ostringstream s;
    s << v;
    return s.str();
}

TEST(Standing, StaysAHairAboveTheTopAndOnTheGroundEveryFrame) {
    // Settled from a drop, and from the first frame on a top exactly at the
    // start height.
    for (const char* block :
         {" block -2 0 -5 4 1 20 tex wall wall wall road\n", " block -2 2 0 4 1 10 tex road\n"}) {
        SCOPED_TRACE(block);
        Drive d("stand", TrackHead() + block);
        ASSERT_TRUE(d.settle());
        if (d.game().track->blocks[0]->Ypos() == 2) {
            EXPECT_EQ(d.rows.size(), 1u);
        }
        const float top = d.game().track->blocks[0]->Ypos() + 1.0001f;
        for (int i = 0; i < 30; ++i) {
            const SimRow& r = d.frame();
            ASSERT_TRUE(r.onGround) << "frame " << i;
            ASSERT_NEAR(r.position.y, top, 2e-6) << "frame " << i;
        }
    }
}

TEST(Underside, ABumpWhileRisingEndsTheClimbJustBelowTheFace) {
    Drive d("ceiling", TrackHead() + " block -2 0 -5 4 1 20 tex road\n block -2 2.2 3 4 1 3 tex wall\n");
    ASSERT_TRUE(d.settle());
    d.car().Posz(5);  // under the ceiling
    d.frame({DIK_SPACE});
    EXPECT_GT(d.car().verticalvelocity(), 0.0f) << "a top is never in the way of a climb";
    d.frame();
    EXPECT_EQ(d.car().verticalvelocity(), 0.0f);
    EXPECT_NEAR(d.car().PosY(), 2.2f - 0.8001f, 2e-6);
}

TEST(FrontFace, UpToFourTenthsTheCarStopsAtTheWallAnyFasterItBlowsUp) {
    // A wall standing on the road, and a step up of one unit from it.
    for (const char* blocks : {" block -2 0 -5 4 1 20 tex road\n block -2 1 10 4 2 2 tex wall\n",
                               " block -2 0 -5 4 1 15 tex road\n block -2 0 10 4 2 10 tex wall\n"})
        for (float speed : {0.4f, 0.41f}) {
            SCOPED_TRACE(std::string(blocks) + Num(speed));
            Drive d("wall", TrackHead() + blocks);
            ASSERT_TRUE(d.settle());
            d.car().Posz(9.7f);
            d.car().ForwardVelocity(speed);
            const SimRow& r = d.frame();
            EXPECT_LT(d.car().Posz(), 10.0f);
            EXPECT_EQ(r.exploding, speed > 0.4f);
            EXPECT_EQ((r.events & EventExplode) != 0, speed > 0.4f);
            if (r.exploding) continue;
            EXPECT_NEAR(d.car().Posz(), 10.0f - 0.0001f, 2e-6);
            EXPECT_NEAR(d.car().ForwardVelocity(), 0.2999f, 2e-6);
            d.frames(5);
            EXPECT_FALSE(d.car().getexplodeStatus());
        }
}

const std::string RampUp =
    TrackHead() + " block -2 0 -5 4 1 15 tex road\n ramp -2 1 10 4 2 6 tex road wall\n";

TEST(Ramp, TheCarClimbsWithTheGradientThroughAWallAcrossItOntoTheHighRoad) {
    // A wall's front is ignored while the car is on a ramp: it drives up
    // through one standing across the ramp's middle at full speed.
    Drive d("ramp", RampUp + " block -2 0 16 4 3 30 tex road\n block -2 1 13 4 4 1 tex wall\n");
    ASSERT_TRUE(d.settle());
    int onRamp = 0;
    bool onRampAtWall = false;
    while (d.car().Posz() < 32) {
        const SimRow& r = d.frame({DIK_UP});
        ASSERT_FALSE(r.exploding) << "z " << r.position.z;
        ASSERT_LT(d.rows.size(), 200u);
        if (!d.game().collision->OnRamp) continue;
        ++onRamp;
        EXPECT_FLOAT_EQ(r.velocity.y, r.velocity.z * (2.0f / 6.0f));
        onRampAtWall = onRampAtWall || (r.position.z > 12.8f && r.position.z < 14.2f);
    }
    EXPECT_GE(onRamp, 5);
    EXPECT_TRUE(onRampAtWall);
    // Off the top at full speed the car flies a little, then drives on the
    // high road.
    EXPECT_TRUE(d.rows.back().onGround);
    EXPECT_NEAR(d.rows.back().position.y, 3.0001f, 2e-6);
}

TEST(Ramp, ACarAtRestStaysOnASlopeOfEveryRotation) {
    // Slopes under the start in every rotation, shallow, steep and at 45
    // degrees: the car drops onto the slope and must stay there.
    struct Case {
        const char* ramp;
        int rot;
    } cases[] = {{"-2 0 0 4 2 6", 0}, {"-2 0 0 3 1 3", 1}, {"-2 0 0 4 2 2", 2}, {"-2 0 0 4 1 2", 2},
                 {"-1 0 0 3 1 3", 3}, {"-4 0 0 6 2 3", 3}, {"-2 0 0 4 1 3", 3}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string("ramp ") + c.ramp + " rot " + std::to_string(c.rot));
        Drive d("ramprest", TrackHead() + " block -2 0 100 4 1 4 tex road\n ramp " + c.ramp +
                                " tex road wall rot " + std::to_string(c.rot) + "\n");
        ASSERT_TRUE(d.settle());
        EXPECT_TRUE(d.game().collision->OnRamp);
        const float y0 = d.car().PosY();
        for (int i = 0; i < 100; ++i) {
            const SimRow& r = d.frame();
            ASSERT_FALSE(r.dead) << "frame " << i;
            // It may sink the one frame's fall it hovered above the slope.
            ASSERT_GT(r.position.y, y0 - 0.3f) << "frame " << i;
        }
        EXPECT_TRUE(d.rows.back().onGround);
    }
}

// A platform under the start, sliding along x with its far end `dist` away.
std::string PlatformUnderStart(float y, int speed, int dist = 3) {
    return TrackHead() + " block -2 0 100 4 1 4 tex road\n platform -2 " + Num(y) +
           " -1 4 1 6 tex road dir right speed " + std::to_string(speed) + " dist " + std::to_string(dist) +
           " loop\n";
}

TEST(Riding, ACarStandingOnAPlatformMovesWithItFrameForFrame) {
    // Heights whose landings round differently, and speeds that turn at the
    // ends on a whole step, so every frame can be compared, turns included.
    for (float y : {0.0f, 0.5f, 1.0f, 1.3f, 1.7f}) {
        for (int speed : {2, 5, 10, 15}) {
            SCOPED_TRACE("platform at y " + Num(y) + ", speed " + std::to_string(speed));
            Drive d("ride", PlatformUnderStart(y, speed));
            ASSERT_TRUE(d.settle());
            const clsMovingPlatform& m = *d.game().track->platforms[0];
            const float offset = d.car().Posx() - m.Xpos();
            float lastX = d.car().Posx();
            for (int i = 0; i < 90; ++i) {
                const SimRow& r = d.frame();
                ASSERT_TRUE(r.onGround) << "frame " << i;
                ASSERT_NEAR(r.position.x - m.Xpos(), offset, 1e-4) << "frame " << i;
                ASSERT_LE(std::fabs(r.position.x - lastX), speed / 100.0f + 1e-5f) << "frame " << i;
                lastX = r.position.x;
            }
        }
    }
}

TEST(Riding, SteeringOnAPlatformAddsToItsMotion) {
    Drive d("ridesteer", PlatformUnderStart(1, 5));
    ASSERT_TRUE(d.settle());
    const clsMovingPlatform& m = *d.game().track->platforms[0];
    const float offset = d.car().Posx() - m.Xpos();
    d.frames(5, {DIK_LEFT});
    d.frames(5);
    EXPECT_NEAR(d.car().Posx() - m.Xpos(), offset - 5 * 0.12f, 1e-4);
}

const std::string Floor = TrackHead() + " block -10 0 -5 20 1 25 tex road\n";
const std::string FromLeft = " platform -4 1 0 1 1 3 tex wall dir right speed 10 dist 8 loop\n";
const std::string FromRight = " platform 3 1 0 1 1 3 tex wall dir left speed 10 dist 8 loop\n";

TEST(Platforms, OnePlatformPushesTheCarAlong) {
    Drive d("push", Floor + FromLeft);
    ASSERT_TRUE(d.settle());
    const float x0 = d.car().Posx();
    for (int i = 0; i < 40; ++i) ASSERT_FALSE(d.frame().exploding);
    const clsMovingPlatform& m = *d.game().track->platforms[0];
    EXPECT_GT(d.car().Posx(), x0 + 0.5f);
    // The car rides just clear of the platform's side.
    EXPECT_NEAR(d.car().Posx() - 0.4f, m.Xpos() + m.scaleX(), 0.0002f);
}

TEST(Platforms, ASqueezeBlowsTheCarUpAndStopsThem) {
    // Between two platforms, or a platform and a wall: the platform comes
    // first in the pass, the wall after, from either side.
    const std::string walls = " block 4 1 0 1 2 20 tex wall\n block -5 1 0 1 2 20 tex wall\n";
    for (const std::string& track :
         {Floor + FromLeft + FromRight, Floor + walls + FromLeft, Floor + walls + FromRight}) {
        SCOPED_TRACE(track);
        Drive d("squeeze", track);
        ASSERT_TRUE(d.settle());
        bool exploded = false;
        for (int i = 0; i < 120 && !exploded; ++i) {
            const SimRow& r = d.frame();
            exploded = r.exploding;
            // Never through a wall while it is being pushed.
            ASSERT_LT(std::fabs(r.position.x) + 0.4f, 4.0f) << "frame " << i;
        }
        EXPECT_TRUE(exploded);
        for (int32_t i = 0; i <= d.game().track->PlatformUpper; ++i)
            EXPECT_FALSE(d.game().track->platforms[i]->isMoving());
    }
}

TEST(Gravity, ATrackPullsByItsOwnGravity) {
    // Gravity 4 is a pull of 0.01 a frame: a fall and a jump of that track.
    Drive d("gravity4", TrackHead("4") + " block -2 0 0 4 1 20 tex road\n");
    for (int i = 1; i <= 10; ++i) EXPECT_FLOAT_EQ(d.frame().velocity.y, -0.01f * i) << "frame " << i;
    ASSERT_TRUE(d.settle(200));
    d.frame({DIK_SPACE});
    EXPECT_FLOAT_EQ(d.car().verticalvelocity(), 0.35f - 0.01f);
    int aloft = 1;
    while (!d.frame().onGround) ASSERT_LT(++aloft, 200);
    // Up and down again at 0.01 a frame: 70 frames, where gravity 10 takes 28.
    EXPECT_NEAR(aloft, 70, 1);
}

}  // namespace
}  // namespace qb
