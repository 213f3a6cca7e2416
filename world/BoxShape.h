// The box that blocks and moving platforms share: its 24 vertices with their
// texture tiling, its five collision planes, face corners and face bounds.
// Also the plane-from-points and bounds rules the ramp uses.
#pragma once

#include <array>
#include <cstdint>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"
#include "world/VertexPool.h"

namespace qb {

using BoxVertices = std::array<BlockVertex, 24>;

struct Box {
    float x, y, z, sx, sy, sz;
};

// The unit cube's front, left, right and top faces (6 vertices each) with
// unit texture coordinates.
void BuildBoxVertices(BoxVertices& v, uint32_t sideColour, uint32_t topColour);
// Repeat counts per axis: the scale when non-zero, else the size itself.
void TileBoxX(BoxVertices& v, float sizeX, uint8_t sideScale, uint8_t topScale);
void TileBoxY(BoxVertices& v, float sizeY, uint8_t sideScale);
void TileBoxZ(BoxVertices& v, float sizeZ, uint8_t sideScale, uint8_t topScale);
// The top of a special block or platform: its symbol in square tiles as
// wide as the top's narrower side, at most SymbolTileMax units, a whole
// number of them each way (a one-unit symbol is too small to make out from
// the driver's seat).
constexpr float SymbolTileMax = 4.0f;
void TileTopSymbol(BoxVertices& v, float sizeX, float sizeZ);

// Draws the four faces of a box whose vertices are in `slot`, one call for
// each run of neighbouring faces that show the same texture.
void DrawBoxFaces(GraphicsDevice& device, VertexSlot slot, const std::array<TextureId, 4>& textures);

// normalize((p2 - p1) x (p3 - p1)), d = -(normal . p1)
CollisionPlane PlaneFromPoints(const Vector3& p1, const Vector3& p2, const Vector3& p3);
void BoxPlanes(const Box& b, std::array<CollisionPlane, 5>& planes);
FaceCorners BoxFaceCorners(const Box& b, int face);  // zeros outside 1..5
// Bounds over four corners; face 1 raises greatest.x and face 2 lowers
// smallest.x by 0.0001 so that a side face's x range is never empty.
void CornerBounds(const FaceCorners& c, int face, Vector3& greatest, Vector3& smallest);

}  // namespace qb
