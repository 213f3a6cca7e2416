// Track files written byte by byte, independent of the game's writer, and
// scratch folders and whole files for the file tests.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "level/LevelRecords.h"
#include "tests/support/TestFiles.h"

namespace qb::test {

struct Bytes {
    std::vector<uint8_t> b;
    Bytes& u8(uint8_t v) {
        b.push_back(v);
        return *this;
    }
    Bytes& i16(int16_t v) {
        u8(static_cast<uint8_t>(v));
        return u8(static_cast<uint8_t>(static_cast<uint16_t>(v) >> 8));
    }
    Bytes& i32(int32_t v) {
        const auto u = static_cast<uint32_t>(v);
        for (int i = 0; i < 4; ++i) u8(static_cast<uint8_t>(u >> (8 * i)));
        return *this;
    }
    Bytes& f32(float f) {
        int32_t v;
        std::memcpy(&v, &f, 4);
        return i32(v);
    }
    Bytes& f64(double d) {
        uint64_t v;
        std::memcpy(&v, &d, 8);
        i32(static_cast<int32_t>(v));
        return i32(static_cast<int32_t>(v >> 32));
    }
    Bytes& text(const std::string& s, size_t width) {
        for (size_t i = 0; i < width; ++i) u8(i < s.size() ? static_cast<uint8_t>(s[i]) : ' ');
        return *this;
    }
    Bytes& counted(const std::string& s) {
        i16(static_cast<int16_t>(s.size()));
        return text(s, s.size());
    }
    Bytes& append(const Bytes& o) {
        b.insert(b.end(), o.b.begin(), o.b.end());
        return *this;
    }
};

// The body of one record after its lead byte and up to the texture count:
// empty times, the all-stars flag.
inline Bytes RecordHead(int16_t allStars = 0) {
    Bytes r;
    r.u8(0);  // lead byte
    r.text("", 45);
    for (int i = 0; i < 6; ++i) r.i32(0);
    r.i16(allStars);
    return r;
}

// A one-block record with one 5-character texture, texture count as a
// 16-bit integer, no platforms, ramps or stars, empty settings text: 206
// bytes.
inline Bytes SimpleRecord(float gravity = 200, int16_t allStars = 0) {
    Bytes r = RecordHead(allStars);
    r.i16(2).i16(1);     // texture count, VARTYPE 2
    r.counted("a.bmp");  // 7 bytes
    r.text("sky.jpg", 50);
    r.i32(0);  // block upper index
    r.f32(-2).f32(0).f32(-5).f32(4).f32(1).f32(60);
    r.i16(1).i16(1).i16(1).i16(1).u8(0).u8(0).u8(1);
    r.i32(-1).i32(-1).i32(-1);
    r.f32(gravity).counted("");
    for (int i = 0; i < 4; ++i) r.i32(0);
    return r;
}

// A file of the given records with offsets that match them.
inline Bytes FileOf(const std::vector<Bytes>& records) {
    Bytes f;
    f.i32(static_cast<int32_t>(records.size()));
    for (int i = 0; i < 6; ++i) f.i16(0);
    int32_t offset = 0;
    for (const auto& r : records) {
        f.i32(offset).i32(0);
        offset += static_cast<int32_t>(r.b.size());
    }
    for (const auto& r : records) f.append(r);
    return f;
}

// Every field of a record, to compare whole records in one check.
inline auto Fields(const BlockRecord& b) {
    return std::tuple(b.X, b.Y, b.Z, b.scaleX, b.scaleY, b.scalez, b.TextureA, b.TextureB, b.TextureC,
                      b.TextureD, int{b.ScaleTextureTop}, int{b.ScaleTextureSide}, int{b.ActionCode});
}
inline auto Fields(const MovingPlatformRecord& p) {
    return std::tuple(p.X, p.Y, p.Z, p.scaleX, p.scaleY, p.scalez, p.TextureA, p.TextureB, p.TextureC,
                      p.TextureD, int{p.ScaleTextureTop}, int{p.ScaleTextureSide}, int{p.ActionCode},
                      int{p.Mspeed}, int{p.Mdir}, int{p.Mdist}, int{p.MloopBack});
}
inline auto Fields(const RampRecord& r) {
    return std::tuple(r.X, r.Y, r.Z, r.scaleX, r.scaleY, r.scalez, r.TextureA, r.TextureB, int{r.Rotation});
}
inline auto Fields(const StarRecord& s) {
    return std::tuple(s.X, s.Y, s.Z);
}

inline std::string Scratch(const std::string& name) {
    return FreshDir("level-" + name);
}

inline void WriteBytes(const std::string& path, const std::vector<uint8_t>& b) {
    WriteFile(path, std::string(b.begin(), b.end()));
}

inline std::vector<uint8_t> ReadBytes(const std::string& path) {
    const std::string s = ReadFile(path);
    return std::vector<uint8_t>(s.begin(), s.end());
}

}  // namespace qb::test
