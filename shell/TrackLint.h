// The track checker: drives a track headless along its solution and judges
// whether a person can play it. The car must stay in the picture, every
// hazard must be in sight for a while before the car gets there, the
// solution must be something hands can do (keys held a few frames, and still
// winning when every press and release comes a little early or late), and
// holding Up alone must not win. It also measures the track's difficulty.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/KeyScript.h"

namespace qb {

struct LintOptions {
    float viewMargin = 0.08f;  // share of the screen kept clear round the car
    int seenFrames = 38;       // 1.5 s of warning before a hazard
    int shortestHold = 3;      // frames a key is held at the least
    int jitterRuns = 100;      // replays with moved key timings
    int jitterWins = 95;       // of them at least this many must win
    int jitterFrames = 2;      // each press or release moves this far at most
    uint32_t seed = 14;        // the replays' random draws
    bool windows = false;      // measure every timing window (slow)
    int windowReach = 6;       // frames tried either way when measuring
};

struct LintFinding {
    std::string rule;   // "finish", "in view", "star in view", "seen in time", "held", "timing", "one key"
    int64_t frame = 0;  // play frame (from 1) where it shows, 0 for the whole run
    std::string message;
};

struct LintFigures {
    int64_t keyChanges = 0;
    int64_t narrowestWindow = -1;  // frames; -1 when not measured
    int64_t narrowestAt = 0;       // the frame of that press or release
    double length = 0;             // units from the first block to the far end of the finish
    double seconds = 0;            // race clock at the finish
    int stars = 0;
    int jitterWins = 0, jitterRuns = 0;
    int hazards = 0;
};

struct LintReport {
    int32_t track = 0;
    std::vector<LintFinding> findings;
    LintFigures figures;
    bool Passed() const { return findings.empty(); }
    // One line per finding, "track N: RULE: frame F: MESSAGE", or "track N: ok".
    std::string Describe(const std::string& label) const;
};

// gameDir holds the levels.dat whose track `track` is checked.
LintReport LintTrack(const std::string& gameDir, int32_t track, const KeyScript& solution,
                     const LintOptions& options);

}  // namespace qb
