// A block: an axis-aligned box of track. Its top is the road, its x sides and
// front are walls, its underside stops a jump. It keeps its action code (what
// happens when the car lands on it), the bounce and fall animations, and the
// collision data the driving code asks for: five planes, face corners and
// face bounds.
//
// Face / plane numbers: 1 side x = X (normal -x), 2 side x = X + sizeX (+x),
// 3 top (+y), 4 front z = Z (-z), 5 underside (-y).
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"
#include "world/VertexPool.h"
#include "world/WorldFrame.h"

namespace qb {

class WorldResources;

class clsBlock {
public:
    static constexpr int VertexCount = 24;
    static constexpr uint32_t SideColour = 0xFF9A9A9Au;
    static constexpr uint32_t TopColour = 0xFFFFFFFFu;

    // Action codes.
    enum : uint8_t { Plain = 0, Finish = 1, BouncePad = 2, Ice = 3, Falling = 4, Turbo = 5, Deadly = 6 };

    explicit clsBlock(WorldResources& resources);
    ~clsBlock();
    clsBlock(const clsBlock&) = delete;
    clsBlock& operator=(const clsBlock&) = delete;

    void Bounce();
    void Fall();
    uint8_t TextAlignTop() const { return scaleTextureTop_; }
    uint8_t TextAlignSide() const { return scaleTextureSide_; }
    uint8_t ScaleTextureSide() const { return scaleTextureSide_; }
    void ScaleTextureSide(uint8_t value) { scaleTextureSide_ = value; }
    uint8_t ScaleTextureTop() const { return scaleTextureTop_; }
    void ScaleTextureTop(uint8_t value) { scaleTextureTop_ = value; }
    // One play frame of a fall or a bounce (nothing outside play).
    void Advance(const WorldFrame& frame);
    // Draws the block `blend` of the way from where the last play frame
    // found it to where it is now (1: where it is).
    void draw(float blend = 1.0f);
    // The present height becomes the one drawings start from.
    void KeepDrawnState() { drawnY_ = y_; }
    float fallvel() const { return fallvel_; }
    uint8_t changeactioncode() const { return actionCode_; }
    void changeactioncode(uint8_t code) { actionCode_ = code; }
    float Xpos() const { return x_; }
    void Xpos(float value) { x_ = value; }
    float Ypos() const { return y_; }
    void Ypos(float value);    // ignored at -1 or below
    int32_t Zpos() const;      // Z rounded half to even
    void Zpos(int32_t value);  // ignored at -1 or below
    // Face "A" front, "B" left, "C" right, "D" top (exact letters only).
    void Texture(const std::string& Name, const std::string& face, const std::string& TextureDir);
    const std::string& GetTextureA() const { return faces_[0].name; }
    const std::string& GetTextureB() const { return faces_[1].name; }
    const std::string& GetTextureC() const { return faces_[2].name; }
    const std::string& GetTextureD() const { return faces_[3].name; }
    // The planes use the depth shortened by 0.1 until they are next recomputed.
    void create(float x, float y, float z, float sx, float sy, float sz);
    float scaleX() const { return sizeX_; }
    float scaleY() const { return sizeY_; }
    float scalez() const { return sizeZ_; }
    void scaleX(float value);  // 0 or less: ignored
    void scaleY(float value);
    void scalez(float value);
    // A special block whose level leaves its top's repeat count open shows
    // its symbol large (TileTopSymbol); a plain block or a fixed count is
    // left alone. Called once the action code is set.
    void ShowSymbolLarge();
    // planenumber 1..5; anything else throws std::out_of_range.
    const CollisionPlane& GetCollisionPlane(int planenumber) const;
    Vector3 GetPlaneNormal(int planenumber) const;
    // Moves every animated face on to its next frame.
    void UpdateAnimatedTexture();
    void SETTEXTURE();
    // Per-axis max/min over the face's corners, side faces widened by 0.0001.
    void GetCollisionPlaneBounds(int planenumber, Vector3& greatest, Vector3& smallest) const;

    void UpdateCollisionPlanes();
    void UploadVertices();
    FaceCorners GetFaceCorners(int planenumber) const;  // zeros outside 1..5

    // State views for the driving code and tests.
    bool isFalling() const { return falling_; }
    bool isBouncing() const { return bouncing_; }
    float bouncePhase() const { return bouncePhase_; }
    bool isAnimated(int faceIndex) const { return faces_.at(faceIndex).animated; }
    TextureId faceTexture(int faceIndex) const { return faces_.at(faceIndex).texture; }
    const BlockVertex* vertices() const { return vertices_.data(); }
    VertexSlot vertexSlot() const { return slot_; }

private:
    struct Face {
        TextureId texture = 0;
        std::string name;
        bool animated = false;
    };

    WorldResources& res_;
    std::array<BlockVertex, VertexCount> vertices_{};
    float x_ = 0, y_ = 0, z_ = 0;
    float drawnY_ = 0;
    float sizeX_ = 0, sizeY_ = 0, sizeZ_ = 0;
    uint8_t scaleTextureSide_ = 0, scaleTextureTop_ = 0;
    std::array<CollisionPlane, 5> planes_{};
    std::array<Face, 4> faces_{};
    VertexSlot slot_;
    uint8_t actionCode_ = 0;
    bool falling_ = false, bouncing_ = false;
    float bouncePhase_ = 0, bounceBase_ = 0, fallvel_ = 0;
};

}  // namespace qb
