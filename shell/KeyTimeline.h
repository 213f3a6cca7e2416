// A key script seen as a driver's hands: each key is pressed, held for a
// while and let go. The track checker moves these presses and releases a
// few frames early or late, as a person's timing would, and replays them.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "shell/KeyScript.h"

namespace qb {

struct KeyHold {
    uint8_t key = 0;
    int64_t from = 0, to = 0;  // held in frames from .. to - 1
    bool open = false;         // still held when the script ends
};

class KeyTimeline {
public:
    KeyTimeline() = default;
    explicit KeyTimeline(const KeyScript& script);

    const std::vector<KeyHold>& holds() const { return holds_; }
    int64_t frames() const { return frames_; }
    // Frames in which the held keys differ from the frame before (the first
    // frame counts when it holds anything).
    int64_t KeyChanges() const;
    // The presses and releases that can be moved: two a hold, one for a
    // hold still down at the end. Edge e belongs to hold e / 2; even edges
    // are presses.
    std::vector<int> MovableEdges() const;
    int64_t EdgeFrame(int edge) const;
    // A copy with one edge moved by delta frames (a hold keeps at least one frame).
    KeyTimeline Shifted(int edge, int64_t delta) const;
    // A copy with every press and release moved by up to maxShift frames
    // either way, each on its own.
    KeyTimeline Jittered(std::mt19937& random, int maxShift) const;
    // The script, with holds still down at the end kept down for `extra`
    // more frames so that a late run can still reach the finish.
    KeyScript ToScript(int64_t extra) const;

private:
    void Clamp(KeyHold& h) const;
    std::vector<KeyHold> holds_;
    int64_t frames_ = 0;
};

}  // namespace qb
