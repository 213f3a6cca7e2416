// A run: start, death and restart, finish.
#include "shell/frmGame.h"

namespace qb {

void frmGame::startPlaying() { GameState = Playing; }

void frmGame::resetgame(bool) { ResetFPSCounter(); }

void frmGame::Winlevel() {}

void frmGame::DrawPlayerAndParticles() {}

}  // namespace qb
