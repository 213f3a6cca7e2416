// The car: its position and speeds, the model, the explosion and the few
// flags the collision pass sets. It moves itself once a play frame, after the
// collision pass has corrected its speeds; the session then takes the camera
// along and lays the shadow.
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
#include "world/MeshModel.h"

namespace qb {

struct Platform;
class PlayEvents;
class clsShadow;

class clsPlayer {
public:
    static constexpr float TopSpeed = 0.6f;
    static constexpr float NormalFriction = 0.04f;
    static constexpr float IceFriction = 0.01f;
    static constexpr float SteerSpeed = 0.12f;
    static constexpr int ExplosionFrames = 16;
    static constexpr uint32_t ExplodeFrameInterval = 85;  // ms

    explicit clsPlayer(Platform& platform);
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
    // One play frame: move by the speeds; or one frame of the explosion,
    // noting its first picture and its end in `events`. False while
    // exploding: the car has not moved.
    bool Move(PlayEvents& events);
    // Whether the keys of the last play frame steered left or right: a car
    // sliding on ice without them turns its nose into the slide.
    void Steering(bool left, bool right) {
        steerLeft_ = left;
        steerRight_ = right;
    }
    // Draws the car with its shadow (or the explosion) `blend` of the way
    // from where the last play frame found it to where it is now (1: where
    // it is).
    void draw(float blend, clsShadow& shadow);
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
    bool HasModel() const { return model_.Loaded(); }
    // The car's skin (0 before the model is loaded or without one).
    TextureId SkinTexture() const { return model_.Skin(0); }

    // `world` turned `angle` degrees about the upright through the middle
    // of the car's footprint: the bounce-pad spin, as the car and its ghost
    // draw it.
    static Matrix4 Spun(const Matrix4& world, float angle);

private:
    void InitCollisionPoints();
    void releaseModel();
    void explodeStep(PlayEvents& events);
    void drawExploding();

    Platform& platform_;
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
    MeshModel model_;
    std::array<TextureId, ExplosionFrames + 1> explosion_{};  // 1..16
    Matrix4 world_;
    // What the drawings show: the place and bounce-pad turn of the last play
    // frame and of the one before, and the skid (-1, 0, 1).
    Vector3 drawnFrom_{0, 3, 1};
    float shownSpin_ = 0, drawnSpin_ = 0;
    bool spinShown_ = false;
    int skid_ = 0;
    bool steerLeft_ = false, steerRight_ = false;
};

}  // namespace qb
