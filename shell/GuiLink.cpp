#include "shell/GuiLink.h"

#include "gui/Gui.h"
#include "shell/frmGame.h"

namespace qb {

void SetFieldText(frmGame&, int32_t, const std::string&) {}
std::string FieldText(frmGame&, int32_t) { return {}; }
void AppendToField(frmGame&, int32_t, const std::string&) {}
void RemoveLastCharacterOfField(frmGame&, int32_t) {}
int32_t CurrentTab(frmGame&) { return 0; }
void SetCurrentTab(frmGame&, int32_t) {}
int32_t TabCount(frmGame&) { return 0; }
int32_t ButtonTabIndex(frmGame&, int32_t) { return 0; }
void SetButtonMouseOver(frmGame&, int32_t, bool) {}

}  // namespace qb
