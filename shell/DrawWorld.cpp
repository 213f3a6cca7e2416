// Drawing and moving the track's objects.
#include "shell/frmGame.h"
#include "world/clsBackground.h"

namespace qb {

void frmGame::DrawWorld(bool) { background->draw(); }

void frmGame::MovePlatforms() {}

void frmGame::StepAnimatedTextures() {}

}  // namespace qb
