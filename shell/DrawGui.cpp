#include "gui/Gui.h"
#include "shell/frmGame.h"

namespace qb {

void frmGame::DrawButtons() {
    gui->DrawButtons();
}

void frmGame::DrawTextFields() {
    gui->DrawTextFields();
}

}  // namespace qb
