// The Controls screen: every play action with its keys and its controller
// button. The keyboard (or the controller) picks a row; Return asks for a new
// key, which then takes the action over (swapping with whoever had it).
#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "persist/Settings.h"
#include "platform/QuorbitDebug.h"
#include "shell/KeyBindings.h"
#include "shell/frmGame.h"

namespace qb {

namespace {
constexpr int32_t RowTop = 130, RowStep = 36;
constexpr const char* PadNames[ActionCount] = {"Up, stick up, right trigger",
                                               "Down, stick down, left trigger",
                                               "Left, stick left",
                                               "Right, stick right",
                                               "A",
                                               "Start",
                                               "Back"};
}  // namespace

void Gui::SetupControls() {
    ResetTabIndices();
    Button(58).enabled(true);
    Button(14).enabled(true);
    if (ControlsRow < 1 || ControlsRow > ControlsRows) ControlsRow = 1;
    NewFields(3 + 3 * ActionCount);
    AddField(1, 60, 110, 0, 800, 28, 255, 255, 0, "CONTROLS");
    AddField(2, RowTop - 30, RowTop, 300, 520, 13, 170, 220, 255, "KEYS");
    AddField(3, RowTop - 30, RowTop, 530, 790, 13, 170, 220, 255, "CONTROLLER");
    ShowControls();
}

void Gui::ShowControls() {
    if (game_.GameState != ControlsMenu) return;
    const KeyBindings& keys = *game_.bindings;
    for (int a = 0; a < ActionCount; ++a) {
        const Action action = static_cast<Action>(a);
        const int32_t top = RowTop + a * RowStep;
        const bool focused = ControlsRow == a + 1;
        const int16_t g = 255, b = focused ? 0 : 255;  // the focused row in yellow
        std::string title = KeyBindings::ActionTitle(action);
        std::string shown = keys.KeysText(action);
        if (focused && ControlsWaiting) shown = "press a key";
        AddField(4 + 3 * a, top, top + RowStep, 60, 290, 16, 255, g, b, (focused ? "> " : "") + title);
        AddField(5 + 3 * a, top, top + RowStep, 300, 520, 16, 255, g, b, shown);
        AddField(6 + 3 * a, top, top + RowStep, 530, 790, 13, 255, g, b, PadNames[a]);
    }
    // The two buttons are the last rows of the keyboard's walk.
    ClearMouseOver();
    if (ControlsRow == ControlsRows - 1) Button(58).MouseOver(true);
    if (ControlsRow == ControlsRows) Button(14).MouseOver(true);
}

void Gui::ControlsDefaults() {
    game_.bindings->RestoreDefaults();
    SaveControls();
    ShowControls();
}

void Gui::SaveControls() {
    game_.bindings->Save(*game_.settings);
    if (!game_.settings->Save()) game_.debug->WriteLine("Could not write settings.cfg");
}

bool Gui::ClickControls(int32_t slot) {
    switch (slot) {
        case 58:
            game_.sound->PlayEffect(SfxTransit);
            ControlsWaiting = false;
            ControlsDefaults();
            return true;
        case 14:
            ControlsWaiting = false;
            GoTo(Options);
            return true;
        default:
            return false;
    }
}

}  // namespace qb
