// A block that slides along x between its start and a point Mdist units away,
// either shuttling back and forth (loop-back) or jumping back to its start at
// the far end. Same box, faces, tiling and collision data as a block; it never
// falls, bounces or animates its textures.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"
#include "world/VertexPool.h"

namespace qb {

class WorldResources;

class clsMovingPlatform {
public:
    static constexpr uint8_t TowardsMinusX = 2;
    static constexpr uint8_t TowardsPlusX = 3;

    explicit clsMovingPlatform(WorldResources& resources);
    ~clsMovingPlatform();
    clsMovingPlatform(const clsMovingPlatform&) = delete;
    clsMovingPlatform& operator=(const clsMovingPlatform&) = delete;

    bool GetChangeDir() const { return directionChanged_; }
    uint8_t TextAlignTop() const { return scaleTextureTop_; }
    uint8_t TextAlignSide() const { return scaleTextureSide_; }
    void StartAnimation();
    void StopAnimation();
    uint8_t Mspeed() const { return speed_; }
    void Mspeed(uint8_t value) { speed_ = value; }
    uint8_t Mdir() const { return dir_; }
    void Mdir(uint8_t value) { dir_ = value; }
    uint8_t Mdist() const { return dist_; }
    void Mdist(uint8_t value) { dist_ = value; }
    bool MloopBack() const { return loopBack_; }
    void MloopBack(bool value) { loopBack_ = value; }
    uint8_t ScaleTextureSide() const { return scaleTextureSide_; }
    void ScaleTextureSide(uint8_t value) { scaleTextureSide_ = value; }
    uint8_t ScaleTextureTop() const { return scaleTextureTop_; }
    void ScaleTextureTop(uint8_t value) { scaleTextureTop_ = value; }
    // Side 1: the three side faces; any other value: the top.
    void AlignTexureCoords(int Side, int value);
    // Draws the platform `blend` of the way from where the last movement
    // step found it to where it is now (1: where it is).
    void draw(float blend = 1.0f);
    // The present position becomes the one drawings start from.
    void KeepDrawnState() { drawnX_ = x_; }
    // Velocity of the next movement step (x only; does not look at stopMoving).
    Vector3 GetVelocity() const;
    // One movement step; also recomputes the collision planes.
    void move();
    uint8_t changeactioncode() const { return actionCode_; }
    void changeactioncode(uint8_t code) { actionCode_ = code; }
    // Position setters also move the origin and the saved origin.
    float Xpos() const { return x_; }
    void Xpos(float value);
    float Ypos() const { return y_; }
    void Ypos(float value);  // ignored at -1 or below
    float Zpos() const { return z_; }
    void Zpos(float value);  // ignored at -1 or below
    void Texture(const std::string& Name, const std::string& face, const std::string& TextureDir);
    const std::string& GetTextureA() const { return faces_[0].name; }
    const std::string& GetTextureB() const { return faces_[1].name; }
    const std::string& GetTextureC() const { return faces_[2].name; }
    const std::string& GetTextureD() const { return faces_[3].name; }
    void create(float x, float y, float z);
    float scaleX() const { return sizeX_; }
    float scaleY() const { return sizeY_; }
    float scalez() const { return sizeZ_; }
    void scaleX(float value);  // 0 or less: ignored
    void scaleY(float value);
    void scalez(float value);
    // Its top shows the platform symbol large (TileTopSymbol) unless the
    // level fixes the top's repeat count. Called once the scales are set.
    void ShowSymbolLarge();
    void SelectBlock() { selected_ = true; }
    void UnSelectBlock() { selected_ = false; }
    void ResetToOrigin();
    const CollisionPlane& GetCollisionPlane(int planenumber) const;  // 1..5
    Vector3 GetPlaneNormal(int planenumber) const;
    void GetCollisionPlaneBounds(int planenumber, Vector3& greatest, Vector3& smallest) const;
    void stopMoving() { moving_ = false; }

    void UploadVertices();
    void UpdateCollisionPlanes();
    FaceCorners GetFaceCorners(int planenumber) const;  // zeros outside 1..5

    bool isMoving() const { return moving_; }
    bool isSelected() const { return selected_; }
    Vector3 origin() const { return origin_; }
    TextureId faceTexture(int faceIndex) const { return faces_.at(faceIndex).texture; }
    const BlockVertex* vertices() const { return vertices_.data(); }
    VertexSlot vertexSlot() const { return slot_; }

private:
    struct Face {
        TextureId texture = 0;
        std::string name;
    };

    WorldResources& res_;
    std::array<BlockVertex, 24> vertices_{};
    float x_ = 0, y_ = 0, z_ = 0;
    float drawnX_ = 0;
    float sizeX_ = 0, sizeY_ = 0, sizeZ_ = 0;
    uint8_t scaleTextureSide_ = 0, scaleTextureTop_ = 0;
    std::array<CollisionPlane, 5> planes_{};
    std::array<Face, 4> faces_{};
    VertexSlot slot_;
    uint8_t actionCode_ = 0;
    uint8_t speed_ = 0, dir_ = 0, dist_ = 0;
    bool loopBack_ = false;
    Vector3 origin_{}, savedOrigin_{};
    uint8_t savedDir_ = 0;
    bool moving_ = false, directionChanged_ = false, selected_ = false;
};

}  // namespace qb
