#include "physics/ContactGeometry.h"

#include <cmath>

#include "platform/D3DMath.h"

namespace qb {

float SignOf(float x) {
    return x < 0 ? -1.0f : 1.0f;
}

Vector2 Perpendicular2D(const Vector2& v) {
    return Vector2{-v.y, v.x};
}
Vector2 ProjectXY(const Vector3& p) {
    return Vector2{p.x, p.y};
}
Vector2 ProjectZY(const Vector3& p) {
    return Vector2{p.z, p.y};
}
Vector2 ProjectXZ(const Vector3& p) {
    return Vector2{p.x, p.z};
}

Vector3 FaceNormal(const Vector3& a, const Vector3& b, const Vector3& c) {
    return Vec3Normalize(Vec3Cross(Vec3Subtract(b, a), Vec3Subtract(c, a)));
}

namespace {
inline Vector3 Scaled(const Vector3& v, float k) {
    return Vector3{v.x * k, v.y * k, v.z * k};
}
inline Vector3 Plus(const Vector3& a, const Vector3& b) {
    return Vector3{a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector3 Minus(const Vector3& a, const Vector3& b) {
    return Vector3{a.x - b.x, a.y - b.y, a.z - b.z};
}
// H - 1/2 w
inline Vector3 Back(const Vector3& H, const Vector3& w) {
    return Minus(H, Scaled(w, 0.5f));
}
inline Vector2 Minus2(const Vector2& a, const Vector2& b) {
    return Vector2{a.x - b.x, a.y - b.y};
}
inline float Dot2(const Vector2& a, const Vector2& b) {
    return a.x * b.x + a.y * b.y;
}
}  // namespace

bool FindContactPoints(const Vector3& H, const Vector3& normal, const Vector3 axes[3], ContactSet& out) {
    const float D[3] = {Vec3Dot(normal, axes[0]), Vec3Dot(normal, axes[1]), Vec3Dot(normal, axes[2])};
    int nonZero = 0;
    for (float d : D)
        if (d != 0) ++nonZero;
    out.count = 0;
    if (nonZero == 1) {
        const int i = D[0] != 0 ? 0 : (D[1] != 0 ? 1 : 2);
        const int j = i == 0 ? 1 : 0;
        const int k = i == 2 ? 1 : 2;
        const Vector3 si = Scaled(axes[i], SignOf(D[i]));
        const Vector3& Ej = axes[j];
        const Vector3& Ek = axes[k];
        out.p[0] = Back(H, Minus(Minus(si, Ej), Ek));
        out.p[1] = Back(H, Minus(Plus(si, Ej), Ek));
        out.p[2] = Back(H, Plus(Minus(si, Ej), Ek));
        out.p[3] = Back(H, Plus(Plus(si, Ej), Ek));
        out.count = 4;
        return true;
    }
    if (nonZero == 2) {
        const int m = D[0] == 0 ? 0 : (D[1] == 0 ? 1 : 2);
        const int i = m == 0 ? 1 : 0;
        const int k = m == 2 ? 1 : 2;
        const Vector3 edge = Plus(Scaled(axes[i], SignOf(D[i])), Scaled(axes[k], SignOf(D[k])));
        out.p[0] = Back(H, Plus(edge, axes[m]));
        out.p[1] = Back(H, Minus(edge, axes[m]));
        out.count = 2;
        return true;
    }
    return nonZero == 0;
}

bool PointInFace(const Vector3& c1, const Vector3& c2, const Vector3& c3, const Vector3& c4, const Vector3& p,
                 bool eitherWinding) {
    const Vector3 n = FaceNormal(c1, c2, c3);
    float ax = std::fabs(n.x), ay = std::fabs(n.y), az = std::fabs(n.z);
    if (ax == ay || ax == az) ax = 0;
    if (ay == az) ay = 0;
    Vector2 (*project)(const Vector3&) = ProjectXZ;
    if (ax > ay && ax > az)
        project = ProjectZY;
    else if (ay <= ax)
        project = ProjectXY;

    const Vector2 q1 = project(c1), q2 = project(c2), q3 = project(c3), q4 = project(c4), pp = project(p);
    Vector2 e1 = Minus2(q2, q1), e2 = Minus2(q3, q2), e3 = Minus2(q4, q3), e4 = Minus2(q1, q4);
    const bool triangle = e4.x == 0 && e4.y == 0;
    if (triangle) e3 = Minus2(q1, q3);

    const float s1 = Dot2(Minus2(q1, pp), Perpendicular2D(e1));
    const float s2 = Dot2(Minus2(q2, pp), Perpendicular2D(e2));
    const float s3 = Dot2(Minus2(q3, pp), Perpendicular2D(e3));
    if (triangle) return s1 > 0 && s2 > 0 && s3 > 0;
    const float s4 = Dot2(Minus2(q4, pp), Perpendicular2D(e4));
    if (s1 > 0 && s2 > 0 && s3 > 0 && s4 > 0) return true;
    return eitherWinding && s1 < 0 && s2 < 0 && s3 < 0 && s4 < 0;
}

}  // namespace qb
