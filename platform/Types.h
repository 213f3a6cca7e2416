// Records shared by the world objects, the collision pass and the device.
#pragma once

#include <cstdint>

namespace qb {

struct Vector3 {
    float x = 0, y = 0, z = 0;
};

struct Vector4 {
    float x = 0, y = 0, z = 0, w = 0;
};

// Plane a*x + b*y + c*z + d = 0 with (a, b, c) the unit normal pointing out.
struct CollisionPlane {
    float a = 0, b = 0, c = 0, d = 0;
};

// Four corners in order around a face.
struct FaceCorners {
    Vector3 p[4];
};

// The 28-byte vertex of blocks, ramps and platforms (XYZ|DIFFUSE|SPECULAR|TEX1).
struct BlockVertex {
    float x = 0, y = 0, z = 0;
    uint32_t diffuse = 0;
    uint32_t specular = 0;
    float u = 0, v = 0;
};
static_assert(sizeof(BlockVertex) == 28);

// Pre-transformed screen vertex (XYZRHW|DIFFUSE|SPECULAR|TEX1), 32 bytes.
struct ScreenVertex {
    float x = 0, y = 0, z = 0, rhw = 1;
    uint32_t diffuse = 0;
    uint32_t specular = 0;
    float u = 0, v = 0;
};
static_assert(sizeof(ScreenVertex) == 32);

// Point-sprite vertex (XYZ|DIFFUSE|TEX1), 24 bytes.
struct PointVertex {
    float x = 0, y = 0, z = 0;
    uint32_t diffuse = 0;
    float u = 0, v = 0;
};
static_assert(sizeof(PointVertex) == 24);

// Row-vector matrix as Direct3D keeps it: v' = v * M, translation in row 4.
struct Matrix4 {
    float m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

// Colour as four floats, built from (a, r, g, b) 16-bit integers unscaled.
struct ColorValue {
    float r = 0, g = 0, b = 0, a = 0;
};

constexpr uint32_t argb(uint32_t a, uint32_t r, uint32_t g, uint32_t b) {
    return (a << 24) | (r << 16) | (g << 8) | b;
}

}  // namespace qb
