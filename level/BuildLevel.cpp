// BuildLevel by track number: finds the record in the loaded track file.
#include "level/LevelRecords.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "shell/frmGame.h"

namespace qb {

void TrackObjects::BuildLevel(int32_t level, bool loadBackground) {
    // A number outside the loaded file builds nothing: the old track stays.
    if (!game_.levels->HasLevel(level)) return;
    BuildLevel(game_.levels->Level(level), loadBackground);
    BuiltLevel = level;
}

}  // namespace qb
