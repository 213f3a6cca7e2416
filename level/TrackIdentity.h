// A track's identity for replays: a hash of its record as stored, leaving out
// the two things the game itself patches in place (the fastest-times table
// and the all-stars flag), so setting a new time does not make an old run of
// the same track a stranger. Any change to the track itself changes it.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

struct LevelRecord;

uint64_t TrackHash(const LevelRecord& record);
// 16 lower-case hex digits.
std::string TrackHashText(uint64_t hash);

}  // namespace qb
