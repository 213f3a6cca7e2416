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

GhostCar::GhostCar(frmGame& game) : game_(game), model_(game.platform.graphics) {}

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
    const std::string& dir = game_.platform.paths.gameDir;
    try {
        model_.Load(dir + "models/player.x", dir + "skins/");
    } catch (const std::exception& e) {
        game_.debug->WriteLine(std::string("No ghost: ") + e.what());
        model_.Release();
    }
}

void GhostCar::draw(int64_t frame) {
    if (!Enabled()) return;
    const GhostFrame* g = At(frame);
    if (g == nullptr) return;
    if (!modelTried_) LoadModel();
    if (!model_.Loaded()) return;
    GraphicsDevice& device = game_.platform.graphics;
    Matrix4 world = MatrixIdentity();
    if (g->spinning) world = clsPlayer::Spun(world, g->spinAngle);
    world = MatrixMultiply(world, MatrixTranslation(g->position.x, g->position.y, g->position.z));
    device.setTransform(TransformKind::World, world);
    // A see-through car, drawn after the live one: blocks in front of it
    // hide it, and the live car shows through it or in front of it. First
    // its depth alone (the picture left as it is), so that only its nearest
    // surface is painted: its own parts do not show through one another.
    device.setRenderState(RenderState::AlphaBlendEnable, 1);
    device.setRenderState(RenderState::ZEnable, 1);
    device.setRenderState(RenderState::SrcBlend, BlendZero);
    device.setRenderState(RenderState::DestBlend, BlendOne);
    model_.Draw();
    // Then its skin, lit as the car is, at a fixed opacity over what is
    // behind it.
    device.setRenderState(RenderState::ZWriteEnable, 0);
    device.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
    device.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
    device.setRenderState(RenderState::TextureFactor, Look);
    device.setTextureStageState(TextureStageState::AlphaOp, TopModulate);
    device.setTextureStageState(TextureStageState::AlphaArg2, TaTFactor);
    model_.Draw();
    device.setTextureStageState(TextureStageState::AlphaOp, TopSelectArg1);
    device.setTextureStageState(TextureStageState::AlphaArg2, TaCurrent);
    device.setRenderState(RenderState::ZWriteEnable, 1);
}

}  // namespace qb
