// Reading levels.dat from memory. Every count, length and index is checked
// against the bytes actually present before anything is sized, so a damaged
// file gives an error naming the track and the byte instead of a crash or a
// huge allocation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "level/LevelRecords.h"

namespace qb {

// A whole track file. Tracks are stored 0-based here (track n at [n - 1]);
// the game's 1-based view is LevelStructure.
struct LevelFile {
    std::array<int16_t, 6> ZoneComplete{0, 0, 0, 0, 0, 0};
    std::vector<LevelIndexEntry> Index;
    std::vector<LevelRecord> Levels;
    std::vector<int16_t> AllStars;  // raw flag words, -1 = true
    std::vector<uint8_t> Trailing;  // bytes after the last record; never read by the game

    int32_t LevelCount() const { return static_cast<int32_t>(Levels.size()); }
};

struct LevelFileError {
    int64_t Byte = 0;   // offset from the start of the file, counted from 0
    int32_t Track = 0;  // 1-based; 0 for the header and index table
    std::string Message;

    // "byte N: track T: message" (the track part only when there is one).
    std::string Describe() const;
};

// Size of the fixed part before the record area: count, zone flags, index.
inline int64_t HeaderSize(int64_t count) {
    return 4 + 12 + 8 * count;
}

// The in-memory gravity from the stored value: / 1000 * 2.5.
float GravityFromFile(float fileValue);

// Byte width of the value of a tagged number with the given type code, or 0
// when the code is not a numeric type.
size_t TaggedNumberWidth(uint16_t varType);
// The numeric value of raw bytes of the given type (width as above).
double TaggedNumberValue(uint16_t varType, const uint8_t* raw);

// Reads the count, the zone flags and the index table only (Levels stays
// empty). False with `error` set when the header is unusable.
bool ReadLevelIndex(const uint8_t* data, size_t size, LevelFile& out, LevelFileError& error);

// Reads the whole file. On failure `out` is left empty.
bool ReadLevelFile(const uint8_t* data, size_t size, LevelFile& out, LevelFileError& error);

// Reads the file at `path`: a missing or empty file, or one over the size
// limit, is refused before its bytes are read. `bytes` receives what was
// read (for a caller that wants to remember the file as it was).
bool ReadLevelFileAt(const std::string& path, LevelFile& out, LevelFileError& error,
                     std::vector<uint8_t>* bytes = nullptr);

// The number of tracks of the file at `path`, from its header alone (a few
// kilobytes at most are read): for listing files without holding them. The
// same refusals as above for a missing file or one over the size limit.
bool ReadLevelCountAt(const std::string& path, int32_t& count, LevelFileError& error);

}  // namespace qb
