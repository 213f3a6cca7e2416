// Blocks laid end to end: a seam level with the road is no wall, whatever
// the car does as it crosses (a step up is one: see the front-face test).
#include <iomanip>
#include <sstream>

#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

std::string Exact(float v) {
    std::ostringstream s;
    s << std::setprecision(9) << v;
    return s.str();
}

// A road (top at 1) with a kerb 2 high on its left, either whole or cut at
// `seam` into two blocks each, the second road block of kind `next`.
std::string KerbedRoad(float seam, const std::string& next) {
    if (seam <= 0) return TrackHead() + " block -2 0 -5 4 1 400 tex road\n block -3 0 -5 1 2 400 tex wall\n";
    const std::string s = Exact(seam), rest = Exact(395 - seam), first = Exact(seam + 5);
    return TrackHead() + " block -2 0 -5 4 1 " + first + " tex road\n block -3 0 -5 1 2 " + first +
           " tex wall\n block -2 0 " + s + " 4 1 " + rest + " tex road " + next + "\n block -3 0 " + s +
           " 1 2 " + rest + " tex wall\n";
}

// Full speed, a stop, and on again, pressed against the kerb all along;
// from frame `turn` on the car steers away from it.
std::vector<uint8_t> Keys(int frame, int turn) {
    if (frame >= turn) return {DIK_UP, DIK_RIGHT};
    if (frame >= 40 && frame < 60) return {DIK_DOWN, DIK_LEFT};
    return {DIK_UP, DIK_LEFT};
}

TEST(Seams, ALevelSeamIsNoWallEvenWhenTheNoseEndsAFrameAHairPastIt) {
    // The first frame after the restart at full speed, pressed to the kerb.
    int crossing = 0;
    float nose = 0;
    {
        Drive d("seam-whole", KerbedRoad(0, "plain"));
        for (int f = 0; f < 200 && crossing == 0; ++f) {
            const SimRow& r = d.frames(1, Keys(f, 1000));
            if (f > 60 && r.velocity.z > 0.5f) crossing = f, nose = r.position.z;
        }
        ASSERT_GT(crossing, 0);
        ASSERT_LT(d.car().Posx(), -1.59f) << "not against the kerb";
    }
    // The next blocks start just behind where that frame leaves the nose: in
    // that frame the nose went past both fronts, beside the kerb's and above
    // the road's; in the next it steers off the kerb, or a pad throws it up.
    struct Case {
        const char* what;
        std::string next;
        int turn;
    };
    for (const Case& c :
         {Case{"steering off the kerb", "plain", crossing + 1}, Case{"launched by a pad", "bounce", 1000}}) {
        for (float past : {0.0002f, 0.0008f}) {
            SCOPED_TRACE(std::string(c.what) + " " + Exact(past));
            const float seam = nose - past;
            Drive d("seam-cut", KerbedRoad(seam, c.next));
            for (int f = 0; f <= crossing + 40 && !d.car().getexplodeStatus(); ++f) {
                const SimRow& r = d.frames(1, Keys(f, c.turn));
                if (f == crossing) {
                    ASSERT_FLOAT_EQ(r.position.z, nose) << "the run before the seam changed";
                }
                EXPECT_FALSE(r.exploding) << "frame " << f << " z " << Exact(r.position.z);
            }
            EXPECT_GT(d.car().Posz(), seam + 10);
        }
    }
}

}  // namespace
}  // namespace qb
