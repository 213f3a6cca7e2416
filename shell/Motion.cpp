// What moves between play frames: a play frame moves it, drawings place it
// between the last two frames so motion looks smooth at any refresh rate.
#include "level/TrackObjects.h"
#include "physics/CarDebris.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"
#include "physics/clsShadow.h"
#include "platform/D3DMath.h"
#include "platform/DirectX.h"
#include "shell/frmGame.h"

namespace qb {

void frmGame::AdvanceMotion() {
    // A finish or the pause menu has taken the screen: nothing moves on.
    if (GameState != Playing) return;
    TrackObjects& t = *track;
    const WorldFrame frame = t.Frame(true);
    // Blocks out of the drawn stretch stop falling and bouncing, as they
    // always have: the stretch is the one DrawWorld shows.
    const float posz = player->Posz();
    const float behind = posz - 25.0f, ahead = posz + 50.0f;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) {
        clsBlock& b = *t.blocks[i];
        const float z = static_cast<float>(b.Zpos());
        if (behind < z + b.scalez() && ahead > z) b.Advance(frame);
    }
    for (int32_t i = 0; i <= t.StarUpper; ++i) t.stars[i]->Spin(frame);
    if (player->Move(Events)) {
        // The camera rides along the track, never sideways or up.
        dx->CameraEye.z += player->ForwardVelocity();
        dx->CameraLookAt.z += player->ForwardVelocity();
        dx->SetView();
        shadow->Place();
    }
    particles->UpdateParticles();
    debris->Follow(*player, *track, OnGround);
}

void frmGame::KeepDrawnState() {
    TrackObjects& t = *track;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) t.blocks[i]->KeepDrawnState();
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) t.platforms[i]->KeepDrawnState();
    for (int32_t i = 0; i <= t.StarUpper; ++i) t.stars[i]->KeepDrawnState();
    player->KeepDrawnState();
    particles->KeepDrawnState();
    debris->KeepDrawnState();
    DrawnEyeFrom = dx->CameraEye;
    DrawnLookAtFrom = dx->CameraLookAt;
}

float frmGame::BlendAt(int64_t counter) const {
    if (!SmoothMotion) return 1.0f;
    const double interval = FrameInterval * static_cast<double>(PerfFrequency) / 1000.0;
    const double f = static_cast<double>(counter - FrameStartCount) / interval;
    return f <= 0.0 ? 0.0f : f >= 1.0 ? 1.0f : static_cast<float>(f);
}

}  // namespace qb
