// Riding moving platforms, standing on ramps and other tops, and the pull of
// a track's own gravity.
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
    EXPECT_NEAR(d.car().Posx() - m.Xpos(), offset - 5 * 0.12f, 1e-4);
    d.frames(5);
    EXPECT_NEAR(d.car().Posx() - m.Xpos(), offset - 5 * 0.12f, 1e-4);
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

TEST(Standing, ATopExactlyAtTheStartHeightCatchesTheCar) {
    Drive d("startheight", TrackHead() + " block -2 2 0 4 1 10 tex road\n");
    for (int i = 0; i < 20; ++i) {
        const SimRow& r = d.frame();
        EXPECT_TRUE(r.onGround) << "frame " << i;
        EXPECT_NEAR(r.position.y, 3.0001f, 2e-6) << "frame " << i;
    }
}

const std::string WallBeside = TrackHead() +
                               " block -10 0 0 20 1 20 tex road\n"
                               " block 4 1 0 1 2 20 tex wall\n block -5 1 0 1 2 20 tex wall\n";

TEST(Platforms, APlatformPushingTheCarIntoAWallBlowsItUp) {
    // From either side: the platform comes first in the pass, the wall after.
    for (const char* platform : {" platform -4 1 0 1 1 3 tex wall dir right speed 10 dist 8 loop\n",
                                 " platform 3 1 0 1 1 3 tex wall dir left speed 10 dist 8 loop\n"}) {
        SCOPED_TRACE(platform);
        Drive d("pushwall", WallBeside + platform);
        ASSERT_TRUE(d.settle());
        bool exploded = false;
        for (int i = 0; i < 120 && !exploded; ++i) {
            const SimRow& r = d.frame();
            exploded = r.exploding;
            // Never through the wall while it is being pushed.
            ASSERT_TRUE(r.onGround) << "frame " << i;
            ASSERT_LT(r.position.x + 0.4f, 4.0f) << "frame " << i;
            ASSERT_GT(r.position.x - 0.4f, -4.0f) << "frame " << i;
        }
        EXPECT_TRUE(exploded);
        EXPECT_GT(std::fabs(d.car().Posx()), 3.5f) << "the car was pushed up to the wall";
        EXPECT_FALSE(d.game().track->platforms[0]->isMoving());
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
