// A ramp: a wedge filling a box of whole-number position and size. Its slope
// rises from floor height at the low edge to the top of the box at the high
// edge and can be turned in quarter turns (rises towards +z, +x, -z, -x for
// rotations 0..3). Beyond the high edge lies a flat landing strip one car
// length deep, so the car can leave the slope smoothly.
//
// Planes / faces 1..6: 1 side x = X, 2 side x = X + sizeX, 3 slope, 4 front
// z = Z, 5 underside, 6 landing strip. A side where the wedge has no height
// has an all-zero plane and all-zero corners.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"
#include "world/VertexPool.h"

namespace qb {

class WorldResources;

class clsRamp {
public:
    static constexpr int VertexCount = 18;
    static constexpr float StripDepth = 0.8f;

    explicit clsRamp(WorldResources& resources);
    ~clsRamp();
    clsRamp(const clsRamp&) = delete;
    clsRamp& operator=(const clsRamp&) = delete;

    uint8_t rotateVal() const { return rotation_; }
    void create(float x, float y, float z);
    // One quarter turn: 0 -> 1 -> 2 -> 3 -> 0, inside the same box.
    void rotate();
    void draw();
    // Face "A" the slope, "B" the sides and the end wall.
    void Texture(const std::string& Name, const std::string& face, const std::string& TextureDir);
    int32_t Xpos() const;  // rounded half to even
    void Xpos(int32_t value);
    int32_t Ypos() const;
    void Ypos(int32_t value);  // ignored at -1 or below
    int32_t Zpos() const;
    void Zpos(int32_t value);  // ignored at -1 or below
    void SelectBlock() { selected_ = true; }
    void UnSelectBlock() { selected_ = false; }
    int16_t scaleX() const;
    int16_t scaleY() const;
    int16_t scalez() const;
    // Each size setter rebuilds the vertices and the planes.
    void scaleX(int16_t value);
    void scaleY(int16_t value);
    void scalez(int16_t value);
    const std::string& GetTextureA() const { return faces_[0].name; }
    const std::string& GetTextureB() const { return faces_[1].name; }
    uint8_t GetRotation() const { return rotation_; }
    // Height gained per unit along +z (rotations 0, 2) or +x (1, 3).
    float GetGradient() const;
    void CalculateCollisionPlanes();
    const CollisionPlane& GetCollisionPlane(int planenumber) const;  // 1..6
    Vector3 GetPlaneNormal(int planenumber) const;
    void GetCollisionPlaneBounds(int planenumber, Vector3& greatest, Vector3& smallest) const;

    void UploadVertices();
    FaceCorners GetFaceCorners(int planenumber) const;  // zeros outside 1..6

    bool isSelected() const { return selected_; }
    TextureId faceTexture(int faceIndex) const { return faces_.at(faceIndex).texture; }
    const BlockVertex* vertices() const { return vertices_.data(); }
    VertexSlot vertexSlot() const { return slot_; }

private:
    struct Face {
        TextureId texture = 0;
        std::string name;
    };

    void buildVertices();

    WorldResources& res_;
    std::array<BlockVertex, VertexCount> vertices_{};
    float x_ = 0, y_ = 0, z_ = 0;
    float sizeX_ = 1, sizeY_ = 1, sizeZ_ = 1;
    uint8_t rotation_ = 0;
    std::array<Face, 2> faces_{};
    bool selected_ = false;
    VertexSlot slot_;
    std::array<CollisionPlane, 6> planes_{};
};

}  // namespace qb
