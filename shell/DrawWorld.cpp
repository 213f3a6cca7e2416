// Drawing and moving the track's objects.
#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "shell/frmGame.h"
#include "world/clsBackground.h"

namespace qb {

void frmGame::DrawWorld(bool showAll) {
    background->draw();
    TrackObjects& t = *track;
    // Only play draws between two play frames; menus show things as they are.
    const float blend = GameState == Playing ? DrawBlend : 1.0f;
    // While driving only the stretch from 25 units behind the car to 50
    // ahead is drawn.
    const float posz = player->Posz();
    const float behind = posz - 25.0f, ahead = posz + 50.0f;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) {
        clsBlock& b = *t.blocks[i];
        const float z = static_cast<float>(b.Zpos());
        if (showAll || (behind < z + b.scalez() && ahead > z)) b.draw(blend);
    }
    for (int32_t i = 0; i <= t.RampUpper; ++i) {
        clsRamp& r = *t.ramps[i];
        const int32_t z = r.Zpos();
        if (showAll || (behind < static_cast<float>(z + r.scalez()) && ahead > static_cast<float>(z)))
            r.draw();
    }
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) t.platforms[i]->draw(blend);
    for (int32_t i = 0; i <= t.StarUpper; ++i) t.stars[i]->draw(blend);
}

void frmGame::MovePlatforms() {
    TrackObjects& t = *track;
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) t.platforms[i]->move();
}

void frmGame::StepAnimatedTextures() {
    TrackObjects& t = *track;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) t.blocks[i]->UpdateAnimatedTexture();
}

}  // namespace qb
