#include "level/TrackIdentity.h"

#include <cstdio>

#include "level/LevelFileWriter.h"
#include "level/LevelRecords.h"

namespace qb {

uint64_t TrackHash(const LevelRecord& record) {
    LevelRecord plain = record;
    plain.Times = FastestTimes{};
    plain.LeadByte = 0;  // passed through by the track tool, never read by the game
    // FNV-1a, 64 bits: small, stable across machines and plenty for telling
    // tracks apart (it guards against mistakes, not against forgery).
    uint64_t h = 0xcbf29ce484222325ull;
    for (uint8_t b : EncodeLevelRecord(plain, 0)) {
        h ^= b;
        h *= 0x100000001b3ull;
    }
    return h;
}

std::string TrackHashText(uint64_t hash) {
    char buf[17];
    std::snprintf(buf, sizeof buf, "%016llx", static_cast<unsigned long long>(hash));
    return buf;
}

}  // namespace qb
