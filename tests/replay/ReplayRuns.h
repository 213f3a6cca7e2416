// What the replay tests share: the real game on the headless platform
// (SimRun) on the shipped tracks, their solutions as key scripts, runs
// driven to the finish and raced again.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "platform/KeyboardDevice.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/DriveControls.h"
#include "shell/GuiLink.h"
#include "shell/ReplayFile.h"
#include "shell/ReplayStore.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb::test {

namespace fs = std::filesystem;

inline const std::string GameDir = QUORBIT_GAME_DIR;

inline std::string SolutionPath(int track) {
    return std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/" + (track < 10 ? "0" : "") +
           std::to_string(track) + ".keys";
}

inline KeyScript Solution(int track) {
    KeyScript s;
    std::string error;
    EXPECT_TRUE(LoadKeyScript(SolutionPath(track), s, error)) << error;
    return s;
}

inline std::string TempPath(const std::string& name) {
    return (fs::temp_directory_path() / ("quorbit-replay-" + name + "-" + std::to_string(::getpid())))
        .string();
}

// Drives `script` while the game plays; every frame as text, to the last digit.
inline std::string Race(SimRun& run, const KeyScript& script, std::vector<SimRow>* rows = nullptr) {
    std::string digest;
    for (int64_t f = 0; f < script.TotalFrames() && run.game().GameState == Playing; ++f) {
        const SimRow row = run.Step(*script.KeysAt(f));
        if (rows) rows->push_back(row);
        digest += FormatSimRow(row) + "\n";
    }
    return digest;
}

// Plays on with no keys held, at most `limit` frames; the frames played.
inline int64_t PlayOn(SimRun& run, int64_t limit) {
    const std::string played = Race(run, KeyScript{{KeyStep{limit, {}}}});
    return std::count(played.begin(), played.end(), '\n');
}

// Back on the track choice of the same track, as after a finish.
inline void ToTrackChoice(SimRun& run) {
    run.game().GameState = TrackChoice;
    run.game().gui->SetupScreen(0);
}

// The same track started again from its track choice.
inline void RaceAgain(SimRun& run) {
    ToTrackChoice(run);
    run.game().startPlaying();
    run.game().gui->SetupScreen(0);
}

// Track n started and driven to the finish by its solution: its best run is kept.
inline void FinishTrack(SimRun& run, int track) {
    std::string error;
    ASSERT_TRUE(run.Start(track, error)) << error;
    Race(run, Solution(track));
    ASSERT_TRUE(run.Finished()) << run.Result();
}

inline Replay Read(const std::string& path) {
    Replay r;
    std::string error;
    EXPECT_TRUE(LoadReplay(path, r, error)) << error;
    return r;
}

}  // namespace qb::test
