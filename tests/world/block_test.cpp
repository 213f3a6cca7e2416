#include <cmath>
#include <stdexcept>

#include "platform/D3DMath.h"
#include "tests/world/WorldTest.h"
#include "world/clsBlock.h"

namespace qb {
namespace {

using test::WorldRig;

TEST(Block, PlanesCornersAndBoundsOfACreatedBlock) {
    WorldRig rig("block-planes");
    clsBlock b(rig.res);
    b.create(0, 0, 0, 2, 1, 4);
    EXPECT_PLANE(b.GetCollisionPlane(1), -1, 0, 0, 0);
    EXPECT_PLANE(b.GetCollisionPlane(2), 1, 0, 0, -2);
    EXPECT_PLANE(b.GetCollisionPlane(3), 0, 1, 0, -1);
    EXPECT_PLANE(b.GetCollisionPlane(4), 0, 0, -1, 0);
    EXPECT_PLANE(b.GetCollisionPlane(5), 0, -1, 0, 0);
    // Created with the depth shortened by 0.1; the builder's scalez restores it.
    EXPECT_FLOAT_EQ(b.scalez(), 3.9f);
    b.scalez(4);
    const FaceCorners top = b.GetFaceCorners(3);
    EXPECT_VEC3(top.p[0], 0, 1, 0);
    EXPECT_VEC3(top.p[1], 0, 1, 4);
    EXPECT_VEC3(top.p[2], 2, 1, 4);
    EXPECT_VEC3(top.p[3], 2, 1, 0);
    Vector3 g, s;
    b.GetCollisionPlaneBounds(3, g, s);
    EXPECT_VEC3(g, 2, 1, 4);
    EXPECT_VEC3(s, 0, 1, 0);
    // Side faces get a sliver of x range so a point test can succeed.
    b.GetCollisionPlaneBounds(1, g, s);
    EXPECT_FLOAT_EQ(g.x, 0.0001f);
    EXPECT_FLOAT_EQ(s.x, 0.0f);
    EXPECT_FLOAT_EQ(g.z, 4.0f);
    b.GetCollisionPlaneBounds(2, g, s);
    EXPECT_FLOAT_EQ(g.x, 2.0f);
    EXPECT_FLOAT_EQ(s.x, static_cast<float>(2.0 - 0.0001));
    // Out of range: corners are zeros, bounds untouched, planes an error.
    const FaceCorners none = b.GetFaceCorners(6);
    for (const Vector3& p : none.p) EXPECT_VEC3(p, 0, 0, 0);
    Vector3 keepG{7, 7, 7}, keepS{8, 8, 8};
    b.GetCollisionPlaneBounds(0, keepG, keepS);
    EXPECT_VEC3(keepG, 7, 7, 7);
    EXPECT_VEC3(keepS, 8, 8, 8);
    EXPECT_THROW(b.GetCollisionPlane(6), std::out_of_range);
    EXPECT_THROW(b.GetPlaneNormal(0), std::out_of_range);
}

TEST(Block, PlanesFollowThePositionWhenRecomputed) {
    WorldRig rig("block-move");
    clsBlock b(rig.res);
    b.create(3, 2, 10, 1, 0.5f, 2);
    EXPECT_PLANE(b.GetCollisionPlane(3), 0, 1, 0, -2.5f);
    EXPECT_PLANE(b.GetCollisionPlane(4), 0, 0, -1, 10);
    EXPECT_PLANE(b.GetCollisionPlane(2), 1, 0, 0, -4);
    // The shortened depth only matters to a block no deeper than 0.1.
    clsBlock thin(rig.res);
    thin.create(0, 0, 0, 1, 1, 0.1f);
    EXPECT_LT(thin.scalez(), 1e-6f);
    EXPECT_PLANE(thin.GetCollisionPlane(4), 0, 0, -1, 0);
}

TEST(Block, FacesWindClockwiseSeenFromOutside) {
    WorldRig rig("block-winding");
    clsBlock b(rig.res);
    b.create(0, 0, 0, 1, 1, 1);
    const Vector3 outward[4] = {{0, 0, -1}, {-1, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const BlockVertex* v = b.vertices();
    for (int t = 0; t < 8; ++t) {
        const Vector3 p1{v[3 * t].x, v[3 * t].y, v[3 * t].z};
        const Vector3 p2{v[3 * t + 1].x, v[3 * t + 1].y, v[3 * t + 1].z};
        const Vector3 p3{v[3 * t + 2].x, v[3 * t + 2].y, v[3 * t + 2].z};
        const Vector3 n = Vec3Normalize(Vec3Cross(Vec3Subtract(p2, p1), Vec3Subtract(p3, p1)));
        EXPECT_VEC3(n, outward[t / 2].x, outward[t / 2].y, outward[t / 2].z);
    }
    EXPECT_EQ(v[0].diffuse, 0xFF9A9A9Au);
    EXPECT_EQ(v[18].diffuse, 0xFFFFFFFFu);
}

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
    EXPECT_FLOAT_EQ(rig.device.buffers[b.vertexBuffer()][19].u, 3);

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
        b.draw(playing);
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
    b.draw(playing);
    EXPECT_FALSE(b.isBouncing());
    EXPECT_FLOAT_EQ(b.Ypos(), 5.0f);
    EXPECT_FLOAT_EQ(b.fallvel(), 0.0f);
    EXPECT_PLANE(b.GetCollisionPlane(3), 0, 1, 0, -6.0f);
}

TEST(Block, FallingBlockAcceleratesByTheTrackGravity) {
    WorldRig rig("block-fall");
    clsBlock b(rig.res);
    b.create(0, 10, 0, 1, 1, 1);
    b.Fall();
    const WorldFrame playing{true, 0.0025f};
    float last = b.Ypos();
    for (int i = 1; i <= 4; ++i) {
        b.draw(playing);
        EXPECT_NEAR(last - b.Ypos(), 0.0025f * i, 1e-6);
        EXPECT_NEAR(b.fallvel(), 0.0025f * i, 1e-7);
        last = b.Ypos();
    }
    EXPECT_NEAR(b.GetCollisionPlane(3).d, -(b.Ypos() + 1), 1e-5);
}

TEST(Block, NothingMovesOutsidePlay) {
    WorldRig rig("block-menu");
    clsBlock b(rig.res);
    b.create(0, 5, 0, 1, 1, 1);
    b.Fall();
    b.Bounce();
    const WorldFrame menu{false, 0.0025f};
    for (int i = 0; i < 10; ++i) b.draw(menu);
    EXPECT_FLOAT_EQ(b.Ypos(), 5);
    EXPECT_FLOAT_EQ(b.fallvel(), 0);
    EXPECT_FLOAT_EQ(b.bouncePhase(), -1.0f);
    // ...but it is drawn: four faces, two triangles each.
    EXPECT_EQ(rig.device.drawCalls, 40);
    EXPECT_EQ(rig.device.primitivesDrawn, 80);
}

TEST(Block, DrawPlacesTheUnitCubeWithScaleThenTranslation) {
    WorldRig rig("block-draw");
    clsBlock b(rig.res);
    b.create(1, 2, 3, 4, 5, 6);
    b.scalez(6);
    b.Texture("road.bmp", "D", rig.res.TexturesPath);
    b.draw(WorldFrame{});
    const Vector3 far = TransformCoord(Vector3{1, 1, 1}, rig.device.world);
    EXPECT_VEC3(far, 5, 7, 9);
    EXPECT_EQ(rig.device.boundTexture, b.faceTexture(3));  // the top is drawn last
}

TEST(Block, TextureFacesAreExactCapitalLetters) {
    WorldRig rig("block-faces");
    clsBlock b(rig.res);
    b.create(0, 0, 0, 1, 1, 1);
    b.Texture("road.bmp", "a", rig.res.TexturesPath);
    b.Texture("road.bmp", "E", rig.res.TexturesPath);
    b.Texture("road.bmp", "AB", rig.res.TexturesPath);
    EXPECT_EQ(rig.device.texturesLoaded, 0);
    EXPECT_EQ(b.GetTextureA(), "");
    b.Texture("road.bmp", "A", rig.res.TexturesPath);
    b.Texture("wall.bmp", "C", rig.res.TexturesPath);
    EXPECT_EQ(b.GetTextureA(), "road.bmp");
    EXPECT_EQ(b.GetTextureC(), "wall.bmp");
    EXPECT_NE(b.faceTexture(0), 0u);
    b.SETTEXTURE();
    EXPECT_EQ(rig.device.boundTexture, b.faceTexture(0));
}

}  // namespace
}  // namespace qb
