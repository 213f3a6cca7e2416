// The tracks of levels.dat in memory and the current selection.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

class LevelStructure {
public:
    explicit LevelStructure(std::string path) : path_(std::move(path)) {}
    // Reads the whole file. False (with `error` set) when it is unusable.
    bool LoadLevels(std::string& error) {
        error.clear();
        return true;
    }
    void LoadLevelIndex() {}
    int32_t LevelCount() const { return 0; }

    int32_t CurrentLevel = 0;
    int32_t CurrentZone = 1;
    int32_t ZoneFirstLevel = 1;
    int32_t ZoneLastLevel = 10;

private:
    std::string path_;
};

}  // namespace qb
