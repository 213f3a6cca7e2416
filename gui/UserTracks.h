// The tracks players make themselves: every usertracks/*.dat file in the
// game folder (a track file built with quorbit-track), listed in name order,
// browsed as one row of tracks. While one is chosen, its file stands in for
// levels.dat (and its own statistics for stats.dat), so the drive, the
// finish and the fastest times work on it unchanged and are saved into it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qb {

class LevelStructure;
class Stats;

class UserTracks {
public:
    UserTracks();
    ~UserTracks();
    UserTracks(const UserTracks&) = delete;
    UserTracks& operator=(const UserTracks&) = delete;

    // Reads folder/*.dat (name order); statistics live in statsFolder as
    // <name>.stats. Files that cannot be read are left out and named in
    // `errors`. Must not be called while Active().
    void Scan(const std::string& folder, const std::string& statsFolder, std::vector<std::string>& errors);

    int32_t Count() const { return static_cast<int32_t>(tracks_.size()); }
    // The chosen track, 1..Count(); 0 when there is none.
    int32_t Current = 0;
    // Steps Current by -1 / +1 with wrap-around.
    void Step(int32_t by);

    // Puts the file of Current in place of `levels` / `stats` with its
    // track selected (the main ones are kept here meanwhile). Another file
    // active before is put back first.
    void Activate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats);
    // Gives the main track file and statistics back.
    void Deactivate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats);
    bool Active() const { return activeFile_ >= 0; }

    // File name (without folder) and track number within it, for track i.
    const std::string& FileName(int32_t i) const;
    int32_t TrackInFile(int32_t i) const;

private:
    struct File;
    std::vector<std::unique_ptr<File>> files_;
    struct Entry {
        size_t file;
        int32_t level;
    };
    std::vector<Entry> tracks_;
    int activeFile_ = -1;
};

}  // namespace qb
