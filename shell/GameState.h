// The screen or phase the game is in; everything that behaves differently per
// screen switches on it.
#pragma once

#include <cstdint>

namespace qb {

using GameStateValue = int16_t;

enum GameStates : GameStateValue {
    Starting = -1,
    Closing = 0,
    MainMenu = 1,
    Playing = 2,
    TrackChoice = 3,
    PauseMenu = 4,
    NameEntry = 5,
    MadeIt = 6,
    Options = 7,
    ZoneChoice = 8,
    InstructionsPage1 = 9,
    InstructionsPage2 = 10,
    InstructionsPage3 = 11,
    Loading = 12,
    UserTrackChoice = 14,
    ControlsMenu = 15,  // the player's keys, reached from the options
    WatchEnd = 16,      // a watched best run has ended: its time
};

}  // namespace qb
