#include "tests/world/WorldTest.h"
#include "world/AnimatedTextures.h"
#include "world/clsBlock.h"

namespace qb {
namespace {

using test::WorldRig;

TEST(AnimatedTextures, BlockFaceStepsThroughTheFramesWithoutRereadingFiles) {
    WorldRig rig("anim-block");
    clsBlock b(rig.res);
    b.create(0, 0, 0, 1, 1, 1);
    b.Texture("AnimationTest_2.bmp", "D", rig.res.TexturesPath);
    b.Texture("road.bmp", "A", rig.res.TexturesPath);
    b.Texture("animationtest_1.bmp", "B", rig.res.TexturesPath);
    EXPECT_TRUE(b.isAnimated(3));
    EXPECT_FALSE(b.isAnimated(0));
    EXPECT_FALSE(b.isAnimated(1));
    const char* expected[] = {"AnimationTest_3.bmp", "AnimationTest_0.bmp", "AnimationTest_1.bmp",
                              "AnimationTest_2.bmp", "AnimationTest_3.bmp"};
    TextureId seen[5] = {};
    for (int i = 0; i < 5; ++i) {
        b.UpdateAnimatedTexture();
        EXPECT_EQ(b.GetTextureD(), expected[i]);
        EXPECT_EQ(b.GetTextureA(), "road.bmp");
        seen[i] = b.faceTexture(3);
    }
    EXPECT_NE(seen[0], seen[1]);
    EXPECT_EQ(seen[0], seen[4]);
    // Road and the four frames: five reads, however long the animation runs.
    const int loads = rig.device.texturesLoaded;
    EXPECT_EQ(loads, 5);
    clsBlock other(rig.res);
    other.create(0, 0, 0, 1, 1, 1);
    other.Texture("AnimationTest_0.bmp", "C", rig.res.TexturesPath);
    for (int i = 0; i < 100; ++i) {
        b.UpdateAnimatedTexture();
        other.UpdateAnimatedTexture();
    }
    EXPECT_EQ(rig.device.texturesLoaded, loads);
    EXPECT_EQ(other.GetTextureC(), "AnimationTest_0.bmp");
}

}  // namespace
}  // namespace qb
