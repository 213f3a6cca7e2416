// The few things the driving code and the keyboard ask of the menu screens:
// the text fields of the current screen and the keyboard focus among the
// buttons. One narrow seam, so the screens can change inside.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

class frmGame;

// Text fields of the current screen, 1..FieldCount; other numbers do nothing.
void SetFieldText(frmGame& game, int32_t field, const std::string& text);
std::string FieldText(frmGame& game, int32_t field);
void AppendToField(frmGame& game, int32_t field, const std::string& text);
void RemoveLastCharacterOfField(frmGame& game, int32_t field);

// Keyboard focus: CurrentTab, TabCount and the buttons' TabIndex / MouseOver.
int32_t CurrentTab(frmGame& game);
void SetCurrentTab(frmGame& game, int32_t tab);
int32_t TabCount(frmGame& game);
int32_t ButtonTabIndex(frmGame& game, int32_t slot);
void SetButtonMouseOver(frmGame& game, int32_t slot, bool over);

}  // namespace qb
