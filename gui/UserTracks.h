// The tracks players make themselves: every usertracks/*.dat file in the
// game folder (a track file built with quorbit-track), listed in name order,
// browsed as one row of tracks. While one is chosen, its file stands in for
// levels.dat (and its own statistics for stats.dat), so the drive, the
// finish and the fastest times work on it unchanged and are saved into it.
//
// These files come from strangers, so the list is made from each file's
// size and header alone, and only the file of the track on screen is read
// and held. A file that cannot be read is one unplayable row that says why.
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

    // Lists folder/*.dat (name order), reading no more than each file's
    // header; statistics live in statsFolder as <name>.stats. Must not be
    // called while Active().
    void Scan(const std::string& folder, const std::string& statsFolder);

    // Rows: one per track of a readable file, one per unplayable file.
    int32_t Count() const;
    // The chosen row, 1..Count(); 0 when there is none.
    int32_t Current = 0;
    // Steps Current by -1 / +1 with wrap-around.
    void Step(int32_t by);

    // Puts the file of Current in place of `levels` / `stats` with its
    // track selected (the main ones are kept here meanwhile), reading it
    // now; any other user file is let go first. A file that turns out to be
    // broken becomes one unplayable row (Current moves onto it) and stands
    // in as an empty track file.
    void Activate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats);
    // Gives the main track file and statistics back and lets the user file go.
    void Deactivate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats);
    bool Active() const { return heldFile_ >= 0; }

    // Row i: file name (without folder), track number within the file, and
    // why it cannot be played (empty when it can).
    const std::string& FileName(int32_t i) const;
    int32_t TrackInFile(int32_t i) const;
    const std::string& Problem(int32_t i) const;
    bool Playable(int32_t i) const { return i >= 1 && i <= Count() && Problem(i).empty(); }

private:
    struct File {
        std::string name;
        int32_t tracks = 0;   // from the header; 0 for an unplayable file
        std::string problem;  // why it cannot be played
    };
    // The file and track of row i (1-based); false when there is no such row.
    bool locate(int32_t i, size_t& file, int32_t& track) const;
    int32_t firstRowOf(size_t file) const;

    std::string folder_, statsFolder_;
    std::vector<File> files_;
    // The one user file read, and what it stands in for while Active().
    int heldFile_ = -1;
    std::unique_ptr<LevelStructure> mainLevels_;
    std::unique_ptr<Stats> mainStats_;
};

}  // namespace qb
