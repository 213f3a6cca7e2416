// A player's results (the fastest-times tables and the all-stars flags)
// carried from their copy of a track file into a newer version of it, track
// by track, wherever each track now stands in the file.
#pragma once

#include "level/LevelFileReader.h"

namespace qb {

struct CarriedResults {
    int32_t times = 0;  // tracks that got their table from the old copy
    int32_t flags = 0;  // tracks that got their all-stars flag
};

// An unchanged track (the same identity as in `old`) keeps its table and
// its all-stars flag; a changed track of the same name keeps its table only
// (its stars may have changed). The zone flags follow the all-stars flags
// of the ten tracks of each zone.
CarriedResults CarryResults(const LevelFile& old, LevelFile& newer);

}  // namespace qb
