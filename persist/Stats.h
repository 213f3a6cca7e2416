// stats.dat: total play time, then per track the play time, the times blown
// up, the times fallen off and the jumps. Counters for the run in progress
// are folded in at every track reset.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qb {

struct LevelStat {
    int32_t PlayTime = 0;  // milliseconds
    int32_t BlownUp = 0;
    int32_t FallenOff = 0;
    int32_t Jumps = 0;
};

class Stats {
public:
    explicit Stats(std::string path) : path_(std::move(path)) {}

    // Sizes LevelStats to 1..count (all zero) and reads the file; a missing
    // file is created empty, missing bytes read as zero.
    void LoadStats(int32_t count);
    // Writes the total and LevelStats from the first byte, keeping any
    // surplus bytes of a longer file.
    bool SaveStats();
    void ResetPlayCounters();
    // Books one run on `level`: adds the elapsed time and the run counters,
    // adds the time to the total, clears the counters and saves.
    bool FoldPlay(int32_t level, uint32_t elapsedMs);

    int32_t LevelCount() const { return static_cast<int32_t>(LevelStats.size()) - 1; }

    int32_t TotalPlayTime = 0;
    std::vector<LevelStat> LevelStats = std::vector<LevelStat>(1);  // 1-based; [0] unused
    // Why the last failed save failed; the game reports it and clears it.
    std::string SaveError;
    // The run in progress.
    int32_t BlownUpCount = 0;
    int32_t FallenOffCount = 0;
    int32_t JumpCount = 0;

    // The file image: decoding from raw bytes (missing bytes are zero) and
    // encoding over the bytes of an existing file.
    static void Decode(const uint8_t* data, size_t size, int32_t count, int32_t& total,
                       std::vector<LevelStat>& levels);
    static void Encode(std::vector<uint8_t>& bytes, int32_t total, const std::vector<LevelStat>& levels);

private:
    std::string path_;
};

// "m:ss" from milliseconds, minutes unbounded (no hours).
std::string FormatPlayTime(int32_t ms);

}  // namespace qb
