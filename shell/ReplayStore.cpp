#include "shell/ReplayStore.h"

#include <filesystem>

#include "level/LevelStructure.h"
#include "level/TrackIdentity.h"
#include "platform/QuorbitDebug.h"
#include "shell/DriveControls.h"
#include "shell/RunRecorder.h"
#include "shell/frmGame.h"

namespace qb {

namespace fs = std::filesystem;

TrackRef ReplayStore::CurrentTrack() const {
    TrackRef ref;
    const LevelStructure& l = *game_.levels;
    if (!l.HasLevel(l.CurrentLevel)) return ref;
    const fs::path path(l.path());
    ref.file = path.filename() == "levels.dat" && path.parent_path().filename() != "usertracks"
                   ? std::string("levels.dat")
                   : "usertracks/" + path.filename().string();
    ref.track = l.CurrentLevel;
    ref.hash = TrackHash(l.Level(l.CurrentLevel));
    return ref;
}

std::string ReplayStore::Folder() const {
    return game_.platform.paths.writeDir + "replays/";
}

std::string ReplayStore::BestPath(const TrackRef& ref) const {
    char number[16];
    std::snprintf(number, sizeof number, "%02d", static_cast<int>(ref.track));
    if (ref.file == "levels.dat") return Folder() + "track-" + number + "-best.replay";
    return Folder() + "user-" + fs::path(ref.file).stem().string() + "-" + number + "-best.replay";
}

std::string ReplayStore::LastPath() const {
    return Folder() + "last.replay";
}

void ReplayStore::SaveFinishedRun(int32_t frames, int32_t stars, int32_t starCount) {
    pending_.reset();
    const RunRecorder& rec = *game_.recorder;
    const TrackRef ref = CurrentTrack();
    if (ref.track == 0) return;
    if (!rec.Usable() || static_cast<int64_t>(rec.Frames().size()) != static_cast<int64_t>(frames) + 1) {
        game_.debug->WriteLine("Run not kept as a replay: its keys could not all be recorded");
        return;
    }
    auto run = std::make_unique<Replay>();
    run->trackFile = ref.file;
    run->track = ref.track;
    run->trackHash = ref.hash;
    run->frames = frames;
    run->stars = stars;
    run->starCount = starCount;
    run->driver = driver_;
    run->date = game_.platform.system.today();
    run->keys = DriveScript(rec.Frames());

    if (!SaveReplay(LastPath(), *run)) game_.debug->WriteLine("Could not write " + LastPath());
    // The best run stays unless this one is faster; a kept run that cannot
    // be read or is of an older version of the track gives way.
    Replay best;
    std::string why;
    const bool keep = LoadReplay(BestPath(ref), best, why) && best.trackHash == ref.hash &&
                      best.track == ref.track && best.frames <= frames;
    pendingIsBest_ = !keep;
    if (pendingIsBest_) {
        if (SaveReplay(BestPath(ref), *run)) {
            cacheValid_ = false;
            ++generation_;
        } else {
            game_.debug->WriteLine("Could not write " + BestPath(ref));
            pendingIsBest_ = false;
        }
    }
    pending_ = std::move(run);
}

void ReplayStore::NameDriver(const std::string& name) {
    driver_ = name.substr(0, Replay::DriverLength);
    while (!driver_.empty() && driver_.back() == ' ') driver_.pop_back();
    if (!pending_) return;
    pending_->driver = driver_;
    if (!SaveReplay(LastPath(), *pending_)) game_.debug->WriteLine("Could not write " + LastPath());
    if (pendingIsBest_) {
        const TrackRef ref{pending_->trackFile, pending_->track, pending_->trackHash};
        if (!SaveReplay(BestPath(ref), *pending_)) game_.debug->WriteLine("Could not write " + BestPath(ref));
        cacheValid_ = false;
    }
    pending_.reset();
}

const Replay* ReplayStore::Best(std::string& why) {
    // Looked at every frame by the clock: the track's identity is only
    // worked out again when another track is chosen or at a race start.
    const LevelStructure& l = *game_.levels;
    if (!cacheValid_ || l.path() != cachedPath_ || l.CurrentLevel != cachedLevel_) {
        const TrackRef ref = CurrentTrack();
        cachedPath_ = l.path();
        cachedLevel_ = l.CurrentLevel;
        cachedRef_ = ref;
        cacheValid_ = true;
        cached_.reset();
        cachedWhy_.clear();
        const std::string path = BestPath(ref);
        const std::string name = fs::path(path).filename().string();
        std::error_code ec;
        if (ref.track != 0 && fs::exists(path, ec)) {
            auto r = std::make_unique<Replay>();
            if (!LoadReplay(path, *r, cachedWhy_)) {
                // Named by its file alone: the player knows where replays live.
                if (cachedWhy_.rfind(path, 0) == 0) cachedWhy_ = name + cachedWhy_.substr(path.size());
            } else if (r->track != ref.track || r->trackFile != ref.file) {
                cachedWhy_ = name + " is a run of track " + std::to_string(r->track) + " of " + r->trackFile;
            } else if (r->trackHash != ref.hash) {
                cachedWhy_ = name + " was driven on an older version of this track";
            } else {
                cached_ = std::move(r);
            }
            if (!cachedWhy_.empty()) game_.debug->WriteLine("Replay refused: " + cachedWhy_);
        }
    }
    why = cachedWhy_;
    return cached_.get();
}

}  // namespace qb
