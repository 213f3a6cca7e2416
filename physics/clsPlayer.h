// The car: its position and speeds, the model, the explosion and the few
// flags the collision pass sets. It moves itself once a frame inside draw
// (after the collision pass has corrected its speeds), then takes the camera
// along and lays its shadow.
//
// The reference point is the middle of the car's underside at its nose: the
// collision box spans x -0.4..0.4, y 0..0.8 and z -0.8..0 around it and never
// turns with the model.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/D3DMath.h"
#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

class frmGame;

class clsPlayer {
public:
    static constexpr float TopSpeed = 0.6f;
    static constexpr float NormalFriction = 0.04f;
    static constexpr float IceFriction = 0.01f;
    static constexpr float SteerSpeed = 0.12f;
    static constexpr int ExplosionFrames = 16;
    static constexpr uint32_t ExplodeFrameInterval = 85;  // ms

    explicit clsPlayer(frmGame& game);
    ~clsPlayer();
    clsPlayer(const clsPlayer&) = delete;
    clsPlayer& operator=(const clsPlayer&) = delete;

    void SetBouncePad();
    void SetPlayerOnIce();
    void setplayernotonice();
    bool ISPlayerOnAnIceBlock() const { return onIce_; }
    float PosY() const { return y_; }
    void PosY(float Y) { y_ = Y; }
    float Posx() const { return x_; }
    void Posx(float X) { x_ = X; }
    float Posz() const { return z_; }
    void Posz(float z) { z_ = z; }
    void ForwardVelocity(float z) { forward_ = z; }
    float ForwardVelocity() const { return forward_; }
    void verticalvelocity(float Y) { vertical_ = Y; }
    float verticalvelocity() const { return vertical_; }
    // Only -1..1 is taken; anything else leaves the old value.
    void HorizontalVelocity(float X);
    float HorizontalVelocity() const { return horizontal_; }
    void accelerate();
    void deccelerate();
    // One play frame: move by the speeds, take the camera along and lay the
    // shadow; or one frame of the explosion.
    void Move();
    // Draws the car (or the explosion) `blend` of the way from where the
    // last play frame found it to where it is now (1: where it is).
    void draw(float blend = 1.0f);
    // The present place and turn become the ones drawings start from.
    void KeepDrawnState();
    // Where a drawing `blend` of the way through the frame shows the car.
    Vector3 DrawnPosition(float blend) const { return Lerp(drawnFrom_, GetPosition(), blend); }
    // Loads the model and the explosion frames, then resets.
    void load(const std::string& modelFile);
    void explode();
    void resetPLayer();
    Vector4 GetCollisionPoint(int index) const;  // 1..8
    Vector3 GetPosition() const { return Vector3{x_, y_, z_}; }
    Vector4 GetVelocity() const { return Vector4{horizontal_, vertical_, forward_, 0}; }
    // Distance from the box centre to its farthest point along `normal`.
    float CalculateEffectiveRadius(const Vector3& normal);
    Vector4 CalculateCollisionBoxCentre() const;
    void DeathStatus(bool b) { dead_ = b; }
    bool DeathStatus() const { return dead_; }
    bool getexplodeStatus() const { return exploding_; }
    void Moveleft() { horizontal_ = -SteerSpeed; }
    void MoveRight() { horizontal_ = SteerSpeed; }

    // State views for the tests and the simulator.
    float Friction() const { return friction_; }
    bool BouncePadActive() const { return bouncePadActive_; }
    float SpinAngle() const { return spinAngle_; }
    int32_t ExplodeFrame() const { return explodeFrame_; }
    const PointVertex& ExplodeSprite() const { return sprite_; }
    const Matrix4& WorldMatrix() const { return world_; }
    bool HasModel() const { return mesh_ != 0; }
    // The car's skin (0 before the model is loaded or without one).
    TextureId SkinTexture() const { return textures_.empty() ? 0 : textures_[0]; }

private:
    void InitCollisionPoints();
    void releaseModel();
    void explodeStep();
    void drawExploding();

    frmGame& game_;
    float x_ = 0, y_ = 3, z_ = 1;
    float horizontal_ = 0, vertical_ = 0, forward_ = 0;
    float friction_ = NormalFriction;
    bool onIce_ = false;
    bool bouncePadActive_ = false;
    float spinAngle_ = 720;
    bool exploding_ = false;
    int32_t explodeFrame_ = 1;
    uint32_t explodeFrameTime_ = 0;
    bool dead_ = false;
    std::array<Vector3, 8> collisionPoints_{};
    std::array<Vector3, 3> boxAxes_{};
    PointVertex sprite_{};
    MeshId mesh_ = 0;
    std::vector<MeshMaterial> materials_;
    std::vector<TextureId> textures_;
    std::array<TextureId, ExplosionFrames + 1> explosion_{};  // 1..16
    Matrix4 world_, scratch1_, scratch2_;
    // What the drawings show: the place and bounce-pad turn of the last play
    // frame and of the one before, and the skid (-1, 0, 1).
    Vector3 drawnFrom_{0, 3, 1};
    float shownSpin_ = 0, drawnSpin_ = 0;
    bool spinShown_ = false;
    int skid_ = 0;
};

}  // namespace qb
