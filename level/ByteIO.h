// Little-endian byte reading and writing for the track file.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace qb {

inline uint16_t GetU16(const uint8_t* p) {
    return static_cast<uint16_t>(p[0] | p[1] << 8);
}
inline uint32_t GetU32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
           static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}
inline uint64_t GetU64(const uint8_t* p) {
    return static_cast<uint64_t>(GetU32(p)) | static_cast<uint64_t>(GetU32(p + 4)) << 32;
}
inline float GetF32(const uint8_t* p) {
    const uint32_t bits = GetU32(p);
    float f;
    std::memcpy(&f, &bits, 4);
    return f;
}

// Appends little-endian values to a byte vector.
class ByteWriter {
public:
    explicit ByteWriter(std::vector<uint8_t>& out) : out_(out) {}
    void U8(uint8_t v) { out_.push_back(v); }
    void U16(uint16_t v) {
        U8(static_cast<uint8_t>(v));
        U8(static_cast<uint8_t>(v >> 8));
    }
    void I16(int16_t v) { U16(static_cast<uint16_t>(v)); }
    void U32(uint32_t v) {
        U16(static_cast<uint16_t>(v));
        U16(static_cast<uint16_t>(v >> 16));
    }
    void I32(int32_t v) { U32(static_cast<uint32_t>(v)); }
    void F32(float f) {
        uint32_t bits;
        std::memcpy(&bits, &f, 4);
        U32(bits);
    }
    void Bytes(const std::vector<uint8_t>& b) { out_.insert(out_.end(), b.begin(), b.end()); }
    // A fixed-width text field: cut or padded with blanks.
    void Fixed(const std::string& s, size_t width) {
        for (size_t i = 0; i < width; ++i) U8(i < s.size() ? static_cast<uint8_t>(s[i]) : ' ');
    }
    // A length-prefixed text (16-bit length).
    void Counted(const std::string& s) {
        I16(static_cast<int16_t>(s.size()));
        for (char c : s) U8(static_cast<uint8_t>(c));
    }

private:
    std::vector<uint8_t>& out_;
};

}  // namespace qb
