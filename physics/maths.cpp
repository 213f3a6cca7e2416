#include "physics/maths.h"

#include <cmath>

namespace qb {

float Distance(const Vector3& a, const Vector3& b) {
    const float dx = b.x - a.x, dy = b.y - a.y, dz = b.z - a.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

bool SegmentPlaneHit(const CollisionPlane& plane, const Vector3& point, const Vector3& direction,
                     Vector3& hit) {
    const float num = plane.a * point.x + plane.b * point.y + plane.c * point.z + plane.d * 1.0f;
    const float den = plane.a * direction.x + plane.b * direction.y + plane.c * direction.z;
    if (den == 0) return false;
    const float t = -num / den;
    hit = Vector3{point.x + t * direction.x, point.y + t * direction.y, point.z + t * direction.z};
    if (hit.x > -0.0001f && hit.x < 0.0001f) hit.x = 0;
    const Vector3 from{point.x - hit.x, point.y - hit.y, point.z - hit.z};
    const Vector3 to{point.x + direction.x - hit.x, point.y + direction.y - hit.y,
                     point.z + direction.z - hit.z};
    const float s0 = plane.a * from.x + plane.b * from.y + plane.c * from.z;
    const float s1 = plane.a * to.x + plane.b * to.y + plane.c * to.z;
    if ((s0 > 0 && s1 > 0) || (s0 < 0 && s1 < 0)) return false;
    return true;
}

}  // namespace qb
