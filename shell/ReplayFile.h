// A replay: one finished run as the driving keys held in each play frame,
// with a header saying which track it was driven on and what it achieved.
// The text form (docs/replays.md) is the key-script lines of quorbit-sim
// under a header:
//
//   quorbit-replay 1
//   file levels.dat
//   track 3
//   track-hash 9f2c6a1e5b7d4c08
//   frames 572
//   time 22:88
//   stars 5/5
//   driver ANNA
//   date 2026-11-23
//   keys
//   30 Up
//   543 -
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "shell/KeyScript.h"

namespace qb {

struct Replay {
    static constexpr int FormatVersion = 1;
    // An hour at 25 frames a second: no real run is longer, and a bigger
    // claim is a damaged or hostile file.
    static constexpr int32_t LongestRun = 25 * 60 * 60;
    static constexpr size_t LargestFile = 1u << 20;
    static constexpr size_t DriverLength = 15;

    std::string trackFile;  // "levels.dat" or "usertracks/NAME.dat"
    int32_t track = 0;      // 1-based within trackFile
    uint64_t trackHash = 0;
    int32_t frames = 0;  // the race clock at the finish
    int32_t stars = 0, starCount = 0;
    std::string driver;
    std::string date;  // YYYY-MM-DD
    // frames + 1 play frames: the finish is reached in the frame after the
    // clock shows `frames`.
    KeyScript keys;

    int64_t PlayFrames() const { return static_cast<int64_t>(frames) + 1; }
};

// The keys a replay may hold: the driving keys only, since a menu key would
// take a replayed run off the track.
bool IsDrivingKey(uint8_t code);

std::string FormatReplay(const Replay& replay);
// False with a message for the player when the text is not a replay this
// game can use (damaged, another format version, too long ...).
bool ParseReplay(std::string_view text, Replay& out, std::string& error);
bool LoadReplay(const std::string& path, Replay& out, std::string& error);
// Written through a temporary file and a rename; false when it could not be.
bool SaveReplay(const std::string& path, const Replay& replay);

}  // namespace qb
