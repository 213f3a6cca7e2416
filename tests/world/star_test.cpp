#include "platform/D3DMath.h"
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
    for (int i = 0; i < 72; ++i) s.draw(playing);
    EXPECT_EQ(s.spinAngle(), 360);
    s.draw(playing);
    EXPECT_EQ(s.spinAngle(), 1);
    // Menus show it frozen.
    for (int i = 0; i < 5; ++i) s.draw(WorldFrame{});
    EXPECT_EQ(s.spinAngle(), 1);
}

TEST(Star, CollectedStarIsNeitherDrawnNorSpun) {
    WorldRig rig("star-collected");
    test::Touch(rig.dir + "models/orb.x");
    clsStar s(rig.res);
    s.load(rig.dir + "models/orb.x");
    s.draw(WorldFrame{true, 0});
    const int calls = rig.device.drawCalls;
    EXPECT_EQ(calls, 1);  // the headless model has one material
    s.GetStar();
    s.draw(WorldFrame{true, 0});
    EXPECT_EQ(rig.device.drawCalls, calls);
    EXPECT_EQ(s.spinAngle(), 5);
}

TEST(Star, DrawnTurnedAboutYAtItsPositionWithoutTexture) {
    WorldRig rig("star-draw");
    test::Touch(rig.dir + "models/orb.x");
    clsStar s(rig.res);
    s.load(rig.dir + "models/orb.x");
    s.Xpos(-1);
    s.Ypos(-1);  // ignored
    s.Ypos(3);
    s.Zpos(12);
    rig.device.boundTexture = 99;
    for (int i = 0; i < 18; ++i) s.draw(WorldFrame{true, 0});  // 90 degrees
    EXPECT_EQ(rig.device.boundTexture, 0u);                    // the material names no skin
    const Vector3 p = TransformCoord(Vector3{1, 0, 0}, rig.device.world);
    EXPECT_NEAR(p.x, -1, 1e-5);
    EXPECT_NEAR(p.y, 3, 1e-5);
    EXPECT_NEAR(p.z, 12 - 1, 1e-5);  // +x turned a quarter about y points to -z
    EXPECT_EQ(s.Xpos(), -1);
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
    missing.draw(WorldFrame{true, 0});  // spins, draws nothing, does not crash
    EXPECT_EQ(missing.spinAngle(), 5);
}

}  // namespace
}  // namespace qb
