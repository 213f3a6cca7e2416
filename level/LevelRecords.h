// The in-memory track records of levels.dat: one LevelRecord per track, in
// the field order the track file and the builder share.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace qb {

// One block; texture indexes are 1-based into the track's TextureNames.
struct BlockRecord {
    float X = 0, Y = 0, Z = 0;
    float scaleX = 1, scaleY = 1, scalez = 1;
    int16_t TextureA = 1, TextureB = 1, TextureC = 1, TextureD = 1;
    uint8_t ScaleTextureTop = 1;
    uint8_t ScaleTextureSide = 1;
    uint8_t ActionCode = 0;  // 0 plain, 1 finish, 2 bounce, 3 ice, 4 falling, 5 turbo, 6 deadly
};

// A block that travels: Mdir says where, Mdist how far, Mspeed how fast.
struct MovingPlatformRecord {
    float X = 0, Y = 0, Z = 0;
    float scaleX = 1, scaleY = 1, scalez = 1;
    int16_t TextureA = 1, TextureB = 1, TextureC = 1, TextureD = 1;
    uint8_t ScaleTextureTop = 1;
    uint8_t ScaleTextureSide = 1;
    uint8_t ActionCode = 0;
    uint8_t Mspeed = 0;
    uint8_t Mdir = 0;
    uint8_t Mdist = 0;
    uint8_t MloopBack = 0;  // any non-zero value means true
};

struct RampRecord {
    float X = 0, Y = 0, Z = 0;
    float scaleX = 1, scaleY = 1, scalez = 1;
    int16_t TextureA = 1, TextureB = 1;
    uint8_t Rotation = 0;  // quarter turns
};

struct StarRecord {
    float X = 0, Y = 0, Z = 0;
};

// Places 1 to 3 are indexes 0 to 2. Names are always exactly 15 characters,
// blank padded. A place with Seconds 0 is empty.
struct FastestTimes {
    std::array<std::string, 3> Names{std::string(15, ' '), std::string(15, ' '), std::string(15, ' ')};
    std::array<int32_t, 3> Seconds{0, 0, 0};
    std::array<int32_t, 3> Hundredths{0, 0, 0};
};

struct LevelSettings {
    float Gravity = 0;                           // per-frame pull in world units (file value x 0.0025)
    std::string SettingsText;                    // kept, never used
    std::array<uint32_t, 4> Values{0, 0, 0, 0};  // kept, never used (raw bits)
    float FileGravity = 0;                       // the value as stored in the file, for writing it back
};

// The texture count is stored as an OLE-style tagged number; the type code
// and the raw value bytes are kept so a rewritten file is byte-identical.
struct TaggedNumber {
    uint16_t VarType = 3;                  // 2 int16, 3 int32, 4 float, 5 double, 17 byte, ...
    std::vector<uint8_t> Raw{1, 0, 0, 0};  // the value bytes as stored
    double Value = 1;                      // the value as a number
};

struct LevelRecord {
    LevelSettings Settings;
    int32_t BlockUpper = -1;
    int32_t RampUpper = -1;
    int32_t PlatformUpper = -1;
    int32_t StarUpper = -1;
    std::vector<BlockRecord> Blocks;              // 0..BlockUpper
    std::vector<RampRecord> Ramps;                // 0..RampUpper
    std::vector<MovingPlatformRecord> Platforms;  // 0..PlatformUpper
    std::vector<StarRecord> Stars;                // 0..StarUpper
    TaggedNumber TextureCount;
    std::vector<std::string> TextureNames;  // index 0 unused: names are 1..T
    FastestTimes Times;
    std::string Background = std::string(50, ' ');  // fixed 50 characters, blank padded

    // Lead byte before the record on disk; the game ignores it, the track
    // tool keeps it.
    uint8_t LeadByte = 0;

    // Background name without its blank padding.
    std::string BackgroundName() const {
        size_t end = Background.find_last_not_of(' ');
        return end == std::string::npos ? std::string() : Background.substr(0, end + 1);
    }
    // The background name when it is a plain file name inside the
    // backgrounds folder, else empty: a track file is not allowed to reach
    // anything else on the disk ("../../etc/passwd").
    std::string BackgroundFile() const {
        const std::string name = BackgroundName();
        return IsPlainFileName(name) ? name : std::string();
    }
    // A name with no folder in it: no '/', not "." or "..", no NUL.
    static bool IsPlainFileName(const std::string& name) {
        return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
               name.find('\0') == std::string::npos;
    }
    int32_t TextureNameCount() const {
        return TextureNames.empty() ? 0 : static_cast<int32_t>(TextureNames.size()) - 1;
    }
};

// One entry of the index table: offset from the record area start, and four
// bytes the game reads and passes through.
struct LevelIndexEntry {
    int32_t Offset = 0;
    uint32_t Reserved = 0;
};

}  // namespace qb
