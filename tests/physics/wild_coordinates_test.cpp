// Coordinates a track file may hold but no track needs: NaN, infinities and
// 1e30 for ramps and stars (placed on whole numbers) and for block sizes.
// The whole numbers made from them are defined (NaN is 0, the rest stops at
// a far edge) and a drive past them goes on without a fault; the sanitizer
// build runs this too.
#include <cmath>

#include "level/TrackObjects.h"
#include "platform/WholeNumbers.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

constexpr const char* kNaN = "0x7FC00000";
constexpr const char* kInf = "0x7F800000";
constexpr const char* kMinusInf = "0xFF800000";

TEST(WildCoordinates, GiveDefinedWholeNumbersAndADriveGoesOn) {
    const std::string src = test::TrackHead() + " block -2 0 -5 4 1 80 tex wall wall wall road\n" + " ramp " +
                            kNaN + " 1e30 -1e30 " + kInf + " " + kNaN + " 1e30 tex road wall\n" +
                            " ramp -1e30 " + kMinusInf + " 2147483648 4 2 6 tex road wall rot 3\n" +
                            " star " + kNaN + " " + kInf + " 1e30\n" + " star 0 2 20\n" + " block " + kNaN +
                            " " + kNaN + " 30 " + kInf + " 1e30 " + kNaN + "\n";
    test::Drive d("wild", src);
    const TrackObjects& t = *d.game().track;
    ASSERT_EQ(t.RampUpper, 1);
    EXPECT_EQ(t.ramps[0]->Xpos(), 0);
    EXPECT_EQ(t.ramps[0]->Ypos(), kFarthestCoordinate);
    EXPECT_EQ(t.ramps[0]->scaleX(), INT16_MAX);
    EXPECT_EQ(t.ramps[0]->scaleY(), 0);
    EXPECT_EQ(t.ramps[1]->Xpos(), -kFarthestCoordinate);
    EXPECT_EQ(t.ramps[1]->Zpos(), kFarthestCoordinate);
    ASSERT_EQ(t.StarUpper, 1);
    EXPECT_EQ(t.stars[0]->Xpos(), 0);
    EXPECT_EQ(t.stars[0]->Ypos(), kFarthestCoordinate);

    d.frames(60, {DIK_UP});
    EXPECT_TRUE(std::isfinite(d.car().Posz()));
    EXPECT_GT(d.car().Posz(), 5.0f);
}

TEST(WildCoordinates, WholeNumbersRoundHalfToEvenAndStopAtTheirEnds) {
    EXPECT_EQ(Whole32(2.5), 2);
    EXPECT_EQ(Whole32(3.5), 4);
    EXPECT_EQ(Whole32(-2.5), -2);
    EXPECT_EQ(Whole32(std::nan("")), 0);
    EXPECT_EQ(Whole32(1e30), INT32_MAX);
    EXPECT_EQ(Whole32(-1e30), INT32_MIN);
    EXPECT_EQ(Whole16(40000.0), INT16_MAX);
    EXPECT_EQ(Whole16(-HUGE_VAL), INT16_MIN);
    EXPECT_EQ(WholeCoordinate(3e9), kFarthestCoordinate);
}

}  // namespace
}  // namespace qb
