#include <stdexcept>

#include "tests/world/WorldTest.h"
#include "world/clsRamp.h"

namespace qb {
namespace {

using test::WorldRig;

void MakeRamp(clsRamp& r, int x, int y, int z, int turns, int sx, int sy, int sz) {
    r.create(0, 0, 0);
    r.Xpos(x);
    r.Ypos(y);
    r.Zpos(z);
    for (int i = 0; i < turns; ++i) r.rotate();
    r.scaleX(static_cast<int16_t>(sx));
    r.scaleY(static_cast<int16_t>(sy));
    r.scalez(static_cast<int16_t>(sz));
}

TEST(Ramp, EveryRotationHasOutwardPlanesAndMissingSides) {
    WorldRig rig("ramp-all");
    const Vector3 out[6] = {{-1, 0, 0}, {1, 0, 0}, {0, 0, 0}, {0, 0, -1}, {0, -1, 0}, {0, 1, 0}};
    const int missing[4] = {4, 1, 0, 2};  // the side without height per rotation (0 = none)
    for (int rot = 0; rot < 4; ++rot) {
        clsRamp r(rig.res);
        MakeRamp(r, 3, 2, 7, rot, 2, 1, 3);
        EXPECT_EQ(r.GetRotation(), rot);
        for (int face = 1; face <= 6; ++face) {
            const CollisionPlane p = r.GetCollisionPlane(face);
            if (face == missing[rot] || (rot == 3 && face == 2)) {
                EXPECT_PLANE(p, 0, 0, 0, 0);
                continue;
            }
            if (face != 3)
                EXPECT_VEC3(r.GetPlaneNormal(face), out[face - 1].x, out[face - 1].y, out[face - 1].z);
            // Each corner of the face lies in its plane.
            for (const Vector3& c : r.GetFaceCorners(face).p)
                EXPECT_NEAR(p.a * c.x + p.b * c.y + p.c * c.z + p.d, 0, 1e-5) << rot << " " << face;
        }
        EXPECT_GT(r.GetCollisionPlane(3).b, 0) << rot;
    }
    clsRamp r(rig.res);
    r.create(0, 0, 0);
    EXPECT_THROW(r.GetCollisionPlane(7), std::out_of_range);
}

TEST(Ramp, FourTurnsComeBackAndSizesKeepTheRotation) {
    WorldRig rig("ramp-turns");
    clsRamp r(rig.res);
    MakeRamp(r, 0, 0, 0, 0, 2, 1, 4);
    for (int i = 0; i < 4; ++i) r.rotate();
    EXPECT_EQ(r.rotateVal(), 0);
    EXPECT_FLOAT_EQ(r.GetGradient(), 0.25f);
    r.rotate();
    r.scaleY(3);
    EXPECT_EQ(r.rotateVal(), 1);
    EXPECT_FLOAT_EQ(r.GetGradient(), 3.0f / 2.0f);
    EXPECT_EQ(r.scaleY(), 3);
    // The strip moved with the slope: beyond x = X + sizeX.
    Vector3 g, s;
    r.GetCollisionPlaneBounds(6, g, s);
    EXPECT_FLOAT_EQ(s.x, 2);
    EXPECT_FLOAT_EQ(g.x, 2.8f);
    EXPECT_FLOAT_EQ(g.y, 3);
}

TEST(Ramp, WholeNumberPositionsAndTextures) {
    WorldRig rig("ramp-pos");
    clsRamp r(rig.res);
    r.create(0, 0, 0);
    r.Ypos(-1);
    r.Zpos(-4);
    r.Xpos(-4);
    EXPECT_EQ(r.Ypos(), 0);
    EXPECT_EQ(r.Zpos(), 0);
    EXPECT_EQ(r.Xpos(), -4);
    r.SelectBlock();
    r.Texture("road.bmp", "A", rig.res.TexturesPath);
    EXPECT_FALSE(r.isSelected());
    r.Texture("wall.bmp", "C", rig.res.TexturesPath);  // ramps have faces A and B only
    EXPECT_EQ(r.GetTextureA(), "road.bmp");
    EXPECT_EQ(r.GetTextureB(), "");
    rig.device.drawCalls = 0;
    r.draw();
    EXPECT_EQ(rig.device.primitivesDrawn, 6);
}

}  // namespace
}  // namespace qb
