// Watching a track's best run: the real game, with its view, music and
// sounds, driven frame by frame by the kept replay instead of the keys.
// Nothing a watched run does counts as play: no statistics, fastest times,
// replays or all-stars flags. At the finish its time is shown; Esc leaves at
// any moment, back to the track choice.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/ReplayFile.h"

namespace qb {

class frmGame;

class WatchRun {
public:
    explicit WatchRun(frmGame& game) : game_(game) {}

    // True while a replay drives the car.
    bool Active() const { return active_; }
    // From a track choice: the chosen track's best run starts as a race
    // does. False when the track has none that can be watched (the track
    // choice says why).
    bool Start();
    // This play frame's driving: the replay's bits. False when the replay
    // has ended without a finish (the end screen then says so).
    bool NextFrame(uint8_t& bits);
    // The finish of the watched run: the end screen with its time.
    void Finish(int32_t frames, int32_t stars);
    // Esc: back to the track choice at once.
    void Leave();

    // What the end screen shows.
    const Replay& Run() const { return run_; }
    bool Finished() const { return finished_; }
    int32_t FinishFrames() const { return finishFrames_; }
    int32_t FinishStars() const { return finishStars_; }
    // Play frames driven so far.
    int64_t FramesDriven() const { return static_cast<int64_t>(next_); }

private:
    // Ends the run in progress (the car back at the start, nothing booked)
    // and shows the end screen; the win music when it reached the finish.
    void Stop(bool finished);

    frmGame& game_;
    bool active_ = false;
    Replay run_;
    std::vector<uint8_t> frames_;
    size_t next_ = 0;
    uint32_t runs_ = 0;
    bool finished_ = false;
    int32_t finishFrames_ = 0, finishStars_ = 0;
};

}  // namespace qb
