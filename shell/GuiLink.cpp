#include "shell/GuiLink.h"

#include "gui/Gui.h"
#include "shell/frmGame.h"

namespace qb {

void SetFieldText(frmGame& game, int32_t field, const std::string& text) {
    if (game.gui->HasField(field)) game.gui->Field(field).Set_Text(text);
}

std::string FieldText(frmGame& game, int32_t field) {
    return game.gui->HasField(field) ? game.gui->Field(field).Get_String() : std::string();
}

void AppendToField(frmGame& game, int32_t field, const std::string& text) {
    if (game.gui->HasField(field)) game.gui->Field(field).concatString(text);
}

void RemoveLastCharacterOfField(frmGame& game, int32_t field) {
    if (game.gui->HasField(field)) game.gui->Field(field).removeLastCharacter();
}

int32_t CurrentTab(frmGame& game) {
    return game.gui->CurrentTab;
}

void SetCurrentTab(frmGame& game, int32_t tab) {
    game.gui->CurrentTab = tab;
}

int32_t TabCount(frmGame& game) {
    return game.gui->TabCount;
}

int32_t ButtonTabIndex(frmGame& game, int32_t slot) {
    return slot >= 1 && slot <= Gui::SlotCount && game.gui->Buttons[static_cast<size_t>(slot)]
               ? game.gui->Button(slot).TabIndex()
               : 0;
}

void SetButtonMouseOver(frmGame& game, int32_t slot, bool over) {
    if (slot >= 1 && slot <= Gui::SlotCount && game.gui->Buttons[static_cast<size_t>(slot)])
        game.gui->Button(slot).MouseOver(over);
}

}  // namespace qb
