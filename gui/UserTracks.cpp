#include "gui/UserTracks.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "level/LevelStructure.h"
#include "persist/Stats.h"

namespace qb {

namespace fs = std::filesystem;

struct UserTracks::File {
    std::string name;
    std::unique_ptr<LevelStructure> levels;
    std::unique_ptr<Stats> stats;
};

UserTracks::UserTracks() = default;
UserTracks::~UserTracks() = default;

void UserTracks::Scan(const std::string& folder, const std::string& statsFolder,
                      std::vector<std::string>& errors) {
    files_.clear();
    tracks_.clear();
    Current = 0;
    std::vector<fs::path> found;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& p = it->path();
        if (p.extension() == ".dat" && it->is_regular_file(ec)) found.push_back(p);
    }
    std::sort(found.begin(), found.end(), [](const fs::path& a, const fs::path& b) {
        return a.filename().string() < b.filename().string();
    });
    for (const fs::path& p : found) {
        auto file = std::make_unique<File>();
        file->name = p.filename().string();
        file->levels = std::make_unique<LevelStructure>(p.string());
        std::string error;
        if (!file->levels->LoadLevels(error) || file->levels->LevelCount() == 0) {
            errors.push_back(error.empty() ? p.string() + " holds no track" : error);
            continue;
        }
        file->levels->CurrentZone = 1;
        file->levels->ZoneFirstLevel = 1;
        file->levels->ZoneLastLevel = file->levels->LevelCount();
        file->stats = std::make_unique<Stats>(statsFolder + p.stem().string() + ".stats");
        file->stats->LoadStats(file->levels->LevelCount());
        for (int32_t n = 1; n <= file->levels->LevelCount(); ++n) tracks_.push_back({files_.size(), n});
        files_.push_back(std::move(file));
    }
    if (!tracks_.empty()) Current = 1;
}

void UserTracks::Step(int32_t by) {
    if (tracks_.empty()) return;
    Current += by;
    if (Current < 1) Current = Count();
    if (Current > Count()) Current = 1;
}

void UserTracks::Activate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats) {
    if (Current < 1 || Current > Count()) return;
    const Entry& e = tracks_[static_cast<size_t>(Current - 1)];
    if (activeFile_ != static_cast<int>(e.file)) {
        Deactivate(levels, stats);
        File& f = *files_[e.file];
        std::swap(levels, f.levels);
        std::swap(stats, f.stats);
        activeFile_ = static_cast<int>(e.file);
    }
    levels->CurrentLevel = e.level;
}

void UserTracks::Deactivate(std::unique_ptr<LevelStructure>& levels, std::unique_ptr<Stats>& stats) {
    if (activeFile_ < 0) return;
    File& f = *files_[static_cast<size_t>(activeFile_)];
    std::swap(levels, f.levels);
    std::swap(stats, f.stats);
    activeFile_ = -1;
}

const std::string& UserTracks::FileName(int32_t i) const {
    return files_.at(tracks_.at(static_cast<size_t>(i - 1)).file)->name;
}

int32_t UserTracks::TrackInFile(int32_t i) const {
    return tracks_.at(static_cast<size_t>(i - 1)).level;
}

}  // namespace qb
