#include "platform/AssetLimits.h"

#include <cctype>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

namespace qb {

namespace {

bool readUpTo(const std::string& path, int64_t largest, std::vector<uint8_t>& bytes, std::string& why) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in) {
        why = "cannot be opened";
        return false;
    }
    const std::streamoff size = in.tellg();
    if (size < 0 || size > largest) {
        why = "is " + std::to_string(size) + " bytes long, over the limit of " + std::to_string(largest);
        return false;
    }
    in.seekg(0);
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return true;
}

uint32_t le32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
           static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}
uint32_t be32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) << 24 | static_cast<uint32_t>(p[1]) << 16 |
           static_cast<uint32_t>(p[2]) << 8 | static_cast<uint32_t>(p[3]);
}

bool jpegSize(const std::vector<uint8_t>& b, int64_t& w, int64_t& h) {
    size_t i = 2;
    while (i + 4 <= b.size()) {
        if (b[i] != 0xFF) return false;
        const uint8_t marker = b[i + 1];
        if (marker == 0xFF) {
            ++i;
            continue;
        }
        const size_t len = static_cast<size_t>(b[i + 2]) << 8 | b[i + 3];
        // Start-of-frame markers (not DHT C4, JPG C8, DAC CC) hold the size.
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC) {
            if (i + 9 > b.size()) return false;
            h = static_cast<int64_t>(b[i + 5]) << 8 | b[i + 6];
            w = static_cast<int64_t>(b[i + 7]) << 8 | b[i + 8];
            return true;
        }
        if (len < 2) return false;
        i += 2 + len;
    }
    return false;
}

}  // namespace

bool CheckPictureFile(const std::string& path, int32_t& width, int32_t& height, std::string& why) {
    std::vector<uint8_t> b;
    if (!readUpTo(path, kLargestPictureFile, b, why)) return false;
    int64_t w = -1, h = -1;
    if (b.size() >= 26 && b[0] == 'B' && b[1] == 'M') {
        const uint32_t header = le32(&b[14]);
        if (header == 12) {  // the old core header: 16-bit sides
            w = b[18] | b[19] << 8;
            h = b[20] | b[21] << 8;
        } else {
            w = static_cast<int32_t>(le32(&b[18]));
            h = static_cast<int32_t>(le32(&b[22]));
            if (h < 0) h = -h;  // top-down rows
        }
    } else if (b.size() >= 24 && std::memcmp(b.data(), "\x89PNG\r\n\x1a\n", 8) == 0) {
        w = be32(&b[16]);
        h = be32(&b[20]);
    } else if (b.size() >= 4 && b[0] == 0xFF && b[1] == 0xD8) {
        if (!jpegSize(b, w, h)) {
            why = "is a JPEG picture without a readable size";
            return false;
        }
    } else {
        why = "is not a BMP, PNG or JPEG picture";
        return false;
    }
    if (w < 1 || h < 1 || w > kLargestPictureSide || h > kLargestPictureSide) {
        why = "claims " + std::to_string(w) + " x " + std::to_string(h) + " pixels (1 to " +
              std::to_string(kLargestPictureSide) + " a side)";
        return false;
    }
    width = static_cast<int32_t>(w);
    height = static_cast<int32_t>(h);
    return true;
}

bool CheckModelFile(const std::string& path, std::string& why) {
    std::vector<uint8_t> b;
    if (!readUpTo(path, kLargestModelFile, b, why)) return false;
    if (b.size() < 16 || std::memcmp(b.data(), "xof ", 4) != 0 || std::memcmp(b.data() + 8, "txt ", 4) != 0) {
        why = "is not a text DirectX model";
        return false;
    }
    // A list's count is the whole number right after '{' (or right after
    // another count), or the one after the ";;" that closes the vertices.
    // Each of its items takes at least two bytes ("0,") after it.
    enum class Prev { Other, Open, Count, CountSemi, Semi, SemiSemi };
    Prev prev = Prev::Other;
    size_t i = 16;
    while (i < b.size()) {
        const uint8_t c = b[i];
        if (std::isspace(c)) {
            ++i;
            continue;
        }
        if (c == '/' && i + 1 < b.size() && b[i + 1] == '/') {
            while (i < b.size() && b[i] != '\n') ++i;
            continue;
        }
        if (c == '#') {
            while (i < b.size() && b[i] != '\n') ++i;
            continue;
        }
        if (c == '{') {
            prev = Prev::Open;
            ++i;
            continue;
        }
        if (c == ';') {
            prev = prev == Prev::Count ? Prev::CountSemi : prev == Prev::Semi ? Prev::SemiSemi : Prev::Semi;
            ++i;
            continue;
        }
        if (std::isdigit(c) || c == '-' || c == '+' || c == '.') {
            size_t j = i;
            bool whole = true;
            while (j < b.size() && (std::isalnum(b[j]) || b[j] == '.' || b[j] == '-' || b[j] == '+')) {
                if (!std::isdigit(b[j])) whole = false;
                ++j;
            }
            const bool countPlace = prev == Prev::Open || prev == Prev::CountSemi || prev == Prev::SemiSemi;
            if (whole && countPlace) {
                const std::string digits(b.begin() + static_cast<std::ptrdiff_t>(i),
                                         b.begin() + static_cast<std::ptrdiff_t>(j));
                const size_t left = b.size() - j;
                if (digits.size() > 10 || std::stoull(digits) > left / 2) {
                    why = "claims " + digits + " items at byte " + std::to_string(i) + " with only " +
                          std::to_string(left) + " bytes after it";
                    return false;
                }
                prev = Prev::Count;
            } else {
                prev = Prev::Other;
            }
            i = j;
            continue;
        }
        prev = Prev::Other;
        ++i;
    }
    return true;
}

bool CheckWaveFile(const std::string& path, std::string& why) {
    std::vector<uint8_t> b;
    if (!readUpTo(path, kLargestPictureFile, b, why)) return false;
    if (b.size() < 12 || std::memcmp(b.data(), "RIFF", 4) != 0 || std::memcmp(b.data() + 8, "WAVE", 4) != 0) {
        why = "is not a WAVE file";
        return false;
    }
    bool format = false, data = false;
    size_t at = 12;
    while (at + 8 <= b.size()) {
        const uint64_t size = le32(&b[at + 4]);
        if (size > b.size() - at - 8) {
            why = "ends inside its \"" + std::string(reinterpret_cast<const char*>(&b[at]), 4) + "\" chunk";
            return false;
        }
        if (std::memcmp(&b[at], "fmt ", 4) == 0) format = true;
        if (std::memcmp(&b[at], "data", 4) == 0) data = true;
        at += 8 + static_cast<size_t>(size) + (size & 1);
    }
    if (!format || !data) {
        why = "has no sound format or no sound data";
        return false;
    }
    return true;
}

}  // namespace qb
