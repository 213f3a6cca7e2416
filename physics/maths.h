// Small geometry helpers of the shadow's downward search.
#pragma once

#include "platform/Types.h"

namespace qb {

// Length of b - a.
float Distance(const Vector3& a, const Vector3& b);

// Where the segment from `point` to point + direction meets the plane; true
// when it does (ends included). A hit within 0.0001 of x = 0 snaps to 0.
bool SegmentPlaneHit(const CollisionPlane& plane, const Vector3& point, const Vector3& direction,
                     Vector3& hit);

}  // namespace qb
