// The race clock on screen: the time of the run so far beside the star
// counter, with the track's best run beside it, and at the finish how far
// the run was from that best. Counted in frames, shown as the finish screen
// shows times (s:hh).
#pragma once

#include <cstdint>
#include <string>

namespace qb {

class frmGame;

class RaceClock {
public:
    static constexpr int32_t Field = 2;  // heads-up text field of the play screen
    static constexpr const char* SettingKey = "race.clock";
    // The play screen's note and how many frames it stays in a race.
    static constexpr int32_t NoteField = 3;
    static constexpr int32_t NoteFrames = 100;

    explicit RaceClock(frmGame& game) : game_(game) {}

    // Whether the player wants the clock on screen (settings.cfg).
    bool Shown() const;
    // Once a play frame and when play comes up: the clock text of RaceFrames.
    void Update();
    // "12:48   best 22:88", "12:48" without a best run, "" when hidden.
    std::string Text(int32_t frames, int32_t bestFrames) const;
    // "-0:48" faster than the best, "+1:12" slower, "+0:00" equal.
    static std::string Difference(int32_t frames, int32_t bestFrames);

    // The best run's time before this finish (-1 for none), for the finish screen.
    int32_t BestBeforeFinish = -1;

private:
    int32_t BestFrames() const;

    frmGame& game_;
    std::string shown_;
};

}  // namespace qb
