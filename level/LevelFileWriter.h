// Writing levels.dat: whole files for the track tool, and the two small
// blocks the game patches in place.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "level/LevelFileReader.h"

namespace qb {

// Bytes of one record on disk, lead byte included.
std::vector<uint8_t> EncodeLevelRecord(const LevelRecord& rec, int16_t allStars);

// The whole file. Index offsets are computed from the records; the four
// reserved bytes of each index entry come from `file.Index` when present.
std::vector<uint8_t> EncodeLevelFile(const LevelFile& file);

// The 69-byte fastest-times block: three 15-character names, six Longs.
std::array<uint8_t, 69> EncodeFastestTimes(const FastestTimes& t);

// The six zone flags as stored at bytes 4..15.
std::array<uint8_t, 12> EncodeZoneFlags(const std::array<int16_t, 6>& flags);

}  // namespace qb
