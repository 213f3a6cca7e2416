// stats.dat: play time, explosions, falls and jumps per track.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

class Stats {
public:
    explicit Stats(std::string path) : path_(std::move(path)) {}
    void LoadStats(int32_t count) { (void)count; }
    void SaveStats() {}
    void ResetPlayCounters() {}

private:
    std::string path_;
};

}  // namespace qb
