#include "level/LevelFileReader.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "level/ByteIO.h"
#include "level/TrackLimits.h"

namespace qb {

namespace {

// Thrown inside the reader only; ReadLevelFile turns it into its result.
struct Malformed {
    LevelFileError error;
};

class Cursor {
public:
    Cursor(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    int64_t pos() const { return static_cast<int64_t>(pos_); }
    size_t left() const { return size_ - pos_; }
    int32_t track = 0;

    [[noreturn]] void fail(int64_t at, const std::string& message) const {
        throw Malformed{LevelFileError{at, track, message}};
    }
    void need(size_t n, const char* what) const {
        if (n > left())
            fail(pos(), std::string("the file ends inside ") + what + " (" + std::to_string(n) +
                            " bytes needed, " + std::to_string(left()) + " left)");
    }
    const uint8_t* take(size_t n, const char* what) {
        need(n, what);
        const uint8_t* p = data_ + pos_;
        pos_ += n;
        return p;
    }
    uint8_t u8(const char* what) { return *take(1, what); }
    int16_t i16(const char* what) { return static_cast<int16_t>(GetU16(take(2, what))); }
    int32_t i32(const char* what) { return static_cast<int32_t>(GetU32(take(4, what))); }
    uint32_t u32(const char* what) { return GetU32(take(4, what)); }
    float f32(const char* what) { return GetF32(take(4, what)); }
    std::string fixed(size_t n, const char* what) {
        const uint8_t* p = take(n, what);
        return std::string(reinterpret_cast<const char*>(p), n);
    }
    std::string counted(const char* what) {
        const int64_t at = pos();
        const int16_t len = i16(what);
        if (len < 0) fail(at, std::string("negative length ") + std::to_string(len) + " of " + what);
        if (len > limits::kNameBytes)
            fail(at, std::string("length ") + std::to_string(len) + " of " + what + " is over the limit of " +
                         std::to_string(limits::kNameBytes) + " bytes");
        return fixed(static_cast<size_t>(len), what);
    }

private:
    const uint8_t* data_;
    size_t size_;
    size_t pos_ = 0;
};

// Reads an upper index and checks that its items fit in what is left.
int32_t readUpper(Cursor& c, const char* what, size_t itemSize, bool mayBeEmpty) {
    const int64_t at = c.pos();
    const int32_t upper = c.i32(what);
    const int32_t lowest = mayBeEmpty ? -1 : 0;
    if (upper < lowest)
        c.fail(at, std::string(what) + " upper index " + std::to_string(upper) + " is below " +
                       std::to_string(lowest));
    if (upper >= limits::kObjectsOfAKind)
        c.fail(at, std::string(what) + " upper index " + std::to_string(upper) + " is over the limit of " +
                       std::to_string(limits::kObjectsOfAKind) + " items of a kind");
    const uint64_t bytes = (static_cast<uint64_t>(upper) + 1) * itemSize;
    if (bytes > c.left())
        c.fail(at, std::string(what) + " upper index " + std::to_string(upper) + " needs " +
                       std::to_string(bytes) + " bytes, only " + std::to_string(c.left()) + " left");
    return upper;
}

int16_t readTexture(Cursor& c, int32_t textureCount, const char* what) {
    const int64_t at = c.pos();
    const int16_t t = c.i16(what);
    if (t < 1 || t > textureCount)
        c.fail(at, std::string(what) + " texture index " + std::to_string(t) + " is outside 1.." +
                       std::to_string(textureCount));
    return t;
}

template <typename R>
void readBoxFields(Cursor& c, R& r, int32_t textureCount, const char* what) {
    r.X = c.f32(what);
    r.Y = c.f32(what);
    r.Z = c.f32(what);
    r.scaleX = c.f32(what);
    r.scaleY = c.f32(what);
    r.scalez = c.f32(what);
    r.TextureA = readTexture(c, textureCount, what);
    r.TextureB = readTexture(c, textureCount, what);
}

template <typename R>
void readBlockFields(Cursor& c, R& r, int32_t textureCount, const char* what) {
    readBoxFields(c, r, textureCount, what);
    r.TextureC = readTexture(c, textureCount, what);
    r.TextureD = readTexture(c, textureCount, what);
    r.ScaleTextureTop = c.u8(what);
    r.ScaleTextureSide = c.u8(what);
    r.ActionCode = c.u8(what);
}

void readTextureCount(Cursor& c, LevelRecord& rec) {
    const int64_t at = c.pos();
    const uint16_t type = static_cast<uint16_t>(c.i16("the texture count"));
    const size_t width = TaggedNumberWidth(type);
    if (width == 0) c.fail(at, "texture count type code " + std::to_string(type) + " is not a numeric type");
    const uint8_t* raw = c.take(width, "the texture count");
    const double value = TaggedNumberValue(type, raw);
    // Every name takes at least its 2-byte length, which bounds any real count.
    const double limit = static_cast<double>(c.left() / 2);
    const double whole = std::isfinite(value) ? std::nearbyint(value) : -1.0;
    if (!(whole >= 1.0)) c.fail(at, "texture count " + std::to_string(value) + " is below 1");
    if (whole > limits::kTextures)
        c.fail(at, "texture count " + std::to_string(value) + " is over the limit of " +
                       std::to_string(limits::kTextures));
    if (whole > limit)
        c.fail(at, "texture count " + std::to_string(value) + " is larger than the " +
                       std::to_string(c.left()) + " bytes left can hold");
    rec.TextureCount.VarType = type;
    rec.TextureCount.Raw.assign(raw, raw + width);
    rec.TextureCount.Value = value;
}

void readRecord(Cursor& c, LevelRecord& rec, int16_t& allStars) {
    FastestTimes& t = rec.Times;
    for (auto& name : t.Names) name = c.fixed(15, "the fastest-times names");
    for (auto& s : t.Seconds) s = c.i32("the fastest times");
    for (auto& h : t.Hundredths) h = c.i32("the fastest times");
    allStars = c.i16("the all-stars flag");

    readTextureCount(c, rec);
    const auto count = static_cast<int32_t>(std::nearbyint(rec.TextureCount.Value));
    rec.TextureNames.assign(1, std::string());
    rec.TextureNames.reserve(static_cast<size_t>(count) + 1);
    for (int32_t i = 1; i <= count; ++i) rec.TextureNames.push_back(c.counted("a texture name"));

    rec.Background = c.fixed(50, "the background name");

    rec.BlockUpper = readUpper(c, "block", 35, false);
    rec.Blocks.resize(static_cast<size_t>(rec.BlockUpper) + 1);
    for (auto& b : rec.Blocks) readBlockFields(c, b, count, "a block");

    rec.PlatformUpper = readUpper(c, "moving-platform", 39, true);
    rec.Platforms.resize(static_cast<size_t>(rec.PlatformUpper + 1));
    for (auto& m : rec.Platforms) {
        readBlockFields(c, m, count, "a moving platform");
        m.Mspeed = c.u8("a moving platform");
        m.Mdir = c.u8("a moving platform");
        m.Mdist = c.u8("a moving platform");
        m.MloopBack = c.u8("a moving platform");
    }

    rec.RampUpper = readUpper(c, "ramp", 29, true);
    rec.Ramps.resize(static_cast<size_t>(rec.RampUpper + 1));
    for (auto& r : rec.Ramps) {
        readBoxFields(c, r, count, "a ramp");
        r.Rotation = c.u8("a ramp");
    }

    rec.StarUpper = readUpper(c, "star", 12, true);
    rec.Stars.resize(static_cast<size_t>(rec.StarUpper + 1));
    for (auto& s : rec.Stars) {
        s.X = c.f32("a star");
        s.Y = c.f32("a star");
        s.Z = c.f32("a star");
    }

    rec.Settings.FileGravity = c.f32("the gravity");
    rec.Settings.SettingsText = c.counted("the settings text");
    for (auto& v : rec.Settings.Values) v = c.u32("the settings values");
    rec.Settings.Gravity = GravityFromFile(rec.Settings.FileGravity);
}

void readIndex(Cursor& c, LevelFile& out) {
    if (c.left() == 0) c.fail(0, "the file is empty");
    const int32_t count = c.i32("the level count");
    if (count < 1) c.fail(0, "level count " + std::to_string(count) + " (at least 1 needed)");
    if (count > limits::kTracks)
        c.fail(0, "level count " + std::to_string(count) + " is over the limit of " +
                      std::to_string(limits::kTracks) + " tracks");
    for (auto& z : out.ZoneComplete) z = c.i16("the zone flags");
    // The index alone takes 8 bytes a track; the records are checked as
    // they are read, so a short file is reported where it ends.
    const uint64_t indexBytes = static_cast<uint64_t>(count) * 8;
    if (indexBytes > c.left())
        c.fail(0, "level count " + std::to_string(count) + " needs an index of " +
                      std::to_string(indexBytes) + " bytes, the file has " + std::to_string(c.left()) +
                      " left");
    out.Index.resize(static_cast<size_t>(count));
    for (auto& e : out.Index) {
        e.Offset = c.i32("the index table");
        e.Reserved = c.u32("the index table");
    }
}

}  // namespace

std::string LevelFileError::Describe() const {
    std::string s = "byte " + std::to_string(Byte) + ": ";
    if (Track > 0) s += "track " + std::to_string(Track) + ": ";
    return s + Message;
}

float GravityFromFile(float fileValue) {
    const float perMille = fileValue / 1000.0f;
    return static_cast<float>(static_cast<double>(perMille) * 2.5);
}

size_t TaggedNumberWidth(uint16_t varType) {
    switch (varType) {
        case 16:
        case 17:
            return 1;  // signed and unsigned byte
        case 2:
        case 18:
            return 2;  // 16-bit integers
        case 3:
        case 4:
        case 19:
        case 22:
        case 23:
            return 4;  // 32-bit integers, float
        case 5:
        case 6:
        case 20:
        case 21:
            return 8;  // double, currency, 64-bit integers
        default:
            return 0;
    }
}

double TaggedNumberValue(uint16_t varType, const uint8_t* raw) {
    switch (varType) {
        case 16:
            return static_cast<int8_t>(raw[0]);
        case 17:
            return raw[0];
        case 2:
            return static_cast<int16_t>(GetU16(raw));
        case 18:
            return GetU16(raw);
        case 3:
        case 22:
            return static_cast<int32_t>(GetU32(raw));
        case 19:
        case 23:
            return GetU32(raw);
        case 4:
            return GetF32(raw);
        case 5: {
            const uint64_t bits = GetU64(raw);
            double d;
            std::memcpy(&d, &bits, 8);
            return d;
        }
        case 6:
            return static_cast<double>(static_cast<int64_t>(GetU64(raw))) / 10000.0;
        case 20:
            return static_cast<double>(static_cast<int64_t>(GetU64(raw)));
        case 21:
            return static_cast<double>(GetU64(raw));
        default:
            return std::numeric_limits<double>::quiet_NaN();
    }
}

bool ReadLevelIndex(const uint8_t* data, size_t size, LevelFile& out, LevelFileError& error) {
    out = LevelFile{};
    Cursor c(data, size);
    try {
        readIndex(c, out);
    } catch (const Malformed& m) {
        error = m.error;
        out = LevelFile{};
        return false;
    }
    return true;
}

bool ReadLevelFile(const uint8_t* data, size_t size, LevelFile& out, LevelFileError& error) {
    out = LevelFile{};
    Cursor c(data, size);
    try {
        readIndex(c, out);
        const int64_t areaStart = c.pos();
        const size_t count = out.Index.size();
        out.Levels.reserve(count);
        out.AllStars.reserve(count);
        for (size_t i = 0; i < count; ++i) {
            c.track = static_cast<int32_t>(i + 1);
            const int64_t offset = c.pos() - areaStart;
            if (out.Index[i].Offset != offset)
                c.fail(16 + 8 * static_cast<int64_t>(i),
                       "index offset " + std::to_string(out.Index[i].Offset) +
                           " does not match the record, which starts at offset " + std::to_string(offset));
            LevelRecord rec;
            int16_t allStars = 0;
            rec.LeadByte = c.u8("the lead byte");
            readRecord(c, rec, allStars);
            out.Levels.push_back(std::move(rec));
            out.AllStars.push_back(allStars);
        }
        out.Trailing.assign(data + c.pos(), data + size);
    } catch (const Malformed& m) {
        error = m.error;
        out = LevelFile{};
        return false;
    }
    return true;
}

}  // namespace qb
