#include "tests/world/WorldTest.h"
#include "world/clsStar.h"

namespace qb {
namespace {

struct StarRig : test::WorldRig {
    clsStar star{res};
    explicit StarRig(const std::string& name, const std::string& model = "orb.x") : WorldRig(name) {
        test::Touch(dir + "models/orb.x");
        star.load(dir + "models/" + model);
    }
};

TEST(Star, ACollectedStarIsNeitherDrawnNorSpunAndAMissingModelDrawsNothing) {
    StarRig rig("star-collected");
    clsStar& s = rig.star;
    s.Spin(WorldFrame{true, 0});
    s.draw();
    const int calls = rig.device.drawCalls;
    EXPECT_EQ(calls, 1);  // the headless model has one material
    s.GetStar();
    s.Spin(WorldFrame{true, 0});
    s.draw();
    EXPECT_EQ(rig.device.drawCalls, calls);
    EXPECT_EQ(s.spinAngle(), 5);

    StarRig missing("star-missing", "none.x");
    EXPECT_FALSE(missing.star.hasModel());
    EXPECT_TRUE(missing.star.visible());
    missing.star.Spin(WorldFrame{true, 0});  // spins, draws nothing, does not crash
    missing.star.draw();
    EXPECT_EQ(missing.device.drawCalls, 0);
    EXPECT_EQ(missing.star.spinAngle(), 5);
}

}  // namespace
}  // namespace qb
