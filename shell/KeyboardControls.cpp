#include "shell/KeyboardControls.h"

#include <algorithm>
#include <string>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "persist/Stats.h"
#include "physics/CollisionDetection.h"
#include "physics/PlayEvents.h"
#include "physics/clsPlayer.h"
#include "platform/DirectInput.h"
#include "platform/QuorbitDebug.h"
#include "shell/DriveControls.h"
#include "shell/GhostCar.h"
#include "shell/GuiLink.h"
#include "shell/KeyBindings.h"
#include "shell/RaceClock.h"
#include "shell/ReplayStore.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"

namespace qb {

namespace {
constexpr uint8_t Down = 128;
constexpr uint8_t Up = 0;
constexpr int ButtonSlots = Gui::SlotCount;

// An edge-triggered key: down with its flag set; clears the flag.
inline bool Pressed(const uint8_t* k, uint8_t key, bool& flag) {
    if (k[key] != Down || !flag) return false;
    flag = false;
    return true;
}
}  // namespace

void KeyboardControls::HandleKeyboard() {
    DirectInput& input = *game_.input;
    input.keyboard.getState(input.KeyState);
    // From here on device errors are ignored; only an overflowed event
    // buffer matters, and then this pass acts on nothing.
    if (input.keyboard.getEvents(input.EventBuffer) == KeyboardDevice::DIERR_BUFFEROVERFLOW) {
        game_.debug->WriteLine("Buffer Overflow -> Compensating");
        return;
    }
    // A key that went down since the last pass counts as down for this one,
    // even when it is already up again: a quick tap falls between two passes
    // on a slow machine or from a tool, and must not be lost. Being pressed
    // anew also means it was let go in between (which re-arms its flag).
    uint8_t raw[256];
    std::copy(input.KeyState, input.KeyState + 256, raw);
    fresh_.fill(false);
    for (const KeyEvent& e : input.EventBuffer) {
        if (e.key > 255 || e.data != Down) continue;
        fresh_[e.key] = true;
        raw[e.key] = Down;
    }
    // A click or the finish may have changed the screen since the last pass.
    if (game_.GameState != screen_) HoldOver(raw);
    uint8_t k[256];
    for (int i = 0; i < 256; ++i) {
        if (heldOver_[i] && raw[i] != Down) heldOver_[i] = false;
        k[i] = heldOver_[i] ? Up : raw[i];
    }
    const PadReading pad = game_.platform.gamepads.read();
    pad_.Apply(pad, game_.GameState, *game_.bindings, k, fresh_);
    game_.player->Steering(false, false);
    const int16_t before = game_.GameState;
    if (pad.driverLost && before == qb::Playing && !game_.watch->Active()) {
        // The controller that drove was pulled out: hold the race.
        game_.GameState = qb::PauseMenu;
        game_.gui->SetupScreen(0);
    } else {
        Act(k);
    }
    if (game_.GameState != before) HoldOver(raw);
    screen_ = game_.GameState;
}

void KeyboardControls::Release(const uint8_t* k, uint8_t key, bool& flag) const {
    if (k[key] == Up || fresh_[key]) flag = true;
}

void KeyboardControls::ReleaseAction(const uint8_t* k, Action a, bool& flag) const {
    bool down = false;
    for (uint8_t key : game_.bindings->Keys(a)) {
        if (key == DIK_ESCAPE) continue;  // Esc keeps its own flag
        if (fresh_[key]) flag = true;
        down = down || k[key] == Down;
    }
    if (!down) flag = true;
}

bool KeyboardControls::PressedAction(const uint8_t* k, Action a, bool& flag) const {
    if (!flag) return false;
    for (uint8_t key : game_.bindings->Keys(a)) {
        if (key == DIK_ESCAPE || k[key] != Down) continue;
        flag = false;
        return true;
    }
    return false;
}

void KeyboardControls::HoldOver(const uint8_t* raw) {
    pad_.HoldOver();
    for (int i = 0; i < 256; ++i)
        if (raw[i] == Down) heldOver_[i] = true;
}

void KeyboardControls::ScreenSeen() {
    heldOver_.fill(false);
    pad_ = PadKeys();
    screen_ = game_.GameState;
}

void KeyboardControls::Act(const uint8_t* k) {
    Release(k, DIK_ESCAPE, EscReleased);
    switch (game_.GameState) {
        case qb::Playing:
            if (game_.watch->Active())
                Watching(k);
            else
                Playing(k);
            break;
        case qb::PauseMenu:
            PauseMenu(k);
            break;
        case qb::MainMenu:
            MainMenu(k);
            break;
        case qb::ZoneChoice:
            ZoneChoice(k);
            break;
        case qb::TrackChoice:
            TrackChoice(k);
            break;
        case qb::NameEntry:
            NameEntry(k);
            break;
        case qb::MadeIt:
        case qb::WatchEnd:
            MadeIt(k);
            break;
        case qb::Options:
            // G, C and M switch the ghost, the race clock and smooth motion.
            for (size_t letter : {size_t{'G' - 'A'}, size_t{'C' - 'A'}, size_t{'M' - 'A'}}) {
                Release(k, LetterKeys[letter], LetterReleased[letter]);
                if (Pressed(k, LetterKeys[letter], LetterReleased[letter]))
                    game_.gui->ToggleRaceOption(letter == 'G' - 'A'   ? GhostCar::SettingKey
                                                : letter == 'C' - 'A' ? RaceClock::SettingKey
                                                                      : frmGame::SmoothMotionKey);
            }
            OptionsScreen(k);
            break;
        case qb::ControlsMenu:
            ControlsScreen(k);
            break;
        case qb::UserTrackChoice:
            UserTrackChoice(k);
            break;
        case qb::InstructionsPage1:
        case qb::InstructionsPage2:
        case qb::InstructionsPage3:
            Instructions(k);
            break;
        default:
            break;
    }
}

void KeyboardControls::GoTo(int16_t state, bool withSound) {
    if (withSound) game_.sound->PlayEffect(SfxTransit);
    game_.GameState = state;
    game_.gui->SetupScreen(0);
}

void KeyboardControls::Playing(const uint8_t* k) {
    const KeyBindings& keys = *game_.bindings;
    Release(k, DIK_RETURN, ReturnReleased);
    uint8_t bits = 0;
    if (keys.Held(k, Action::Accelerate)) bits |= DriveAccelerate;
    if (keys.Held(k, Action::Brake)) bits |= DriveBrake;
    if (keys.Held(k, Action::Left)) bits |= DriveLeft;
    if (keys.Held(k, Action::Right)) bits |= DriveRight;
    int jumps = 0;
    if (keys.Held(k, Action::Jump)) ++jumps;
    // Return jumps too, and repeats while held; its flag only keeps the
    // press that started the track from jumping until it is let go.
    if (k[DIK_RETURN] == Down && ReturnReleased) ++jumps;
    if (jumps > 0) bits |= DriveJump;
    game_.DriveBits = bits;
    game_.DriveActed = true;
    game_.player->Steering((bits & DriveLeft) != 0, (bits & DriveRight) != 0);
    ApplyDrive(game_, bits, jumps);
    // A jump sounds and counts before anything else the keys do here.
    game_.ApplyPlayEffects();
    ReleaseAction(k, Action::Pause, PauseReleased);
    ReleaseAction(k, Action::QuickRestart, RestartReleased);
    const bool esc = Pressed(k, DIK_ESCAPE, EscReleased);
    if (esc || PressedAction(k, Action::Pause, PauseReleased)) {
        game_.GameState = qb::PauseMenu;
        game_.gui->SetupScreen(0);
        return;
    }
    // Quick restart: the same as Restart in the pause menu, without the menu.
    if (PressedAction(k, Action::QuickRestart, RestartReleased)) {
        game_.sound->PlayEffect(SfxTransit);
        game_.resetgame(false);
        game_.StarsCollected = 0;
        game_.gui->SetupScreen(0);
        return;
    }
    if (TestKeys && k[DIK_H] == Down) {
        // Straight to the name entry for the last qualifying time.
        game_.GameState = qb::NameEntry;
        game_.gui->SetupScreen(0);
    }
}

void KeyboardControls::PauseMenu(const uint8_t* k) {
    Release(k, DIK_UP, UpReleased);
    Release(k, DIK_DOWN, DownReleased);
    ReleaseAction(k, Action::Pause, PauseReleased);
    // The pause key resumes as it paused.
    const bool esc = Pressed(k, DIK_ESCAPE, EscReleased);
    if (esc || PressedAction(k, Action::Pause, PauseReleased)) {
        game_.GameState = qb::Playing;
        game_.gui->SetupScreen(0);
    }
    if (Pressed(k, DIK_UP, UpReleased)) MoveFocus(false);
    if (Pressed(k, DIK_DOWN, DownReleased)) MoveFocus(true);
    if (k[DIK_RETURN] != Down) return;
    switch (CurrentTab(game_)) {
        // A press of Return lasts several passes: the one that chose the item
        // must not also start the track again (or jump) on the next screen.
        case 1:  // restart
            game_.GameState = qb::Playing;
            game_.resetgame(false);
            game_.gui->SetupScreen(0);
            ReturnReleased = false;
            break;
        case 2:  // exit track
            game_.GameState = qb::TrackChoice;
            game_.resetgame(false);
            game_.gui->SetupScreen(3);
            ReturnReleased = false;
            break;
        case 3:  // quit game
            game_.GameState = qb::MainMenu;
            game_.resetgame(false);
            game_.gui->SetupScreen(0);
            ReturnReleased = false;
            break;
        case 4:  // cancel: play on where it stopped
            game_.GameState = qb::Playing;
            ReturnReleased = false;
            break;
        default:
            break;
    }
}

void KeyboardControls::MainMenu(const uint8_t* k) {
    Release(k, DIK_UP, UpReleased);
    Release(k, DIK_DOWN, DownReleased);
    Release(k, DIK_RETURN, ReturnReleased);
    if (Pressed(k, DIK_DOWN, DownReleased)) MoveFocus(true);
    if (Pressed(k, DIK_UP, UpReleased)) MoveFocus(false);
    if (k[DIK_RETURN] != Down || !ReturnReleased) return;
    // The flag stays set: the next screen clears or ignores it.
    switch (CurrentTab(game_)) {
        case 1:
            GoTo(qb::ZoneChoice, true);
            break;
        case 2:
            GoTo(qb::Options, true);
            break;
        case 3:
            GoTo(qb::InstructionsPage1, true);
            break;
        case 4:
            game_.sound->PlayEffect(SfxTransit);
            game_.gui->OpenWebSite();
            break;
        case 5:
            game_.sound->PlayEffect(SfxTransit);
            game_.GameState = qb::Closing;
            game_.GameRunning = false;
            break;
        default:
            break;
    }
}

void KeyboardControls::ZoneChoice(const uint8_t* k) {
    Release(k, DIK_UP, UpReleased);
    Release(k, DIK_DOWN, DownReleased);
    Release(k, DIK_LEFT, LeftReleased);
    Release(k, DIK_RIGHT, RightReleased);
    // The arrows move the focus over the zone pictures and the two buttons.
    if (Pressed(k, DIK_LEFT, LeftReleased)) game_.gui->MoveFocusToward(-1, 0);
    if (Pressed(k, DIK_RIGHT, RightReleased)) game_.gui->MoveFocusToward(1, 0);
    if (Pressed(k, DIK_UP, UpReleased)) game_.gui->MoveFocusToward(0, -1);
    if (Pressed(k, DIK_DOWN, DownReleased)) game_.gui->MoveFocusToward(0, 1);
    if (k[DIK_ESCAPE] == Down) GoTo(qb::MainMenu, true);
    // Return opens the focused stop; on zone A (where the screen starts)
    // that is the first zone at its first track.
    if (k[DIK_RETURN] == Down && game_.GameState == qb::ZoneChoice) game_.gui->ActivateZoneChoiceFocus();
    // The Return that leaves this screen must not also start a track.
    ReturnReleased = false;
}

void KeyboardControls::TrackChoice(const uint8_t* k) {
    Release(k, DIK_RETURN, ReturnReleased);
    Release(k, DIK_LEFT, LeftReleased);
    Release(k, DIK_RIGHT, RightReleased);
    if (Pressed(k, DIK_LEFT, LeftReleased)) game_.gui->SetupScreen(1);
    if (Pressed(k, DIK_RIGHT, RightReleased)) game_.gui->SetupScreen(2);
    if (WatchPressed(k)) return;
    if ((k[DIK_RETURN] == Down || k[DIK_SPACE] == Down) && ReturnReleased) {
        game_.sound->PlayEffect(SfxTransit);
        game_.sound->PlayMusic(game_.gui->TrackMusic());
        game_.startPlaying();
        game_.gui->SetupScreen(0);
        // The press that started the track must not make the car jump
        // until it has been let go.
        ReturnReleased = false;
        return;
    }
    if (k[DIK_ESCAPE] == Down) GoTo(qb::ZoneChoice, true);
}

void KeyboardControls::OptionsScreen(const uint8_t* k) {
    Release(k, DIK_UP, UpReleased);
    Release(k, DIK_DOWN, DownReleased);
    Release(k, DIK_LEFT, LeftReleased);
    Release(k, DIK_RIGHT, RightReleased);
    Release(k, DIK_RETURN, ReturnReleased);
    if (k[DIK_ESCAPE] == Down) {
        GoTo(qb::MainMenu, true);
        return;
    }
    // The arrows move the focus by where the buttons lie; Return presses it.
    if (Pressed(k, DIK_LEFT, LeftReleased)) game_.gui->MoveFocusToward(-1, 0);
    if (Pressed(k, DIK_RIGHT, RightReleased)) game_.gui->MoveFocusToward(1, 0);
    if (Pressed(k, DIK_UP, UpReleased)) game_.gui->MoveFocusToward(0, -1);
    if (Pressed(k, DIK_DOWN, DownReleased)) game_.gui->MoveFocusToward(0, 1);
    if (Pressed(k, DIK_RETURN, ReturnReleased)) game_.gui->Click(game_.gui->SlotWithTab(CurrentTab(game_)));
}

void KeyboardControls::UserTrackChoice(const uint8_t* k) {
    // Browsed and started like the track choice of a zone.
    Release(k, DIK_RETURN, ReturnReleased);
    Release(k, DIK_LEFT, LeftReleased);
    Release(k, DIK_RIGHT, RightReleased);
    if (Pressed(k, DIK_LEFT, LeftReleased)) game_.gui->Click(25);
    if (Pressed(k, DIK_RIGHT, RightReleased)) game_.gui->Click(24);
    if (WatchPressed(k)) return;
    if ((k[DIK_RETURN] == Down || k[DIK_SPACE] == Down) && ReturnReleased) {
        game_.gui->Click(26);
        if (game_.GameState == qb::Playing) {
            ReturnReleased = false;
            return;
        }
    }
    if (k[DIK_ESCAPE] == Down) GoTo(qb::ZoneChoice, true);
}

void KeyboardControls::NameEntry(const uint8_t* k) {
    for (size_t i = 0; i < LetterKeys.size(); ++i) Release(k, LetterKeys[i], LetterReleased[i]);
    Release(k, DIK_SPACE, SpaceReleased);
    Release(k, DIK_BACK, BackReleased);
    if (k[DIK_RETURN] == Down) {
        if (!game_.levels->SaveFastestTime(FieldText(game_, 1), game_.LastFinishSeconds,
                                           game_.LastFinishHundredths))
            game_.debug->WriteLine(game_.levels->WriteError());
        game_.replays->NameDriver(Trim(FieldText(game_, 1)));
        game_.GameState = qb::TrackChoice;
        game_.gui->SetupScreen(0);
        ReturnReleased = false;
    }
    if (Pressed(k, DIK_BACK, BackReleased)) RemoveLastCharacterOfField(game_, 1);
    // The length is looked at once: keys pressed together are all taken,
    // in the order Space, A to Z.
    if (static_cast<int>(FieldText(game_, 1).size()) >= NameLength) return;
    if (Pressed(k, DIK_SPACE, SpaceReleased)) AppendToField(game_, 1, " ");
    for (size_t i = 0; i < LetterKeys.size(); ++i)
        if (Pressed(k, LetterKeys[i], LetterReleased[i]))
            AppendToField(game_, 1, std::string(1, static_cast<char>('A' + i)));
}

void KeyboardControls::MadeIt(const uint8_t* k) {
    Release(k, DIK_LEFT, LeftReleased);
    Release(k, DIK_RIGHT, RightReleased);
    if (Pressed(k, DIK_ESCAPE, EscReleased)) {
        game_.GameState = qb::TrackChoice;
        game_.gui->SetupScreen(3);
    }
    if (k[DIK_RETURN] == Down) {
        game_.GameState = qb::TrackChoice;
        game_.gui->SetupScreen(3);
        ReturnReleased = false;
    }
}

void KeyboardControls::Instructions(const uint8_t* k) {
    Release(k, DIK_LEFT, LeftReleased);
    Release(k, DIK_RIGHT, RightReleased);
    if (k[DIK_ESCAPE] == Down) GoTo(qb::MainMenu, false);
    // Pages 1..3 wrap round both ways.
    auto page = [&]() { return game_.GameState - qb::InstructionsPage1; };
    if (page() >= 0 && page() <= 2 && Pressed(k, DIK_LEFT, LeftReleased))
        GoTo(static_cast<int16_t>(qb::InstructionsPage1 + (page() + 2) % 3), false);
    if (page() >= 0 && page() <= 2 && Pressed(k, DIK_RIGHT, RightReleased))
        GoTo(static_cast<int16_t>(qb::InstructionsPage1 + (page() + 1) % 3), false);
}

void KeyboardControls::ControlsScreen(const uint8_t* k) {
    Gui& gui = *game_.gui;
    Release(k, DIK_UP, UpReleased);
    Release(k, DIK_DOWN, DownReleased);
    Release(k, DIK_RETURN, ReturnReleased);
    if (gui.ControlsWaiting) {
        // The first key that goes down is the new one; Esc keeps the old.
        for (int key = 0; key < 256; ++key) {
            const bool went = k[key] == Down && (fresh_[key] || !wasDown_[key]);
            wasDown_[key] = k[key] == Down;
            if (!went) continue;
            if (key == DIK_ESCAPE) {
                EscReleased = false;
                gui.ControlsWaiting = false;
            } else if (game_.bindings->Rebind(static_cast<Action>(gui.ControlsRow - 1),
                                              static_cast<uint8_t>(key))) {
                gui.ControlsWaiting = false;
                gui.SaveControls();
                game_.sound->PlayEffect(SfxTransit);
            }
            if (!gui.ControlsWaiting) {
                // Whatever was pressed acts no further on this screen.
                UpReleased = DownReleased = ReturnReleased = false;
                gui.ShowControls();
                return;
            }
        }
        return;
    }
    for (int key = 0; key < 256; ++key) wasDown_[key] = k[key] == Down;
    if (Pressed(k, DIK_UP, UpReleased)) {
        gui.ControlsRow = gui.ControlsRow == 1 ? Gui::ControlsRows : gui.ControlsRow - 1;
        gui.ShowControls();
    }
    if (Pressed(k, DIK_DOWN, DownReleased)) {
        gui.ControlsRow = gui.ControlsRow == Gui::ControlsRows ? 1 : gui.ControlsRow + 1;
        gui.ShowControls();
    }
    if (Pressed(k, DIK_RETURN, ReturnReleased)) {
        if (gui.ControlsRow == Gui::ControlsRows - 1) {
            gui.Click(58);
        } else if (gui.ControlsRow == Gui::ControlsRows) {
            gui.Click(14);
        } else {
            gui.ControlsWaiting = true;
            gui.ShowControls();
        }
        return;
    }
    if (Pressed(k, DIK_ESCAPE, EscReleased)) GoTo(qb::Options, true);
}

void KeyboardControls::MoveFocus(bool on) {
    const int32_t current = CurrentTab(game_), count = TabCount(game_);
    int32_t wanted;
    if (on)
        wanted = current == count ? 1 : current + 1;
    else
        wanted = current == 1 ? count : current - 1;
    int32_t found = 0;
    for (int32_t slot = 1; slot <= ButtonSlots && found == 0; ++slot)
        if (ButtonTabIndex(game_, slot) == wanted) found = slot;
    SetCurrentTab(game_, wanted);
    for (int32_t slot = 1; slot <= ButtonSlots; ++slot) SetButtonMouseOver(game_, slot, false);
    if (found != 0) SetButtonMouseOver(game_, found, true);
}

}  // namespace qb
