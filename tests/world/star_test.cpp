#include "tests/world/WorldTest.h"
#include "world/clsStar.h"

namespace qb {
namespace {

using test::WorldRig;

TEST(Star, SpinsFiveDegreesPerPlayFrameAndWrapsToOne) {
    WorldRig rig("star-spin");
    test::Touch(rig.dir + "models/orb.x");
    clsStar s(rig.res);
    s.load(rig.dir + "models/orb.x");
    EXPECT_TRUE(s.visible());
    EXPECT_EQ(s.spinAngle(), 0);
    const WorldFrame playing{true, 0};
    for (int i = 0; i < 72; ++i) s.Spin(playing);
    EXPECT_EQ(s.spinAngle(), 360);
    s.Spin(playing);
    EXPECT_EQ(s.spinAngle(), 1);
    // Menus show it frozen.
    for (int i = 0; i < 5; ++i) s.Spin(WorldFrame{});
    EXPECT_EQ(s.spinAngle(), 1);
}

TEST(Star, CollectedStarIsNeitherDrawnNorSpun) {
    WorldRig rig("star-collected");
    test::Touch(rig.dir + "models/orb.x");
    clsStar s(rig.res);
    s.load(rig.dir + "models/orb.x");
    s.Spin(WorldFrame{true, 0});
    s.draw();
    const int calls = rig.device.drawCalls;
    EXPECT_EQ(calls, 1);  // the headless model has one material
    s.GetStar();
    s.Spin(WorldFrame{true, 0});
    s.draw();
    EXPECT_EQ(rig.device.drawCalls, calls);
    EXPECT_EQ(s.spinAngle(), 5);
}

TEST(Star, StarsShareOneModel) {
    WorldRig rig("star-share");
    test::Touch(rig.dir + "models/orb.x");
    clsStar a(rig.res), b(rig.res);
    a.load(rig.dir + "models/orb.x");
    b.load(rig.dir + "models/orb.x");
    EXPECT_TRUE(a.hasModel());
    EXPECT_TRUE(b.hasModel());
    clsStar missing(rig.res);
    missing.load(rig.dir + "models/none.x");
    EXPECT_FALSE(missing.hasModel());
    EXPECT_TRUE(missing.visible());
    missing.Spin(WorldFrame{true, 0});  // spins, draws nothing, does not crash
    missing.draw();
    EXPECT_EQ(missing.spinAngle(), 5);
}

}  // namespace
}  // namespace qb
