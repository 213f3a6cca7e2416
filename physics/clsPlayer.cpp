#include "physics/clsPlayer.h"

#include <cmath>

#include "physics/PlayEvents.h"
#include "physics/clsShadow.h"
#include "platform/D3DMath.h"
#include "platform/Platform.h"

namespace qb {

namespace {
// A Single plus a double constant is worked out in double and stored back
// as a Single, as the car's numbers always were.
inline float AddD(float a, double b) {
    return static_cast<float>(static_cast<double>(a) + b);
}

constexpr double DegreesToRadians = 0.01745329;
constexpr float SkidYaw = 0.1745329f;
}  // namespace

clsPlayer::clsPlayer(Platform& platform) : platform_(platform), model_(platform.graphics) {
    InitCollisionPoints();
}

clsPlayer::~clsPlayer() {
    releaseModel();
}

void clsPlayer::SetBouncePad() {
    bouncePadActive_ = true;
    spinAngle_ = 0;
}

void clsPlayer::SetPlayerOnIce() {
    friction_ = IceFriction;
    onIce_ = true;
}

void clsPlayer::setplayernotonice() {
    friction_ = NormalFriction;
    onIce_ = false;
}

void clsPlayer::HorizontalVelocity(float X) {
    if (X >= -1.0f && X <= 1.0f) horizontal_ = X;
}

void clsPlayer::accelerate() {
    if (forward_ < TopSpeed) forward_ = AddD(forward_, 0.02);
}

void clsPlayer::deccelerate() {
    forward_ = forward_ - friction_;
    if (forward_ < 0) forward_ = 0;
}

void clsPlayer::releaseModel() {
    GraphicsDevice& device = platform_.graphics;
    model_.Release();
    for (size_t k = 1; k < explosion_.size(); ++k) {
        if (explosion_[k] != 0) device.releaseTexture(explosion_[k]);
        explosion_[k] = 0;
    }
}

void clsPlayer::load(const std::string& modelFile) {
    releaseModel();
    GraphicsDevice& device = platform_.graphics;
    const std::string& dir = platform_.paths.gameDir;
    model_.Load(modelFile, dir + "skins/");
    resetPLayer();
    for (int k = 1; k <= ExplosionFrames; ++k)
        explosion_[static_cast<size_t>(k)] = device.createTextureFromFile(
            dir + "misc/explode" + std::to_string(k) + ".bmp", 64, 64, 0xFF000000u, true);
}

void clsPlayer::explode() {
    exploding_ = true;
    sprite_.x = x_;
    sprite_.y = AddD(y_, 1.0);
    sprite_.z = AddD(z_, -0.5);
    sprite_.diffuse = argb(255, 255, 255, 255);
    sprite_.u = 0;
    sprite_.v = 0;
}

void clsPlayer::resetPLayer() {
    x_ = 0;
    y_ = 3;
    z_ = 1;
    horizontal_ = vertical_ = forward_ = 0;
    friction_ = NormalFriction;
    exploding_ = false;
    explodeFrame_ = 1;
    dead_ = false;
    spinAngle_ = 720;
    bouncePadActive_ = false;
    spinShown_ = false;
    skid_ = 0;
    InitCollisionPoints();
    KeepDrawnState();
}

void clsPlayer::InitCollisionPoints() {
    const float h = 0.4f, s = 0.8f;
    collisionPoints_ = {Vector3{-h, s, 0},  Vector3{h, s, 0},  Vector3{-h, 0, 0},  Vector3{h, 0, 0},
                        Vector3{-h, s, -s}, Vector3{h, s, -s}, Vector3{-h, 0, -s}, Vector3{h, 0, -s}};
}

Vector4 clsPlayer::GetCollisionPoint(int index) const {
    const Vector3& c = collisionPoints_.at(static_cast<size_t>(index - 1));
    return Vector4{x_ + c.x, y_ + c.y, z_ + c.z, 0};
}

float clsPlayer::CalculateEffectiveRadius(const Vector3& normal) {
    boxAxes_ = {Vector3{0, 0.8f, 0}, Vector3{0.8f, 0, 0}, Vector3{0, 0, 0.8f}};
    float sum = 0;
    for (const Vector3& a : boxAxes_) sum += std::fabs(Vec3Dot(normal, a));
    return 0.5f * sum;
}

Vector4 clsPlayer::CalculateCollisionBoxCentre() const {
    return Vector4{x_, AddD(y_, 0.4), AddD(z_, -0.4), 1.0f};
}

bool clsPlayer::Move(PlayEvents& events) {
    if (exploding_) {
        explodeStep(events);
        return false;
    }
    x_ += horizontal_;
    y_ += vertical_;
    z_ += forward_;

    skid_ = 0;
    if (onIce_) {
        // Sliding without steering: the nose turns into the slide.
        if (horizontal_ > 0 && !steerRight_)
            skid_ = 1;
        else if (horizontal_ < 0 && !steerLeft_)
            skid_ = -1;
    }
    spinShown_ = bouncePadActive_;
    if (bouncePadActive_) {
        shownSpin_ = spinAngle_;
        spinAngle_ = AddD(spinAngle_, 30);
        if (spinAngle_ > 720) bouncePadActive_ = false;
    }
    return true;
}

void clsPlayer::KeepDrawnState() {
    drawnFrom_ = GetPosition();
    drawnSpin_ = spinShown_ ? shownSpin_ : 0;
}

void clsPlayer::draw(float blend, clsShadow& shadow) {
    if (exploding_) {
        drawExploding();
        return;
    }
    GraphicsDevice& device = platform_.graphics;
    world_ = MatrixIdentity();
    if (skid_ > 0)
        world_ = MatrixMultiply(world_, MatrixRotationY(-SkidYaw));
    else if (skid_ < 0)
        world_ = MatrixMultiply(world_, MatrixRotationY(SkidYaw));
    // Two turns about the vertical through the middle of the footprint.
    if (spinShown_) world_ = Spun(world_, Lerp(drawnSpin_, shownSpin_, blend));
    const Vector3 at = DrawnPosition(blend);
    world_ = MatrixMultiply(world_, MatrixTranslation(at.x, at.y, at.z));
    device.setTransform(TransformKind::World, world_);
    model_.Draw();
    shadow.draw(Vec3Subtract(at, GetPosition()));
}

Matrix4 clsPlayer::Spun(const Matrix4& world, float angle) {
    Matrix4 m = MatrixMultiply(world, MatrixTranslation(0, 0, 0.4f));
    m = MatrixMultiply(m,
                       MatrixRotationY(static_cast<float>(-static_cast<double>(angle) * DegreesToRadians)));
    return MatrixMultiply(m, MatrixTranslation(0, 0, -0.4f));
}

void clsPlayer::explodeStep(PlayEvents& events) {
    spinAngle_ = 1080;
    if (explodeFrame_ == 1) events.Add(Happening::BlowUp);
    if (explodeFrame_ == ExplosionFrames) {
        dead_ = true;
        events.Add(Happening::BlownUp);
    }
    const uint32_t now = platform_.clock.tickCount();
    if (now - explodeFrameTime_ > ExplodeFrameInterval) {
        explodeFrame_ += 1;
        explodeFrameTime_ = now;
    }
}

void clsPlayer::drawExploding() {
    if (explodeFrame_ < 15) {
        GraphicsDevice& device = platform_.graphics;
        device.setRenderState(RenderState::PointSize, FloatToDWord(0.06f));
        device.setTransform(TransformKind::World, MatrixIdentity());
        device.setRenderState(RenderState::AlphaBlendEnable, 1);
        device.setRenderState(RenderState::ZWriteEnable, 0);
        device.setTexture(explosion_[static_cast<size_t>(explodeFrame_)]);
        device.drawPointVertices(&sprite_, 1);
        device.setRenderState(RenderState::ZWriteEnable, 1);
    }
}

}  // namespace qb
