#include "shell/GhostCar.h"

#include <exception>

#include "level/LevelStructure.h"
#include "persist/Settings.h"
#include "physics/clsPlayer.h"
#include "platform/D3DMath.h"
#include "platform/QuorbitDebug.h"
#include "shell/DriveControls.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"

namespace qb {

GhostCar::~GhostCar() {
    ReleaseModel();
}

bool GhostCar::Enabled() const {
    return game_.settings->GetBool(SettingKey, true);
}

void GhostCar::Prepare() {
    if (!Enabled()) return;
    std::string why;
    const Replay* best = game_.replays->Best(why);
    // A file dropped in while the game runs (a shared run) is a new best run
    // too: what was read decides, not only which track it is.
    const std::string seen = (best ? FormatReplay(*best) : "!" + why) + "\n" + game_.levels->path();
    if (seen == drivenSeen_) return;
    drivenSeen_ = seen;
    frames_.clear();
    problem_ = why;
    if (best == nullptr) return;
    if (!Drive(*best, problem_)) {
        frames_.clear();
        game_.debug->WriteLine("No ghost: " + problem_);
    }
}

bool GhostCar::Drive(const Replay& run, std::string& error) {
    // A whole headless game of its own, on a copy of the track file: what it
    // does stays there.
    SimRun sim(game_.platform.paths.gameDir);
    try {
        if (!sim.Start(run.track, game_.levels->path(), error)) return false;
        frames_.reserve(static_cast<size_t>(run.PlayFrames()));
        for (const KeyStep& step : run.keys.steps)
            for (int64_t i = 0; i < step.count && !sim.Finished(); ++i) {
                sim.Step(step.keys);
                const clsPlayer& car = *sim.game().player;
                frames_.push_back(GhostFrame{car.GetPosition(), car.SpinAngle(), car.BouncePadActive()});
            }
    } catch (const std::exception& e) {
        error = e.what();
        return false;
    }
    if (!sim.Finished() || sim.FinishFrames() != run.frames) {
        error = "the best run does not drive to its finish on this track";
        return false;
    }
    // The frame that touches the finish puts the car back at the start;
    // the ghost stops where it was the frame before.
    if (!frames_.empty()) frames_.pop_back();
    return true;
}

const GhostFrame* GhostCar::At(int64_t frame) const {
    if (frame < 1 || frame > Frames()) return nullptr;
    return &frames_[static_cast<size_t>(frame - 1)];
}

void GhostCar::LoadModel() {
    modelTried_ = true;
    GraphicsDevice& device = game_.platform.graphics;
    const std::string& dir = game_.platform.paths.gameDir;
    try {
        int count = 0;
        mesh_ = device.loadMesh(dir + "models/player.x", count);
        for (int i = 0; i < count; ++i) {
            MeshMaterial m = device.meshMaterial(mesh_, i);
            materials_.push_back(m);
            textures_.push_back(m.textureFile.empty() ? 0
                                                      : device.createTextureFromFile(
                                                            dir + "skins/" + m.textureFile, 0, 0, 0, true));
        }
    } catch (const std::exception& e) {
        game_.debug->WriteLine(std::string("No ghost: ") + e.what());
        ReleaseModel();
    }
}

void GhostCar::ReleaseModel() {
    GraphicsDevice& device = game_.platform.graphics;
    for (TextureId t : textures_)
        if (t != 0) device.releaseTexture(t);
    textures_.clear();
    materials_.clear();
    if (mesh_ != 0) device.releaseMesh(mesh_);
    mesh_ = 0;
}

void GhostCar::draw(int64_t frame) {
    if (!Enabled()) return;
    const GhostFrame* g = At(frame);
    if (g == nullptr) return;
    if (!modelTried_) LoadModel();
    if (mesh_ == 0) return;
    GraphicsDevice& device = game_.platform.graphics;
    Matrix4 world = MatrixIdentity();
    if (g->spinning) {
        world = MatrixMultiply(world, MatrixTranslation(0, 0, 0.4f));
        world = MatrixMultiply(world, MatrixRotationY(static_cast<float>(-g->spinAngle * 0.01745329)));
        world = MatrixMultiply(world, MatrixTranslation(0, 0, -0.4f));
    }
    world = MatrixMultiply(world, MatrixTranslation(g->position.x, g->position.y, g->position.z));
    device.setTransform(TransformKind::World, world);
    // Added light, not paint: the ghost glows over the track and never
    // hides the live car or writes depth that would cut into it.
    device.setRenderState(RenderState::SrcBlend, BlendOne);
    device.setRenderState(RenderState::DestBlend, BlendOne);
    device.setRenderState(RenderState::ZWriteEnable, 0);
    for (size_t i = 0; i < materials_.size(); ++i) {
        device.setTexture(textures_[i]);
        device.drawMeshSubset(mesh_, static_cast<int>(i));
    }
    device.setRenderState(RenderState::ZWriteEnable, 1);
    device.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
    device.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
}

}  // namespace qb
