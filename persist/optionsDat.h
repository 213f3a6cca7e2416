// options.dat: music volume, effect volume, video mode; 12 bytes.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

struct OptionsRecord {
    int32_t MusicVolume = 0;  // 0..100
    int32_t SfxVolume = 0;    // -2000..0, hundredths of a decibel
    int32_t VideoMode = 0;    // 1 = 800x600, 2 = 1024x768
};

class optionsDat {
public:
    explicit optionsDat(std::string path) : path_(std::move(path)) {}

    // Reads the file; missing bytes read as 0. A missing file is created empty.
    void LoadOptions();
    // Writes the 12 bytes (keeping any surplus bytes of a longer file).
    bool SaveOptions();

    OptionsRecord Options;
    // Why the last failed save failed; the game reports it and clears it.
    std::string SaveError;
    const std::string& path() const { return path_; }

    // The record from raw file bytes, and back.
    static OptionsRecord Decode(const unsigned char* data, size_t size);

private:
    std::string path_;
};

}  // namespace qb
