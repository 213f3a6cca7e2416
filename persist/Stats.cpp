#include "persist/Stats.h"

#include <cstdio>
#include <limits>

#include "level/ByteIO.h"
#include "persist/AtomicFile.h"

namespace qb {

namespace {

// Every counter here is a 32-bit sum that must not wrap into negatives
// after years of play: it stops at the largest value instead.
int32_t addSaturating(int32_t a, int64_t b) {
    const int64_t sum = static_cast<int64_t>(a) + b;
    if (sum > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
    if (sum < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(sum);
}

// Every value is a count or a time: a negative one can only come from a
// damaged file, and counts as nothing.
int32_t readAt(const uint8_t* data, size_t size, size_t offset) {
    uint8_t b[4] = {};
    for (size_t i = 0; i < 4; ++i)
        if (offset + i < size) b[i] = data[offset + i];
    const auto v = static_cast<int32_t>(GetU32(b));
    return v < 0 ? 0 : v;
}

void writeAt(std::vector<uint8_t>& bytes, size_t offset, int32_t v) {
    const auto u = static_cast<uint32_t>(v);
    for (size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<uint8_t>(u >> (8 * i));
}

}  // namespace

void Stats::Decode(const uint8_t* data, size_t size, int32_t count, int32_t& total,
                   std::vector<LevelStat>& levels) {
    if (count < 0) count = 0;
    levels.assign(static_cast<size_t>(count) + 1, LevelStat{});
    total = readAt(data, size, 0);
    // Stop at the end of the data: the rest stays zero without touching
    // offsets past the file.
    for (size_t n = 1; n <= static_cast<size_t>(count) && 4 + 16 * (n - 1) < size; ++n) {
        const size_t at = 4 + 16 * (n - 1);
        levels[n] = LevelStat{readAt(data, size, at), readAt(data, size, at + 4), readAt(data, size, at + 8),
                              readAt(data, size, at + 12)};
    }
}

void Stats::Encode(std::vector<uint8_t>& bytes, int32_t total, const std::vector<LevelStat>& levels) {
    const size_t count = levels.empty() ? 0 : levels.size() - 1;
    const size_t needed = 4 + 16 * count;
    if (bytes.size() < needed) bytes.resize(needed, 0);
    writeAt(bytes, 0, total);
    for (size_t n = 1; n <= count; ++n) {
        const size_t at = 4 + 16 * (n - 1);
        writeAt(bytes, at, levels[n].PlayTime);
        writeAt(bytes, at + 4, levels[n].BlownUp);
        writeAt(bytes, at + 8, levels[n].FallenOff);
        writeAt(bytes, at + 12, levels[n].Jumps);
    }
}

void Stats::LoadStats(int32_t count) {
    std::FILE* f = std::fopen(path_.c_str(), "rb");
    if (!f) {
        // Opening for binary access creates the file when it is missing.
        CreateIfMissing(path_);
    } else {
        std::fclose(f);
    }
    const std::vector<unsigned char> bytes = ReadWholeFile(path_);
    Decode(bytes.data(), bytes.size(), count, TotalPlayTime, LevelStats);
}

bool Stats::SaveStats() {
    std::vector<unsigned char> bytes = ReadWholeFile(path_);
    Encode(bytes, TotalPlayTime, LevelStats);
    std::string error;
    if (WriteFileAtomically(path_, bytes, &error)) return true;
    SaveError = error;
    return false;
}

void Stats::ResetPlayCounters() {
    BlownUpCount = 0;
    FallenOffCount = 0;
    JumpCount = 0;
}

bool Stats::FoldPlay(int32_t level, uint32_t elapsedMs) {
    if (level >= 1 && level <= LevelCount()) {
        LevelStat& s = LevelStats[static_cast<size_t>(level)];
        s.PlayTime = addSaturating(s.PlayTime, elapsedMs);
        s.BlownUp = addSaturating(s.BlownUp, BlownUpCount);
        s.FallenOff = addSaturating(s.FallenOff, FallenOffCount);
        s.Jumps = addSaturating(s.Jumps, JumpCount);
    }
    TotalPlayTime = addSaturating(TotalPlayTime, elapsedMs);
    ResetPlayCounters();
    return SaveStats();
}

std::string FormatPlayTime(int32_t ms) {
    // A negative time only comes from a damaged stats.dat: nothing was played.
    if (ms < 0) ms = 0;
    const int32_t s = ms / 1000;
    const int32_t m = s / 60;
    const int32_t r = s % 60;
    return std::to_string(m) + ":" + (r < 10 ? "0" : "") + std::to_string(r);
}

}  // namespace qb
