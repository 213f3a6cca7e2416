// A track file may claim anything; what it costs must stay near what a real
// track costs. Each limit is tried at its value (read) and one past it
// (refused where the count stands, before anything is sized from it).
#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <functional>

#include "level/LevelFileReader.h"
#include "level/LevelFileWriter.h"
#include "level/LevelStructure.h"
#include "level/TrackLimits.h"
#include "tests/level/TrackBytes.h"

namespace qb {
namespace {

LevelRecord OneBlockTrack() {
    LevelRecord r;
    r.TextureNames = {"", "a.bmp"};
    r.TextureCount.VarType = 2;
    r.TextureCount.Raw = {1, 0};
    r.TextureCount.Value = 1;
    r.Blocks.resize(1);
    r.BlockUpper = 0;
    return r;
}

void SetTextureCount(LevelRecord& r, int32_t n) {
    r.TextureCount.VarType = 3;
    r.TextureCount.Raw = {static_cast<uint8_t>(n), static_cast<uint8_t>(n >> 8), 0, 0};
    r.TextureCount.Value = n;
}

std::vector<uint8_t> FileOf(std::vector<LevelRecord> tracks) {
    LevelFile f;
    f.Levels = std::move(tracks);
    f.AllStars.assign(f.Levels.size(), 0);
    return EncodeLevelFile(f);
}

struct Limit {
    const char* what;
    // Makes a file holding `n` of the limited thing.
    std::function<std::vector<uint8_t>(int32_t n)> make;
    int32_t limit;
};

std::vector<Limit> Limits() {
    auto objects = [](auto member, auto upper) {
        return [member, upper](int32_t n) {
            LevelRecord r = OneBlockTrack();
            (r.*member).resize(static_cast<size_t>(n));
            r.*upper = n - 1;
            return FileOf({r});
        };
    };
    return {
        {"tracks",
         [](int32_t n) { return FileOf(std::vector<LevelRecord>(static_cast<size_t>(n), OneBlockTrack())); },
         limits::kTracks},
        {"blocks", objects(&LevelRecord::Blocks, &LevelRecord::BlockUpper), limits::kObjectsOfAKind},
        {"platforms", objects(&LevelRecord::Platforms, &LevelRecord::PlatformUpper), limits::kObjectsOfAKind},
        {"ramps", objects(&LevelRecord::Ramps, &LevelRecord::RampUpper), limits::kObjectsOfAKind},
        {"stars", objects(&LevelRecord::Stars, &LevelRecord::StarUpper), limits::kObjectsOfAKind},
        {"textures",
         [](int32_t n) {
             LevelRecord r = OneBlockTrack();
             r.TextureNames.assign(static_cast<size_t>(n) + 1, "");
             SetTextureCount(r, n);
             return FileOf({r});
         },
         limits::kTextures},
        {"texture name bytes",
         [](int32_t n) {
             LevelRecord r = OneBlockTrack();
             r.TextureNames[1] = std::string(static_cast<size_t>(n), 'x');
             return FileOf({r});
         },
         limits::kNameBytes},
        {"settings text bytes",
         [](int32_t n) {
             LevelRecord r = OneBlockTrack();
             r.Settings.SettingsText = std::string(static_cast<size_t>(n), 'x');
             return FileOf({r});
         },
         limits::kNameBytes},
    };
}

TEST(TrackLimits, EachLimitIsReadAtItsValueAndRefusedOnePast) {
    for (const Limit& l : Limits()) {
        LevelFile file;
        LevelFileError e;
        const std::vector<uint8_t> at = l.make(l.limit);
        EXPECT_TRUE(ReadLevelFile(at.data(), at.size(), file, e)) << l.what << ": " << e.Describe();
        const std::vector<uint8_t> past = l.make(l.limit + 1);
        EXPECT_FALSE(ReadLevelFile(past.data(), past.size(), file, e)) << l.what;
        EXPECT_NE(e.Message.find("over the limit"), std::string::npos) << l.what << ": " << e.Describe();
        EXPECT_EQ(file.LevelCount(), 0);
    }
}

// A claimed count is refused where it stands: the reader has not yet looked
// at the bytes that would hold the items (there are none here).
TEST(TrackLimits, AHugeClaimIsRefusedAtTheClaimWithoutItsItems) {
    test::Bytes f;
    f.i32(1).text("", 12).i32(0).i32(0);
    test::Bytes r = test::RecordHead();
    r.i16(3).i32(1).counted("a.bmp").text("", 50);
    r.i32(100000000);  // blocks claimed, none present
    f.append(r);
    LevelFile file;
    LevelFileError e;
    ASSERT_FALSE(ReadLevelFile(f.b.data(), f.b.size(), file, e));
    EXPECT_EQ(e.Track, 1);
    EXPECT_EQ(e.Byte, static_cast<int64_t>(f.b.size()) - 4);
    EXPECT_NE(e.Message.find("over the limit"), std::string::npos) << e.Describe();
}

// The worst file the limits let through: the most tracks, each with the
// most empty texture names (two bytes on disk, a whole string in memory).
// What it holds in memory stays a small multiple of a sane track set.
TEST(TrackLimits, TheWorstFileWithinTheLimitsStaysSmallInMemory) {
    LevelRecord r = OneBlockTrack();
    r.TextureNames.assign(static_cast<size_t>(limits::kTextures) + 1, "");
    SetTextureCount(r, limits::kTextures);
    const std::vector<uint8_t> bytes = FileOf(std::vector<LevelRecord>(limits::kTracks, r));
    const size_t before = mallinfo2().uordblks;
    size_t held = 0;
    {
        LevelFile file;
        LevelFileError e;
        ASSERT_TRUE(ReadLevelFile(bytes.data(), bytes.size(), file, e)) << e.Describe();
        held = mallinfo2().uordblks - before;
    }
    EXPECT_LT(held, size_t{64} << 20) << "file of " << bytes.size() << " bytes";
}

TEST(TrackLimits, AFileOverTheSizeLimitIsRefusedFromItsSize) {
    const std::string dir = test::Scratch("size-limit");
    const std::string path = dir + "big.dat";
    // Sparse: a good file followed by nothing but its length.
    test::WriteBytes(path, test::FileOf({test::SimpleRecord()}).b);
    ASSERT_EQ(::truncate(path.c_str(), limits::kTrackFileBytes + 1), 0);
    LevelFile file;
    LevelFileError e;
    EXPECT_FALSE(ReadLevelFileAt(path, file, e));
    EXPECT_EQ(e.Byte, 0);
    EXPECT_NE(e.Message.find("over the limit"), std::string::npos) << e.Describe();

    // At the limit it is read (and only the trailing bytes are odd).
    ASSERT_EQ(::truncate(path.c_str(), limits::kTrackFileBytes), 0);
    EXPECT_TRUE(ReadLevelFileAt(path, file, e)) << e.Describe();

    LevelStructure game(path);
    ASSERT_EQ(::truncate(path.c_str(), limits::kTrackFileBytes + 1), 0);
    std::string error;
    EXPECT_FALSE(game.LoadLevels(error));
    EXPECT_NE(error.find(path), std::string::npos);
    std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace qb
