#include "level/TrackResults.h"

#include <map>
#include <string>

#include "level/TrackIdentity.h"

namespace qb {

namespace {
constexpr size_t TracksPerZone = 10;
constexpr int16_t kTrue = -1;

// The name a track source gives its track (the settings text), trimmed.
std::string NameOf(const LevelRecord& r) {
    const std::string& s = r.Settings.SettingsText;
    size_t b = 0, e = s.size();
    while (b < e && static_cast<unsigned char>(s[b]) <= 32) ++b;
    while (e > b && static_cast<unsigned char>(s[e - 1]) <= 32) --e;
    return s.substr(b, e - b);
}
}  // namespace

CarriedResults CarryResults(const LevelFile& old, LevelFile& newer) {
    std::map<uint64_t, size_t> byIdentity;
    std::map<std::string, size_t> byName;
    std::map<std::string, int> nameUses;
    for (size_t i = 0; i < old.Levels.size(); ++i) {
        byIdentity.emplace(TrackHash(old.Levels[i]), i);
        const std::string name = NameOf(old.Levels[i]);
        if (!name.empty() && ++nameUses[name] == 1) byName.emplace(name, i);
    }
    CarriedResults carried;
    newer.AllStars.resize(newer.Levels.size(), 0);
    for (size_t i = 0; i < newer.Levels.size(); ++i) {
        LevelRecord& r = newer.Levels[i];
        if (auto same = byIdentity.find(TrackHash(r)); same != byIdentity.end()) {
            r.Times = old.Levels[same->second].Times;
            newer.AllStars[i] = old.AllStars[same->second] != 0 ? kTrue : 0;
            ++carried.times;
            if (newer.AllStars[i] != 0) ++carried.flags;
            continue;
        }
        // A name two old tracks share says nothing about which one this is.
        const std::string name = NameOf(r);
        if (auto named = byName.find(name); named != byName.end() && nameUses[name] == 1) {
            r.Times = old.Levels[named->second].Times;
            newer.AllStars[i] = 0;
            ++carried.times;
        }
    }
    for (size_t z = 0; z < newer.ZoneComplete.size(); ++z) {
        const size_t first = z * TracksPerZone;
        bool all = first < newer.Levels.size();
        for (size_t i = first; i < first + TracksPerZone && i < newer.Levels.size(); ++i)
            all = all && newer.AllStars[i] != 0;
        newer.ZoneComplete[z] = all ? kTrue : 0;
    }
    return carried;
}

}  // namespace qb
