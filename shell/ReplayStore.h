// Where replays live and which runs are kept: the last finished run, and the
// best (fastest) run of each track, in replays/ of the folder the game
// writes to. A replay of a track that has changed since is never used.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "shell/ReplayFile.h"

namespace qb {

class frmGame;

// Which track a run is on: its file, its number in the file, its identity.
struct TrackRef {
    std::string file;  // "levels.dat" or "usertracks/NAME.dat"
    int32_t track = 0;
    uint64_t hash = 0;
    bool operator==(const TrackRef&) const = default;
};

class ReplayStore {
public:
    explicit ReplayStore(frmGame& game) : game_(game) {}

    // The track being played or chosen (levels->CurrentLevel); track 0 when
    // there is none.
    TrackRef CurrentTrack() const;
    std::string Folder() const;
    std::string BestPath(const TrackRef& ref) const;
    std::string LastPath() const;

    // At a finish, before the track is rebuilt: the recorded run becomes the
    // last run, and the best of its track when faster than the one kept.
    void SaveFinishedRun(int32_t frames, int32_t stars, int32_t starCount);
    // The name typed after that finish goes into its files.
    void NameDriver(const std::string& name);

    // The best run of the current track, or nullptr with `why` (empty when
    // there simply is none yet). Read once per track and kept.
    const Replay* Best(std::string& why);
    // Reads the best run again at the next Best() (a race start).
    void Forget() { cacheValid_ = false; }
    // Bumped whenever the best run of any track changes.
    int32_t Generation() const { return generation_; }

private:
    frmGame& game_;
    TrackRef cachedRef_;
    std::string cachedPath_;
    int32_t cachedLevel_ = 0;
    bool cacheValid_ = false;
    std::unique_ptr<Replay> cached_;
    std::string cachedWhy_;
    int32_t generation_ = 0;
    // The finish whose driver is not named yet.
    std::unique_ptr<Replay> pending_;
    bool pendingIsBest_ = false;
    std::string driver_;
};

}  // namespace qb
