#include "gui/BITMAP_Loader.h"

#include <cstdio>
#include <stdexcept>

namespace qb {

namespace {
int32_t LittleEndian32(const unsigned char* p) {
    return static_cast<int32_t>(static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
                                static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24);
}
}  // namespace

void GetBitmapSize(const std::string& path, int32_t& width, int32_t& height) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (f == nullptr) throw std::runtime_error("Cannot open bitmap " + path);
    unsigned char headers[14 + 40];
    const size_t got = std::fread(headers, 1, sizeof headers, f);
    std::fclose(f);
    if (got != sizeof headers) throw std::runtime_error("Bitmap too short: " + path);
    const unsigned char* info = headers + 14;
    width = LittleEndian32(info + 4);
    height = LittleEndian32(info + 8);
}

}  // namespace qb
