#include "world/BoxShape.h"

#include <algorithm>
#include <cmath>

#include "platform/D3DMath.h"

namespace qb {

namespace {
struct UnitVertex {
    float x, y, z, u, v;
};

// front z = 0, left x = 0, right x = 1, top y = 1; clockwise seen from outside.
constexpr UnitVertex kUnitBox[24] = {
    {0, 1, 0, 0, 0}, {1, 1, 0, 1, 0}, {0, 0, 0, 0, 1}, {1, 1, 0, 1, 0}, {1, 0, 0, 1, 1}, {0, 0, 0, 0, 1},
    {0, 0, 0, 1, 1}, {0, 1, 1, 0, 0}, {0, 1, 0, 1, 0}, {0, 1, 1, 0, 0}, {0, 0, 0, 1, 1}, {0, 0, 1, 0, 1},
    {1, 1, 0, 0, 0}, {1, 1, 1, 1, 0}, {1, 0, 0, 0, 1}, {1, 1, 1, 1, 0}, {1, 0, 1, 1, 1}, {1, 0, 0, 0, 1},
    {0, 1, 1, 0, 0}, {1, 1, 1, 1, 0}, {0, 1, 0, 0, 1}, {1, 1, 1, 1, 0}, {1, 1, 0, 1, 1}, {0, 1, 0, 0, 1},
};

constexpr int kFront = 0, kLeft = 6, kRight = 12, kTop = 18;

float Repeat(uint8_t scale, float size) {
    return scale != 0 ? static_cast<float>(scale) : size;
}
}  // namespace

void BuildBoxVertices(BoxVertices& v, uint32_t sideColour, uint32_t topColour) {
    for (int i = 0; i < 24; ++i) {
        const UnitVertex& u = kUnitBox[i];
        v[i] = BlockVertex{u.x, u.y, u.z, i >= kTop ? topColour : sideColour, 0, u.u, u.v};
    }
}

void TileBoxX(BoxVertices& v, float sizeX, uint8_t sideScale, uint8_t topScale) {
    const float us = Repeat(sideScale, sizeX), ut = Repeat(topScale, sizeX);
    for (int i = kFront; i < kFront + 6; ++i) v[i].u = v[i].x != 0 ? us : 0;
    for (int i = kTop; i < kTop + 6; ++i) v[i].u = v[i].x != 0 ? ut : 0;
}

void TileBoxY(BoxVertices& v, float sizeY, uint8_t sideScale) {
    const float us = Repeat(sideScale, sizeY);
    for (int i = kFront; i < kTop; ++i) v[i].v = v[i].y == 0 ? us : 0;
}

void TileBoxZ(BoxVertices& v, float sizeZ, uint8_t sideScale, uint8_t topScale) {
    const float us = Repeat(sideScale, sizeZ), ut = Repeat(topScale, sizeZ);
    for (int i = kLeft; i < kLeft + 6; ++i) v[i].u = v[i].z == 0 ? us : 0;
    for (int i = kRight; i < kRight + 6; ++i) v[i].u = v[i].z != 0 ? us : 0;
    for (int i = kTop; i < kTop + 6; ++i) v[i].v = v[i].z == 0 ? ut : 0;
}

void TileTopSymbol(BoxVertices& v, float sizeX, float sizeZ) {
    if (sizeX <= 0 || sizeZ <= 0) return;
    const float tile = std::min({sizeX, sizeZ, SymbolTileMax});
    const float ut = std::max(1.0f, std::round(sizeX / tile)), vt = std::max(1.0f, std::round(sizeZ / tile));
    for (int i = kTop; i < kTop + 6; ++i) {
        v[i].u = v[i].x != 0 ? ut : 0;
        v[i].v = v[i].z == 0 ? vt : 0;
    }
}

void DrawBoxFaces(GraphicsDevice& device, VertexSlot slot, const std::array<TextureId, 4>& textures) {
    for (int f = 0; f < 4;) {
        int end = f + 1;
        while (end < 4 && textures[end] == textures[f]) ++end;
        device.setTexture(textures[f]);
        device.drawBuffer(Primitive::TriangleList, slot.buffer, slot.start + f * 6, (end - f) * 2);
        f = end;
    }
}

CollisionPlane PlaneFromPoints(const Vector3& p1, const Vector3& p2, const Vector3& p3) {
    const Vector3 n = Vec3Normalize(Vec3Cross(Vec3Subtract(p2, p1), Vec3Subtract(p3, p1)));
    return CollisionPlane{n.x, n.y, n.z, -Vec3Dot(n, p1)};
}

void BoxPlanes(const Box& b, std::array<CollisionPlane, 5>& planes) {
    const float X = b.x, Y = b.y, Z = b.z, x1 = b.x + b.sx, y1 = b.y + b.sy, z1 = b.z + b.sz;
    planes[0] = PlaneFromPoints({X, y1, z1}, {X, Y, Z}, {X, Y, z1});
    planes[1] = PlaneFromPoints({x1, y1, Z}, {x1, Y, z1}, {x1, Y, Z});
    planes[2] = PlaneFromPoints({X, y1, z1}, {x1, y1, z1}, {X, y1, Z});
    planes[3] = PlaneFromPoints({X, y1, Z}, {x1, Y, Z}, {X, Y, Z});
    planes[4] = PlaneFromPoints({X, Y, Z}, {x1, Y, z1}, {X, Y, z1});
}

FaceCorners BoxFaceCorners(const Box& b, int face) {
    const float X = b.x, Y = b.y, Z = b.z, x1 = b.x + b.sx, y1 = b.y + b.sy, z1 = b.z + b.sz;
    switch (face) {
        case 1:
            return FaceCorners{{{X, y1, Z}, {X, y1, z1}, {X, Y, z1}, {X, Y, Z}}};
        case 2:
            return FaceCorners{{{x1, y1, Z}, {x1, y1, z1}, {x1, Y, z1}, {x1, Y, Z}}};
        case 3:
            return FaceCorners{{{X, y1, Z}, {X, y1, z1}, {x1, y1, z1}, {x1, y1, Z}}};
        case 4:
            return FaceCorners{{{X, Y, Z}, {X, y1, Z}, {x1, y1, Z}, {x1, Y, Z}}};
        case 5:
            return FaceCorners{{{X, Y, Z}, {X, Y, z1}, {x1, Y, z1}, {x1, Y, Z}}};
        default:
            return FaceCorners{};
    }
}

void CornerBounds(const FaceCorners& c, int face, Vector3& greatest, Vector3& smallest) {
    greatest = smallest = c.p[0];
    for (int i = 1; i < 4; ++i) {
        const Vector3& p = c.p[i];
        if (p.x > greatest.x) greatest.x = p.x;
        if (p.y > greatest.y) greatest.y = p.y;
        if (p.z > greatest.z) greatest.z = p.z;
        if (p.x < smallest.x) smallest.x = p.x;
        if (p.y < smallest.y) smallest.y = p.y;
        if (p.z < smallest.z) smallest.z = p.z;
    }
    // The widening is worked out in double precision and stored back.
    if (face == 1) greatest.x = static_cast<float>(static_cast<double>(greatest.x) + 0.0001);
    if (face == 2) smallest.x = static_cast<float>(static_cast<double>(smallest.x) - 0.0001);
}

}  // namespace qb
