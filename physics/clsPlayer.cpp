#include "physics/clsPlayer.h"

#include <cmath>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "persist/Stats.h"
#include "physics/CollisionDetection.h"
#include "physics/PlayEvents.h"
#include "physics/clsShadow.h"
#include "platform/D3DMath.h"
#include "platform/DirectInput.h"
#include "platform/DirectX.h"
#include "shell/KeyboardControls.h"
#include "shell/frmGame.h"

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

clsPlayer::clsPlayer(frmGame& game) : game_(game) {
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
    GraphicsDevice& device = game_.platform.graphics;
    for (TextureId t : textures_)
        if (t != 0) device.releaseTexture(t);
    textures_.clear();
    materials_.clear();
    if (mesh_ != 0) device.releaseMesh(mesh_);
    mesh_ = 0;
    for (size_t k = 1; k < explosion_.size(); ++k) {
        if (explosion_[k] != 0) device.releaseTexture(explosion_[k]);
        explosion_[k] = 0;
    }
}

void clsPlayer::load(const std::string& modelFile) {
    releaseModel();
    GraphicsDevice& device = game_.platform.graphics;
    const std::string& dir = game_.platform.paths.gameDir;
    int count = 0;
    mesh_ = device.loadMesh(modelFile, count);
    materials_.resize(static_cast<size_t>(count));
    textures_.assign(static_cast<size_t>(count), 0);
    for (int i = 0; i < count; ++i) {
        MeshMaterial m = device.meshMaterial(mesh_, i);
        m.ambient = m.diffuse;  // unlit: the ambient term carries the colour
        if (!m.textureFile.empty())
            textures_[static_cast<size_t>(i)] =
                device.createTextureFromFile(dir + "skins/" + m.textureFile, 0, 0, 0, true);
        materials_[static_cast<size_t>(i)] = m;
    }
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

void clsPlayer::Move() {
    if (exploding_) {
        explodeStep();
        return;
    }
    x_ += horizontal_;
    y_ += vertical_;
    z_ += forward_;

    skid_ = 0;
    if (onIce_) {
        // Sliding without steering: the nose turns into the slide.
        const KeyboardControls& keys = *game_.controls;
        if (horizontal_ > 0 && !keys.SteeringRight())
            skid_ = 1;
        else if (horizontal_ < 0 && !keys.SteeringLeft())
            skid_ = -1;
    }
    spinShown_ = bouncePadActive_;
    if (bouncePadActive_) {
        shownSpin_ = spinAngle_;
        spinAngle_ = AddD(spinAngle_, 30);
        if (spinAngle_ > 720) bouncePadActive_ = false;
    }

    // The camera rides along the track, never sideways or up.
    DirectX& dx = *game_.dx;
    dx.CameraEye.z += forward_;
    dx.CameraLookAt.z += forward_;
    dx.SetView();

    game_.shadow->Place();
}

void clsPlayer::KeepDrawnState() {
    drawnFrom_ = GetPosition();
    drawnSpin_ = spinShown_ ? shownSpin_ : 0;
}

void clsPlayer::draw(float blend) {
    if (exploding_) {
        drawExploding();
        return;
    }
    GraphicsDevice& device = game_.platform.graphics;
    world_ = MatrixIdentity();
    if (skid_ > 0)
        world_ = MatrixMultiply(world_, MatrixRotationY(-SkidYaw));
    else if (skid_ < 0)
        world_ = MatrixMultiply(world_, MatrixRotationY(SkidYaw));
    if (spinShown_) {
        // Two turns about the vertical through the middle of the footprint.
        const float angle = Lerp(drawnSpin_, shownSpin_, blend);
        scratch1_ = MatrixTranslation(0, 0, 0.4f);
        world_ = MatrixMultiply(world_, scratch1_);
        scratch2_ = MatrixRotationY(static_cast<float>(-static_cast<double>(angle) * DegreesToRadians));
        world_ = MatrixMultiply(world_, scratch2_);
        scratch1_ = MatrixTranslation(0, 0, -0.4f);
        world_ = MatrixMultiply(world_, scratch1_);
    }
    const Vector3 at = DrawnPosition(blend);
    world_ = MatrixMultiply(world_, MatrixTranslation(at.x, at.y, at.z));
    device.setTransform(TransformKind::World, world_);
    for (size_t i = 0; i < materials_.size(); ++i) {
        device.setTexture(textures_[i]);
        device.drawMeshSubset(mesh_, static_cast<int>(i));
    }
    game_.shadow->draw(Vec3Subtract(at, GetPosition()));
}

void clsPlayer::explodeStep() {
    spinAngle_ = 1080;
    if (explodeFrame_ == 1) game_.sound->PlayEffect(SfxBlowUp);
    if (explodeFrame_ == ExplosionFrames) {
        game_.stats->BlownUpCount += 1;
        game_.gui->SetupScreen(0);
        dead_ = true;
        game_.collision->Events |= EventDeath;
    }
    const uint32_t now = game_.platform.clock.tickCount();
    if (now - explodeFrameTime_ > ExplodeFrameInterval) {
        explodeFrame_ += 1;
        explodeFrameTime_ = now;
    }
}

void clsPlayer::drawExploding() {
    if (explodeFrame_ < 15) {
        GraphicsDevice& device = game_.platform.graphics;
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
