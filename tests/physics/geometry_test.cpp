// The contact geometry on its own: inside-the-face tests, contact edges and
// the downward segment test.
#include <gtest/gtest.h>

#include "physics/ContactGeometry.h"
#include "physics/maths.h"

namespace qb {
namespace {

const Vector3 Axes[3] = {{0, 0.8f, 0}, {0.8f, 0, 0}, {0, 0, 0.8f}};

TEST(PointInFace, TopFaceIsStrictlyInside) {
    // A block top at y = 1 over x 0..2, z 0..4, corners as the block gives them.
    const Vector3 c1{0, 1, 0}, c2{0, 1, 4}, c3{2, 1, 4}, c4{2, 1, 0};
    EXPECT_TRUE(PointInFace(c1, c2, c3, c4, {1, 1, 2}));
    EXPECT_FALSE(PointInFace(c1, c2, c3, c4, {0, 1, 2})) << "on the edge is outside";
    EXPECT_FALSE(PointInFace(c1, c2, c3, c4, {2.5f, 1, 2}));
    // The height of the point does not matter: the face is judged from above.
    EXPECT_TRUE(PointInFace(c1, c2, c3, c4, {1, 7, 2}));
}

TEST(PointInFace, TrianglesAndReversedQuads) {
    // A ramp side given as a triangle (fourth corner = first).
    const Vector3 t1{0, 0, 0}, t2{0, 1, 4}, t3{0, 0, 4};
    EXPECT_TRUE(PointInFace(t1, t2, t3, t1, {0, 0.2f, 3}));
    EXPECT_FALSE(PointInFace(t1, t2, t3, t1, {0, 0.9f, 1}));
    // A quad turning the other way counts only when asked for.
    const Vector3 q1{0, 1, 0}, q2{2, 1, 0}, q3{2, 1, 4}, q4{0, 1, 4};
    EXPECT_FALSE(PointInFace(q1, q2, q3, q4, {1, 1, 2}));
    EXPECT_TRUE(PointInFace(q1, q2, q3, q4, {1, 1, 2}, true));
}

TEST(ContactPoints, ATiltedFaceMeetsABoxEdgeAndAThreeWayTiltIsRefused) {
    ContactSet s;
    ASSERT_TRUE(FindContactPoints({0, 0, 0}, {0, 0.8f, -0.6f}, Axes, s));
    ASSERT_EQ(s.count, 2);
    EXPECT_FLOAT_EQ(s.p[0].y, -0.4f);
    EXPECT_FLOAT_EQ(s.p[0].z, 0.4f);
    EXPECT_FLOAT_EQ(s.p[0].x, -0.4f);
    EXPECT_FLOAT_EQ(s.p[1].x, 0.4f);
    EXPECT_FALSE(FindContactPoints({0, 0, 0}, {0.577f, 0.577f, 0.577f}, Axes, s));
}

TEST(SegmentPlaneHit, EndsCountAndNearZeroSnaps) {
    const CollisionPlane top{0, 1, 0, -1};  // y = 1
    Vector3 hit;
    ASSERT_TRUE(SegmentPlaneHit(top, {0.00005f, 3, 2}, {0, -2, 0}, hit));
    EXPECT_EQ(hit.x, 0.0f);
    EXPECT_FLOAT_EQ(hit.y, 1);
    EXPECT_TRUE(SegmentPlaneHit(top, {1, 1, 2}, {0, -5, 0}, hit)) << "start on the plane";
    EXPECT_FALSE(SegmentPlaneHit(top, {1, 3, 2}, {0, -1.5f, 0}, hit)) << "stops short";
    EXPECT_FALSE(SegmentPlaneHit(top, {1, 3, 2}, {1, 0, 0}, hit)) << "parallel";
}

}  // namespace
}  // namespace qb
