// The geometry of a contact between the car's box and one face: where the
// box touches the face's plane, and whether a point lies inside the face.
#pragma once

#include "platform/Types.h"

namespace qb {

struct Vector2 {
    float x = 0, y = 0;
};

// The points where the box meets a plane: four for a face square to a box
// axis, two (an edge) for a face tilted about one axis.
struct ContactSet {
    Vector3 p[4];
    int count = 0;
};

float SignOf(float x);
Vector2 Perpendicular2D(const Vector2& v);
Vector2 ProjectXY(const Vector3& p);
Vector2 ProjectZY(const Vector3& p);
Vector2 ProjectXZ(const Vector3& p);
Vector3 FaceNormal(const Vector3& a, const Vector3& b, const Vector3& c);

// Contact points of the box (edges `axes`, E1 up, E2 across, E3 along) whose
// centre sits at H when it meets a plane of the given normal. Returns false
// when the normal is tilted against all three axes, which no face of the
// game can be.
bool FindContactPoints(const Vector3& H, const Vector3& normal, const Vector3 axes[3], ContactSet& out);

// Whether p lies strictly inside the face c1..c4 (a triangle when c4 = c1),
// judged in the plane that drops the face's dominant axis. `eitherWinding`
// also accepts a quad given in the opposite turning sense.
bool PointInFace(const Vector3& c1, const Vector3& c2, const Vector3& c3, const Vector3& c4, const Vector3& p,
                 bool eitherWinding = false);

}  // namespace qb
