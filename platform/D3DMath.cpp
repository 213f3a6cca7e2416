#include "platform/D3DMath.h"

#include <cmath>

namespace qb {

Matrix4 MatrixIdentity() {
    return Matrix4{};
}

Matrix4 MatrixTranslation(float x, float y, float z) {
    Matrix4 r;
    r.m[3][0] = x;
    r.m[3][1] = y;
    r.m[3][2] = z;
    return r;
}

Matrix4 MatrixScaling(float x, float y, float z) {
    Matrix4 r;
    r.m[0][0] = x;
    r.m[1][1] = y;
    r.m[2][2] = z;
    return r;
}

Matrix4 MatrixRotationX(float a) {
    Matrix4 r;
    const float c = std::cos(a), s = std::sin(a);
    r.m[1][1] = c;
    r.m[1][2] = s;
    r.m[2][1] = -s;
    r.m[2][2] = c;
    return r;
}

Matrix4 MatrixRotationY(float a) {
    Matrix4 r;
    const float c = std::cos(a), s = std::sin(a);
    r.m[0][0] = c;
    r.m[0][2] = -s;
    r.m[2][0] = s;
    r.m[2][2] = c;
    return r;
}

Matrix4 MatrixRotationZ(float a) {
    Matrix4 r;
    const float c = std::cos(a), s = std::sin(a);
    r.m[0][0] = c;
    r.m[0][1] = s;
    r.m[1][0] = -s;
    r.m[1][1] = c;
    return r;
}

Matrix4 MatrixMultiply(const Matrix4& a, const Matrix4& b) {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            float s = 0;
            for (int k = 0; k < 4; ++k) s += a.m[i][k] * b.m[k][j];
            r.m[i][j] = s;
        }
    return r;
}

Vector3 Vec3Subtract(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Vector3 Vec3Cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

float Vec3Dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector3 Vec3Normalize(const Vector3& v) {
    const float len = std::sqrt(Vec3Dot(v, v));
    if (len == 0.0f) return v;
    return {v.x / len, v.y / len, v.z / len};
}

Matrix4 MatrixLookAtLH(const Vector3& eye, const Vector3& at, const Vector3& up) {
    const Vector3 zaxis = Vec3Normalize(Vec3Subtract(at, eye));
    const Vector3 xaxis = Vec3Normalize(Vec3Cross(up, zaxis));
    const Vector3 yaxis = Vec3Cross(zaxis, xaxis);
    Matrix4 r;
    r.m[0][0] = xaxis.x;
    r.m[0][1] = yaxis.x;
    r.m[0][2] = zaxis.x;
    r.m[0][3] = 0;
    r.m[1][0] = xaxis.y;
    r.m[1][1] = yaxis.y;
    r.m[1][2] = zaxis.y;
    r.m[1][3] = 0;
    r.m[2][0] = xaxis.z;
    r.m[2][1] = yaxis.z;
    r.m[2][2] = zaxis.z;
    r.m[2][3] = 0;
    r.m[3][0] = -Vec3Dot(xaxis, eye);
    r.m[3][1] = -Vec3Dot(yaxis, eye);
    r.m[3][2] = -Vec3Dot(zaxis, eye);
    r.m[3][3] = 1;
    return r;
}

Matrix4 MatrixPerspectiveFovLH(float fovy, float aspect, float zn, float zf) {
    const float yscale = 1.0f / std::tan(fovy / 2.0f);
    const float xscale = yscale / aspect;
    Matrix4 r;
    r.m[0][0] = xscale;
    r.m[1][1] = yscale;
    r.m[2][2] = zf / (zf - zn);
    r.m[2][3] = 1;
    r.m[3][2] = -zn * zf / (zf - zn);
    r.m[3][3] = 0;
    return r;
}

Vector3 TransformCoord(const Vector3& v, const Matrix4& m) {
    const float x = v.x * m.m[0][0] + v.y * m.m[1][0] + v.z * m.m[2][0] + m.m[3][0];
    const float y = v.x * m.m[0][1] + v.y * m.m[1][1] + v.z * m.m[2][1] + m.m[3][1];
    const float z = v.x * m.m[0][2] + v.y * m.m[1][2] + v.z * m.m[2][2] + m.m[3][2];
    const float w = v.x * m.m[0][3] + v.y * m.m[1][3] + v.z * m.m[2][3] + m.m[3][3];
    if (w == 0.0f) return {x, y, z};
    return {x / w, y / w, z / w};
}

}  // namespace qb
