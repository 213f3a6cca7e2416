// Matrix helpers with the results of the D3DX routines the game was tuned on.
#pragma once

#include "platform/Types.h"

namespace qb {

Matrix4 MatrixIdentity();
Matrix4 MatrixTranslation(float x, float y, float z);
Matrix4 MatrixScaling(float x, float y, float z);
Matrix4 MatrixRotationX(float radians);
Matrix4 MatrixRotationY(float radians);
Matrix4 MatrixRotationZ(float radians);
// a * b: apply a first, then b (row vectors).
Matrix4 MatrixMultiply(const Matrix4& a, const Matrix4& b);
// Left-handed look-at: the camera at eye looks at `at`.
Matrix4 MatrixLookAtLH(const Vector3& eye, const Vector3& at, const Vector3& up);
// Left-handed perspective, depth mapped to 0..1 as Direct3D does.
Matrix4 MatrixPerspectiveFovLH(float fovy, float aspect, float zn, float zf);
Vector3 TransformCoord(const Vector3& v, const Matrix4& m);

Vector3 Vec3Subtract(const Vector3& a, const Vector3& b);
Vector3 Vec3Cross(const Vector3& a, const Vector3& b);
float Vec3Dot(const Vector3& a, const Vector3& b);
Vector3 Vec3Normalize(const Vector3& v);

// The point `t` of the way from a to b (t = 0 gives a, t = 1 gives b): a
// drawing between two play frames places moving things with it.
inline float Lerp(float a, float b, float t) {
    return t >= 1.0f ? b : a + (b - a) * t;
}
inline Vector3 Lerp(const Vector3& a, const Vector3& b, float t) {
    return Vector3{Lerp(a.x, b.x, t), Lerp(a.y, b.y, t), Lerp(a.z, b.z, t)};
}

}  // namespace qb
