// The one place where the keyboard acts on the game: once per menu pass and
// once per play frame it reads the keys and, by screen, drives the car, opens
// the pause menu, moves the focus between buttons, activates the focused one,
// turns the instruction pages or types the name for the fastest times.
//
// Edge-triggered actions fire once per press: each command key has a
// "released" flag that any pass seeing the key up sets, and the action
// clears. Held actions only look at whether the key is down.
//
// A key press acts on the screen where it went down: when the screen changes
// (by a key, a click or the finish), every key still down reads as up until
// it has been let go. Without that, one ordinary press of Esc ran through
// several screens, and a Return held as a jump chose a pause menu item.
#pragma once

#include <array>
#include <cstdint>

#include "shell/PadKeys.h"

namespace qb {

class frmGame;
enum class Action : int;

class KeyboardControls {
public:
    static constexpr float JumpVelocity = 0.35f;
    // Key codes of the letters A to Z.
    static constexpr std::array<uint8_t, 26> LetterKeys{30, 48, 46, 32, 18, 33, 34, 35, 23, 36, 37, 38, 50,
                                                        49, 24, 25, 16, 19, 31, 20, 22, 47, 17, 45, 21, 44};
    static constexpr int NameLength = 15;
    // H in play opens the name entry (a build made for testing only).
#ifdef QUORBIT_TEST_KEYS
    static constexpr bool TestKeys = true;
#else
    static constexpr bool TestKeys = false;
#endif

    explicit KeyboardControls(frmGame& game) : game_(game) {}
    void HandleKeyboard();

    // The released flags, kept between passes (all false at start).
    bool EscReleased = false, UpReleased = false, DownReleased = false, LeftReleased = false;
    bool RightReleased = false, ReturnReleased = false, SpaceReleased = false, BackReleased = false;
    std::array<bool, 26> LetterReleased{};
    // The same for the pause and quick-restart keys other than Esc.
    bool PauseReleased = false, RestartReleased = false;

    // Takes the current screen as the one the keys are on, holding nothing
    // over: for a run that starts straight in play with its keys already down.
    void ScreenSeen();

private:
    void Playing(const uint8_t* k);
    // A watched run: the replay drives, Esc or the pause key leaves.
    void Watching(const uint8_t* k);
    // W on a track choice starts watching the best run; true when it did.
    bool WatchPressed(const uint8_t* k);
    void PauseMenu(const uint8_t* k);
    void MainMenu(const uint8_t* k);
    void ZoneChoice(const uint8_t* k);
    void TrackChoice(const uint8_t* k);
    void UserTrackChoice(const uint8_t* k);
    void OptionsScreen(const uint8_t* k);
    void NameEntry(const uint8_t* k);
    void MadeIt(const uint8_t* k);
    void Instructions(const uint8_t* k);
    void ControlsScreen(const uint8_t* k);
    void Act(const uint8_t* k);
    void MoveFocus(bool on);
    void GoTo(int16_t state, bool withSound);
    void HoldOver(const uint8_t* raw);
    // Sets an edge-triggered key's flag when the key is up, or was pressed
    // anew since the last pass.
    void Release(const uint8_t* k, uint8_t key, bool& flag) const;
    // The same for all the keys of a play action (Esc aside).
    void ReleaseAction(const uint8_t* k, Action a, bool& flag) const;
    bool PressedAction(const uint8_t* k, Action a, bool& flag) const;

    frmGame& game_;
    // Keys that were down when the screen changed and have not been let go.
    std::array<bool, 256> heldOver_{};
    // The screen the last pass ended on; Starting before the first pass, so
    // keys held while the game loads count as held over too.
    int16_t screen_ = -1;
    // Keys that went down since the last pass.
    std::array<bool, 256> fresh_{};
    PadKeys pad_;
    // Keys down in the last pass of the Controls screen: a new key is one that went down.
    std::array<bool, 256> wasDown_{};
};

}  // namespace qb
