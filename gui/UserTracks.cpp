#include "gui/UserTracks.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "level/LevelFileReader.h"
#include "level/LevelStructure.h"
#include "persist/Stats.h"

namespace qb {

namespace fs = std::filesystem;

UserTracks::UserTracks() = default;
UserTracks::~UserTracks() = default;

void UserTracks::Scan(const std::string& folder, const std::string& statsFolder) {
    files_.clear();
    Current = 0;
    folder_ = folder;
    statsFolder_ = statsFolder;
    std::vector<std::string> found;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& p = it->path();
        if (p.extension() == ".dat" && it->is_regular_file(ec)) found.push_back(p.filename().string());
    }
    std::sort(found.begin(), found.end());
    for (std::string& name : found) {
        File f;
        f.name = std::move(name);
        LevelFileError e;
        if (!ReadLevelCountAt(folder + f.name, f.tracks, e)) {
            f.tracks = 0;
            f.problem = e.Describe();
        }
        files_.push_back(std::move(f));
    }
    if (Count() > 0) Current = 1;
}

int32_t UserTracks::Count() const {
    int32_t n = 0;
    for (const File& f : files_) n += f.problem.empty() ? f.tracks : 1;
    return n;
}

bool UserTracks::locate(int32_t i, size_t& file, int32_t& track) const {
    if (i < 1) return false;
    for (size_t k = 0; k < files_.size(); ++k) {
        const int32_t rows = files_[k].problem.empty() ? files_[k].tracks : 1;
        if (i <= rows) {
            file = k;
            track = i;
            return true;
        }
        i -= rows;
    }
    return false;
}

int32_t UserTracks::firstRowOf(size_t file) const {
    int32_t row = 1;
    for (size_t k = 0; k < file; ++k) row += files_[k].problem.empty() ? files_[k].tracks : 1;
    return row;
}

void UserTracks::Step(int32_t by) {
    const int32_t count = Count();
    if (count == 0) return;
    Current += by;
    if (Current < 1) Current = count;
    if (Current > count) Current = 1;
}

void UserTracks::Activate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats) {
    size_t file = 0;
    int32_t track = 0;
    if (!locate(Current, file, track)) return;
    if (heldFile_ != static_cast<int>(file)) {
        Deactivate(levels, stats);
        File& f = files_[file];
        const std::string path = folder_ + f.name;
        auto lv = std::make_unique<LevelStructure>(path);
        auto st = std::make_unique<Stats>(statsFolder_ + fs::path(f.name).stem().string() + ".stats");
        std::string error;
        if (f.problem.empty() && (!lv->LoadLevels(error) || lv->LevelCount() == 0)) {
            // Broken beyond its header (or changed since the list was made):
            // its rows fold into one that says why.
            f.problem = lv->LoadReason().empty() ? "the file holds no track" : lv->LoadReason();
            lv = std::make_unique<LevelStructure>(path);
        }
        if (f.problem.empty()) {
            // The header may have changed since the list was made: the rows
            // follow the file as read.
            f.tracks = lv->LevelCount();
            lv->CurrentZone = 1;
            lv->ZoneFirstLevel = 1;
            lv->ZoneLastLevel = lv->LevelCount();
            st->LoadStats(lv->LevelCount());
        }
        mainLevels_ = std::move(levels);
        mainStats_ = std::move(stats);
        levels = std::move(lv);
        stats = std::move(st);
        heldFile_ = static_cast<int>(file);
        if (!files_[file].problem.empty()) {
            Current = firstRowOf(file);
            track = 0;
        }
        track = std::min(track, levels->LevelCount());
    }
    levels->CurrentLevel = track;
}

void UserTracks::Deactivate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats) {
    if (heldFile_ < 0) return;
    levels = std::move(mainLevels_);
    stats = std::move(mainStats_);
    heldFile_ = -1;
}

const std::string& UserTracks::FileName(int32_t i) const {
    size_t file = 0;
    int32_t track = 0;
    static const std::string none;
    return locate(i, file, track) ? files_[file].name : none;
}

int32_t UserTracks::TrackInFile(int32_t i) const {
    size_t file = 0;
    int32_t track = 0;
    return locate(i, file, track) && files_[file].problem.empty() ? track : 0;
}

const std::string& UserTracks::Problem(int32_t i) const {
    size_t file = 0;
    int32_t track = 0;
    static const std::string none;
    return locate(i, file, track) ? files_[file].problem : none;
}

}  // namespace qb
