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

}  // namespace
}  // namespace qb
