#include "level/LevelStructure.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "level/FilePatch.h"
#include "level/LevelFileWriter.h"
#include "persist/AtomicFile.h"

namespace qb {

namespace {
constexpr int16_t kTrue = -1;
}

bool LevelStructure::LoadLevels(std::string& error) {
    LevelFileError e;
    std::vector<uint8_t> bytes;
    if (ReadLevelFileAt(path_, file_, e, &bytes)) {
        readSize_ = bytes.size();
        readIndexHash_ = IndexHash(bytes.data(), bytes.size(), LevelCount());
        loadError_.clear();
        loadReason_.clear();
        error.clear();
        return true;
    }
    loadReason_ = e.Describe();
    loadError_ = "The track file " + path_ + " cannot be used (" + loadReason_ + "). No track can be played.";
    error = loadError_;
    return false;
}

bool LevelStructure::LoadLevelIndex() {
    const std::vector<unsigned char> bytes = ReadWholeFile(path_);
    LevelFile header;
    LevelFileError e;
    if (!ReadLevelIndex(bytes.data(), bytes.size(), header, e)) return false;
    if (static_cast<int32_t>(header.Index.size()) != LevelCount()) return false;
    for (size_t i = 0; i < header.Index.size(); ++i)
        if (header.Index[i].Offset != file_.Index[i].Offset) return false;
    file_.ZoneComplete = header.ZoneComplete;
    file_.Index = header.Index;
    return true;
}

bool LevelStructure::AllStars(int32_t n) const {
    return HasLevel(n) && file_.AllStars[static_cast<size_t>(n - 1)] != 0;
}

bool LevelStructure::ZoneComplete(int32_t zone) const {
    return zone >= 1 && zone <= 6 && file_.ZoneComplete[static_cast<size_t>(zone - 1)] != 0;
}

uint64_t LevelStructure::IndexHash(const uint8_t* data, size_t size, int32_t count) {
    // FNV-1a over the count and the index table. The zone flags between
    // them change with our own patches, so they are left out.
    const size_t n = std::min(size, static_cast<size_t>(HeaderSize(count)));
    uint64_t h = 1469598103934665603ull;
    for (size_t i = 0; i < n; ++i)
        if (i < 4 || i >= 16) h = (h ^ data[i]) * 1099511628211ull;
    return h;
}

bool LevelStructure::stillTheFileRead() const {
    std::ifstream in(path_, std::ios::binary | std::ios::ate);
    if (!in) return true;  // the patch itself reports a missing file
    const auto size = static_cast<int64_t>(in.tellg());
    std::vector<uint8_t> head(
        static_cast<size_t>(std::max<int64_t>(0, std::min(HeaderSize(LevelCount()), size))));
    in.seekg(0);
    in.read(reinterpret_cast<char*>(head.data()), static_cast<std::streamsize>(head.size()));
    return static_cast<uint64_t>(size) == readSize_ &&
           IndexHash(head.data(), head.size(), LevelCount()) == readIndexHash_;
}

bool LevelStructure::patch(int64_t position, const uint8_t* data, size_t size) {
    // A file replaced since it was read (another version of the tracks, an
    // edited copy) has its records elsewhere: a patch at our offsets would
    // damage it.
    if (!stillTheFileRead()) {
        writeError_ = path_ + ": the file has changed since the game read it, so nothing was written into it";
        SaveError = writeError_;
        return false;
    }
    // `position` is 1-based like every file position of the track format.
    if (PatchFileAt(path_, position - 1, data, size, writeError_)) return true;
    SaveError = writeError_;
    return false;
}

bool LevelStructure::SaveAllStarsFlag() {
    const int32_t c = CurrentLevel;
    if (!HasLevel(c)) return false;
    const uint8_t flag[2] = {0xFF, 0xFF};
    bool ok = patch(RecordAreaStart() + IndexEntry(c).Offset + 70, flag, 2);
    file_.AllStars[static_cast<size_t>(c - 1)] = kTrue;

    for (int32_t j = ZoneFirstLevel; j <= ZoneLastLevel; ++j)
        if (HasLevel(j) && !AllStars(j)) return ok;
    if (CurrentZone >= 1 && CurrentZone <= 6) {
        file_.ZoneComplete[static_cast<size_t>(CurrentZone - 1)] = kTrue;
        const auto zones = EncodeZoneFlags(file_.ZoneComplete);
        ok = patch(5, zones.data(), zones.size()) && ok;
    }
    return ok;
}

bool LevelStructure::TimeQualifies(const FastestTimes& t, int32_t s, int32_t h) {
    return t.Seconds[2] == 0 || t.Seconds[2] > s || (t.Seconds[2] == s && t.Hundredths[2] > h);
}

bool LevelStructure::TimeQualifies(int32_t s, int32_t h) const {
    return HasLevel(CurrentLevel) && TimeQualifies(Level(CurrentLevel).Times, s, h);
}

void LevelStructure::InsertFastestTime(FastestTimes& t, const std::string& name, int32_t s, int32_t h) {
    // A place keeps its entry in front when it is at least as good: a tie
    // goes below the older time.
    auto atLeastAsGood = [&](size_t p) {
        return t.Seconds[p] != 0 && (t.Seconds[p] < s || (t.Seconds[p] == s && t.Hundredths[p] <= h));
    };
    std::string fixed = name.substr(0, 15);
    fixed.resize(15, ' ');
    auto move = [&](size_t from, size_t to) {
        t.Names[to] = t.Names[from];
        t.Seconds[to] = t.Seconds[from];
        t.Hundredths[to] = t.Hundredths[from];
    };
    size_t place;
    if (!atLeastAsGood(0)) {
        move(1, 2);
        move(0, 1);
        place = 0;
    } else if (!atLeastAsGood(1)) {
        move(1, 2);
        place = 1;
    } else {
        place = 2;
    }
    t.Names[place] = fixed;
    t.Seconds[place] = s;
    t.Hundredths[place] = h;
}

bool LevelStructure::SaveFastestTime(const std::string& name, int32_t seconds, int32_t hundredths) {
    const int32_t c = CurrentLevel;
    if (!HasLevel(c)) return false;
    FastestTimes& t = Level(c).Times;
    InsertFastestTime(t, name, seconds, hundredths);
    const auto block = EncodeFastestTimes(t);
    return patch(RecordAreaStart() + IndexEntry(c).Offset + 1, block.data(), block.size());
}

}  // namespace qb
