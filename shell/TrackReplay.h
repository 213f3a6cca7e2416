// One headless run of a key script on one track, boiled down to what the
// track checker asks of it: did it win with every star, and if not, where
// did it go wrong.
#pragma once

#include <cstdint>
#include <string>

#include "shell/KeyScript.h"

namespace qb {

struct ReplayOutcome {
    bool started = false;
    bool finished = false;
    bool died = false;  // blew up or fell off at least once
    int stars = 0, starCount = 0;
    int64_t finishFrames = 0;  // race clock at the finish
    int64_t lostFrame = 0;     // the frame it died in, or the last frame played
    float lostZ = 0;           // where the car was then
    std::string error;         // why it did not start
    bool Won() const { return finished && !died && stars == starCount; }
    // "won", "died at z 123", "missed 2 of 7 stars", "did not reach the finish (z 80)".
    std::string Describe() const;
};

// Where the checker's runs keep what the game writes: every run saves the
// statistics with a flush to disk, and a track is replayed hundreds of
// times, so a folder in memory is used when the system has one.
const std::string& ReplayScratchParent();

ReplayOutcome ReplayKeys(const std::string& gameDir, int32_t track, const KeyScript& script);

}  // namespace qb
