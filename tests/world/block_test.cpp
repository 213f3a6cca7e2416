#include "tests/world/WorldTest.h"
#include "world/clsBlock.h"

namespace qb {
namespace {

using test::WorldRig;

TEST(Block, TexturesRepeatPerUnitUnlessTheTrackFixesTheCount) {
    WorldRig rig("block-tiling");
    clsBlock b(rig.res);
    b.create(0, 0, 0, 3, 2, 5);
    b.ScaleTextureSide(0);
    b.ScaleTextureTop(0);
    b.scaleX(3);
    b.scaleY(2);
    b.scalez(5);
    const BlockVertex* v = b.vertices();
    // front: u 0..3 across x, v 0 at the top .. 2 at the bottom
    EXPECT_FLOAT_EQ(v[1].u, 3);
    EXPECT_FLOAT_EQ(v[0].u, 0);
    EXPECT_FLOAT_EQ(v[2].v, 2);
    EXPECT_FLOAT_EQ(v[0].v, 0);
    // left: u is 5 at z = 0; right: u is 5 at z = 1
    EXPECT_FLOAT_EQ(v[6].u, 5);
    EXPECT_FLOAT_EQ(v[7].u, 0);
    EXPECT_FLOAT_EQ(v[13].u, 5);
    EXPECT_FLOAT_EQ(v[12].u, 0);
    // top: u 0..3 across x, v 5 at z = 0
    EXPECT_FLOAT_EQ(v[19].u, 3);
    EXPECT_FLOAT_EQ(v[20].v, 5);
    EXPECT_FLOAT_EQ(v[18].v, 0);
    // The uploaded buffer holds the same vertices.
    EXPECT_FLOAT_EQ(rig.device.buffers[b.vertexSlot().buffer][b.vertexSlot().start + 19].u, 3);

    clsBlock fixed(rig.res);
    fixed.create(0, 0, 0, 3, 2, 5);
    fixed.ScaleTextureSide(2);
    fixed.ScaleTextureTop(1);
    fixed.scaleX(3);
    fixed.scalez(5);
    EXPECT_FLOAT_EQ(fixed.vertices()[1].u, 2);   // front
    EXPECT_FLOAT_EQ(fixed.vertices()[19].u, 1);  // top
    EXPECT_FLOAT_EQ(fixed.vertices()[20].v, 1);
    EXPECT_FLOAT_EQ(fixed.vertices()[6].u, 2);  // left

    // Zero or negative sizes change nothing.
    fixed.scaleX(0);
    fixed.scaleY(-2);
    EXPECT_FLOAT_EQ(fixed.scaleX(), 3);
    EXPECT_FLOAT_EQ(fixed.scaleY(), 2);
    EXPECT_FLOAT_EQ(fixed.vertices()[1].u, 2);
}

TEST(Block, PositionSettersIgnoreMinusOneAndRoundZ) {
    WorldRig rig("block-pos");
    clsBlock b(rig.res);
    b.create(1, 2, 3, 1, 1, 1);
    b.Ypos(-1.0f);
    b.Zpos(-1);
    EXPECT_FLOAT_EQ(b.Ypos(), 2);
    EXPECT_EQ(b.Zpos(), 3);
    b.Ypos(-0.5f);
    EXPECT_FLOAT_EQ(b.Ypos(), -0.5f);
    b.Xpos(-7.25f);
    EXPECT_FLOAT_EQ(b.Xpos(), -7.25f);
    clsBlock half(rig.res);
    half.create(0, 0, 2.5f, 1, 1, 1);
    EXPECT_EQ(half.Zpos(), 2);
    half.create(0, 0, 3.5f, 1, 1, 1);
    EXPECT_EQ(half.Zpos(), 4);
}

TEST(Block, BounceLiftsOneUnitAndSettlesAfter22Updates) {
    WorldRig rig("block-bounce");
    clsBlock b(rig.res);
    b.create(0, 5, 0, 1, 1, 1);
    b.Bounce();
    const WorldFrame playing{true, 0.0025f};
    std::vector<float> heights;
    for (int i = 0; i < 21; ++i) {
        b.Advance(playing);
        heights.push_back(b.Ypos());
        EXPECT_TRUE(b.isBouncing()) << i;
    }
    EXPECT_NEAR(heights[0], 5.0f, 1e-5);
    EXPECT_NEAR(heights[1], 5.19f, 1e-5);
    EXPECT_NEAR(heights[2], 5.36f, 1e-5);
    EXPECT_NEAR(heights[10], 6.0f, 1e-5);
    EXPECT_NEAR(heights[19], 5.19f, 1e-5);
    EXPECT_NEAR(heights[20], 5.0f, 1e-5);
    EXPECT_NEAR(b.fallvel(), 5.19f - 5.0f, 1e-5);
    // The 22nd update would give 4.79: the bounce ends exactly at its base.
    b.Advance(playing);
    EXPECT_FALSE(b.isBouncing());
    EXPECT_FLOAT_EQ(b.Ypos(), 5.0f);
    EXPECT_FLOAT_EQ(b.fallvel(), 0.0f);
    EXPECT_PLANE(b.GetCollisionPlane(3), 0, 1, 0, -6.0f);
}

}  // namespace
}  // namespace qb
