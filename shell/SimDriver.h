// The headless simulator behind quorbit-sim: the real game on the headless
// platform, started on one track as the track choice starts it, fed a key
// script frame by frame, and written out as one CSV row per frame.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/Types.h"

namespace qb {

class frmGame;
struct HeadlessPlatform;

// What one frame left behind.
struct SimRow {
    int64_t frame = 0;
    Vector3 position;
    Vector4 velocity;
    bool onGround = false, onIce = false, exploding = false, dead = false;
    int32_t stars = 0;
    int32_t raceFrames = 0;
    int16_t state = 0;
    uint32_t events = 0;
};

extern const char* const SimCsvHeader;
std::string FormatSimRow(const SimRow& row);

class SimRun {
public:
    // Reads from gameDir; what the game writes (stats, patched times, the
    // log) goes to a scratch folder that is removed afterwards, made in
    // scratchParent (the system's temporary folder when empty).
    explicit SimRun(const std::string& gameDir, const std::string& scratchParent = {});
    ~SimRun();
    SimRun(const SimRun&) = delete;
    SimRun& operator=(const SimRun&) = delete;

    // Starts the game and a run on track n. False with a message when the
    // game folder or the track is not usable.
    bool Start(int32_t track, std::string& error);
    // The same on a track file other than the game folder's levels.dat.
    bool Start(int32_t track, const std::string& trackFile, std::string& error);
    // One frame (a play frame, or a menu pass when a menu is up) with
    // exactly `keys` held.
    SimRow Step(const std::vector<uint8_t>& keys);

    bool Finished() const { return finished_; }
    bool Died() const { return died_; }
    int32_t FinishFrames() const { return finishFrames_; }
    int32_t FinishStars() const { return finishStars_; }
    bool GameRunning() const;
    // "result: finished S:HH stars N/M", "result: died" or "result: running".
    std::string Result() const;

    frmGame& game() { return *game_; }
    HeadlessPlatform& platform() { return *hp_; }

private:
    std::string gameDir_;
    std::string scratch_;
    std::unique_ptr<HeadlessPlatform> hp_;
    std::unique_ptr<frmGame> game_;
    int64_t frame_ = 0;
    bool finished_ = false, died_ = false;
    int32_t finishFrames_ = 0, finishStars_ = 0, starCount_ = 0;
};

// The whole command line: quorbit-sim --game-dir DIR --track N [--keys FILE]
// [--frames N] [--save-replay FILE], or quorbit-sim --game-dir DIR --replay FILE. Returns the
// exit code (2 for bad arguments or script).
int RunSimulator(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// quorbit-sim --replay: drives the run of a replay file on its track and
// prints the result; 0 only when it finishes in the recorded time with the
// recorded stars, 1 when it does not or the track has changed, 2 when the
// file is not a usable replay.
int RunReplayCheck(const std::string& gameDir, const std::string& file, std::ostream& out, std::ostream& err);

}  // namespace qb
