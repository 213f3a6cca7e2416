// The keyboard around a watched run: W on a track choice starts it, Esc or
// the pause key leaves it; while it runs the replay drives, not the keys.
#include "gui/Gui.h"
#include "physics/clsPlayer.h"
#include "platform/KeyboardDevice.h"
#include "shell/DriveControls.h"
#include "shell/KeyBindings.h"
#include "shell/KeyboardControls.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"

namespace qb {

namespace {
constexpr uint8_t Down = 128;
constexpr size_t LetterW = 'W' - 'A';
}  // namespace

void KeyboardControls::Watching(const uint8_t* k) {
    ReleaseAction(k, Action::Pause, PauseReleased);
    const bool esc = k[DIK_ESCAPE] == Down && EscReleased;
    if (esc || PressedAction(k, Action::Pause, PauseReleased)) {
        EscReleased = false;
        game_.watch->Leave();
        return;
    }
    uint8_t bits = 0;
    game_.player->Steering(false, false);
    if (!game_.watch->NextFrame(bits)) return;
    game_.DriveBits = bits;
    game_.DriveActed = true;
    game_.player->Steering((bits & DriveLeft) != 0, (bits & DriveRight) != 0);
    ApplyDrive(game_, bits, (bits & DriveJump) != 0 ? 1 : 0);
    game_.ApplyPlayEffects();
}

bool KeyboardControls::WatchPressed(const uint8_t* k) {
    Release(k, LetterKeys[LetterW], LetterReleased[LetterW]);
    if (k[LetterKeys[LetterW]] != Down || !LetterReleased[LetterW]) return false;
    LetterReleased[LetterW] = false;
    return game_.gui->Click(Gui::WatchSlot) && game_.GameState == qb::Playing;
}

}  // namespace qb
