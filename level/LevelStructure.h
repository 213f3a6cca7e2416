// The tracks of one track file in memory, the current selection, and the
// two in-place writes (all-stars flag with the zone flags, fastest times).
// The main tracks and every user track file each get their own instance.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "level/LevelFileReader.h"
#include "level/LevelRecords.h"

namespace qb {

class LevelStructure {
public:
    explicit LevelStructure(std::string path) : path_(std::move(path)) {}

    // Reads the whole file. On any problem nothing is kept (LevelCount() is
    // 0) and `error` names the file, the track and the byte.
    bool LoadLevels(std::string& error);
    // Re-reads the header (zone flags, index). Ignored unless it agrees with
    // the tracks already loaded.
    bool LoadLevelIndex();

    int32_t LevelCount() const { return static_cast<int32_t>(file_.Levels.size()); }
    bool HasLevel(int32_t n) const { return n >= 1 && n <= LevelCount(); }
    // Track n, 1-based; n must be in 1..LevelCount().
    const LevelRecord& Level(int32_t n) const { return file_.Levels.at(static_cast<size_t>(n - 1)); }
    LevelRecord& Level(int32_t n) { return file_.Levels.at(static_cast<size_t>(n - 1)); }
    // False for a track or zone that does not exist.
    bool AllStars(int32_t n) const;
    bool ZoneComplete(int32_t zone) const;
    // Position (1-based, as the file positions are counted) of the first
    // record byte: 17 + 8N.
    int32_t RecordAreaStart() const { return 17 + 8 * LevelCount(); }
    const LevelIndexEntry& IndexEntry(int32_t n) const { return file_.Index.at(static_cast<size_t>(n - 1)); }
    const std::string& path() const { return path_; }
    const std::string& LoadError() const { return loadError_; }
    // The same problem without the file name: the byte and what is wrong.
    const std::string& LoadReason() const { return loadReason_; }

    // Marks CurrentLevel as won with every star and stores its flag; when
    // every track from ZoneFirstLevel to ZoneLastLevel (those that exist)
    // is flagged, also stores the zone flags of CurrentZone.
    bool SaveAllStarsFlag();
    // Inserts the time into CurrentLevel's table and stores the table.
    bool SaveFastestTime(const std::string& name, int32_t seconds, int32_t hundredths);
    // Whether a finish time earns a place in CurrentLevel's table.
    bool TimeQualifies(int32_t seconds, int32_t hundredths) const;
    // Last write error, for the log.
    const std::string& WriteError() const { return writeError_; }
    // Why the last failed save failed; the game reports it and clears it.
    std::string SaveError;
    // A hash of the track count and index table (the zone flags left out),
    // which says whether a file is still the one that was read.
    static uint64_t IndexHash(const uint8_t* data, size_t size, int32_t count);

    // The table rules on their own, for the tool and the tests.
    static bool TimeQualifies(const FastestTimes& t, int32_t seconds, int32_t hundredths);
    static void InsertFastestTime(FastestTimes& t, const std::string& name, int32_t seconds,
                                  int32_t hundredths);

    int32_t CurrentLevel = 0;
    int32_t CurrentZone = 1;
    int32_t ZoneFirstLevel = 1;
    int32_t ZoneLastLevel = 10;

private:
    bool patch(int64_t position, const uint8_t* data, size_t size);
    bool stillTheFileRead() const;

    std::string path_;
    LevelFile file_;
    std::string loadError_;
    std::string loadReason_;
    std::string writeError_;
    uint64_t readSize_ = 0;
    uint64_t readIndexHash_ = 0;
};

}  // namespace qb
