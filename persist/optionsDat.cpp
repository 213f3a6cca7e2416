#include "persist/optionsDat.h"

#include <cstdio>
#include <vector>

#include "persist/AtomicFile.h"

namespace qb {

namespace {
int32_t readLE32(const unsigned char* p) {
    return static_cast<int32_t>(static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
                                static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24);
}

void writeLE32(unsigned char* p, int32_t value) {
    const auto v = static_cast<uint32_t>(value);
    p[0] = v & 0xFF;
    p[1] = (v >> 8) & 0xFF;
    p[2] = (v >> 16) & 0xFF;
    p[3] = (v >> 24) & 0xFF;
}
}  // namespace

OptionsRecord optionsDat::Decode(const unsigned char* data, size_t size) {
    OptionsRecord r;
    unsigned char buf[12] = {};
    for (size_t i = 0; i < size && i < 12; ++i) buf[i] = data[i];
    r.MusicVolume = readLE32(buf);
    r.SfxVolume = readLE32(buf + 4);
    r.VideoMode = readLE32(buf + 8);
    return r;
}

void optionsDat::LoadOptions() {
    std::FILE* f = std::fopen(path_.c_str(), "rb");
    if (!f) {
        // Opening for binary access creates the file when it is missing.
        CreateIfMissing(path_);
        Options = OptionsRecord{};
        return;
    }
    std::fclose(f);
    const std::vector<unsigned char> bytes = ReadWholeFile(path_);
    Options = Decode(bytes.data(), bytes.size());
}

bool optionsDat::SaveOptions() {
    std::vector<unsigned char> bytes = ReadWholeFile(path_);
    if (bytes.size() < 12) bytes.resize(12);
    writeLE32(bytes.data(), Options.MusicVolume);
    writeLE32(bytes.data() + 4, Options.SfxVolume);
    writeLE32(bytes.data() + 8, Options.VideoMode);
    std::string error;
    if (WriteFileAtomically(path_, bytes, &error)) return true;
    SaveError = error;
    return false;
}

}  // namespace qb
