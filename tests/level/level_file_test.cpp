#include <gtest/gtest.h>

#include "level/LevelFileReader.h"
#include "level/LevelFileWriter.h"
#include "tests/level/TrackBytes.h"

namespace qb {
namespace {

using test::Bytes;

bool Read(const Bytes& f, LevelFile& out, LevelFileError& e) {
    return ReadLevelFile(f.b.data(), f.b.size(), out, e);
}

// A file that must read, as read.
LevelFile ReadGood(const Bytes& f) {
    LevelFile file;
    LevelFileError e;
    EXPECT_TRUE(Read(f, file, e)) << e.Describe();
    return file;
}

TEST(LevelFile, OneTrackFileIs230BytesAndReadsEveryField) {
    const Bytes f = test::FileOf({test::SimpleRecord(200)});
    ASSERT_EQ(f.b.size(), 230u);
    const LevelFile file = ReadGood(f);
    ASSERT_EQ(file.LevelCount(), 1);
    const LevelRecord& r = file.Levels[0];
    EXPECT_EQ(std::tuple(file.Index[0].Offset, r.TextureNameCount(), r.TextureNames[1], r.BackgroundName(),
                         r.Background.size()),
              std::tuple(0, 1, "a.bmp", "sky.jpg", 50u));
    ASSERT_EQ(r.BlockUpper, 0);
    EXPECT_EQ(test::Fields(r.Blocks[0]), test::Fields(BlockRecord{-2, 0, -5, 4, 1, 60, 1, 1, 1, 1, 0, 0, 1}));
    EXPECT_EQ(std::tuple(r.PlatformUpper, r.RampUpper, r.StarUpper), std::tuple(-1, -1, -1));
    EXPECT_TRUE(r.Platforms.empty() && r.Ramps.empty() && r.Stars.empty());
    EXPECT_EQ(std::tuple(r.Settings.Gravity, r.Settings.FileGravity, r.Times.Names[0]),
              std::tuple(0.5f, 200.0f, std::string(15, ' ')));
    EXPECT_TRUE(file.Trailing.empty());
    // Written back, the same 230 bytes.
    EXPECT_EQ(EncodeLevelFile(file), f.b);
}

TEST(LevelFile, ConsumesOneLeadByteBeforeEachRecordAndKeepsItsValue) {
    Bytes r1 = test::SimpleRecord(), r2 = test::SimpleRecord(400, -1);
    r1.b[0] = 0x11;
    r2.b[0] = 0x22;
    const Bytes f = test::FileOf({r1, r2});
    const LevelFile file = ReadGood(f);
    ASSERT_EQ(file.LevelCount(), 2);
    EXPECT_EQ(std::tuple(file.Index[1].Offset, int{file.Levels[0].LeadByte}, int{file.Levels[1].LeadByte},
                         file.Levels[1].Settings.Gravity, file.AllStars[1]),
              std::tuple(206, 0x11, 0x22, 1.0f, -1));
    EXPECT_EQ(EncodeLevelFile(file), f.b);
}

TEST(LevelFile, TextureCountInAnyNumericTypeRoundsHalfToEven) {
    struct Case {
        int16_t type;
        Bytes value;
        int expected;
    };
    std::vector<Case> cases;
    cases.push_back({3, Bytes().i32(2), 2});
    cases.push_back({4, Bytes().f32(2.5f), 2});  // half to even
    cases.push_back({5, Bytes().f64(3.5), 4});
    cases.push_back({17, Bytes().u8(3), 3});
    for (const auto& c : cases) {
        Bytes r = test::RecordHead();
        r.i16(c.type).append(c.value);
        for (int i = 0; i < c.expected; ++i) r.counted("t" + std::to_string(i) + ".bmp");
        r.text("", 50).i32(0);
        r.f32(0).f32(0).f32(0).f32(1).f32(1).f32(1).i16(1).i16(1).i16(1).i16(
            static_cast<int16_t>(c.expected));
        r.u8(0).u8(0).u8(0).i32(-1).i32(-1).i32(-1).f32(10).counted("x").i32(1).i32(2).i32(3).i32(4);
        const Bytes f = test::FileOf({r});
        LevelFile file;
        LevelFileError e;
        ASSERT_TRUE(Read(f, file, e)) << "type " << c.type << ": " << e.Describe();
        EXPECT_EQ(file.Levels[0].TextureNameCount(), c.expected) << "type " << c.type;
        EXPECT_EQ(file.Levels[0].TextureCount.VarType, c.type);
        EXPECT_EQ(file.Levels[0].Settings.SettingsText, "x");
        EXPECT_EQ(EncodeLevelFile(file), f.b) << "type " << c.type;
    }
}

TEST(LevelFile, EmptyListsTakeNoBytesAndFilledListsAreRead) {
    Bytes r = test::RecordHead();
    r.i16(2).i16(2).counted("a.bmp").counted("b.bmp").text("", 50);
    r.i32(1);  // two blocks
    for (int k = 0; k < 2; ++k)
        r.f32(k).f32(0).f32(0).f32(1).f32(1).f32(1).i16(1).i16(2).i16(1).i16(2).u8(3).u8(4).u8(
            static_cast<uint8_t>(5 + k));
    r.i32(0);  // one platform
    r.f32(1).f32(2).f32(3).f32(4).f32(1).f32(4).i16(2).i16(2).i16(2).i16(2).u8(0).u8(0).u8(0);
    r.u8(5).u8(3).u8(2).u8(7);
    r.i32(-1);  // no ramps
    r.i32(1);   // two stars
    r.f32(0).f32(2).f32(10).f32(0.5f).f32(2).f32(20);
    r.f32(8).counted("").i32(0).i32(0).i32(0).i32(0);
    const LevelFile file = ReadGood(test::FileOf({r}));
    ASSERT_EQ(file.LevelCount(), 1);
    const LevelRecord& rec = file.Levels[0];
    ASSERT_EQ(std::tuple(rec.BlockUpper, rec.PlatformUpper, rec.RampUpper, rec.StarUpper),
              std::tuple(1, 0, -1, 1));
    EXPECT_EQ(test::Fields(rec.Blocks[1]), test::Fields(BlockRecord{1, 0, 0, 1, 1, 1, 1, 2, 1, 2, 3, 4, 6}));
    EXPECT_EQ(test::Fields(rec.Platforms[0]),
              test::Fields(MovingPlatformRecord{1, 2, 3, 4, 1, 4, 2, 2, 2, 2, 0, 0, 0, 5, 3, 2, 7}));
    EXPECT_EQ(test::Fields(rec.Stars[1]), test::Fields(StarRecord{0.5f, 2, 20}));
    EXPECT_EQ(rec.Settings.Gravity, GravityFromFile(8));
}

// Each broken file must give an error with the right track and byte, and
// nothing read.
struct Broken {
    const char* what;
    Bytes file;
    int32_t track;
    int64_t byte;
};

std::vector<Broken> BrokenFiles() {
    std::vector<Broken> v;
    const Bytes good = test::FileOf({test::SimpleRecord()});
    v.push_back({"empty", Bytes(), 0, 0});
    v.push_back({"level count 0", Bytes().i32(0).text("", 12), 0, 0});
    v.push_back({"huge level count", Bytes().i32(0x7fffffff).text("", 300), 0, 0});
    {
        Bytes f = good;
        f.b.resize(150);
        v.push_back({"truncated", f, 1, 107});  // in the background name
    }
    {
        Bytes f = good;
        f.b[24 + 72] = 0;  // texture count 0
        v.push_back({"texture count 0", f, 1, 96});
    }
    {
        Bytes f = good;
        f.b[24 + 72] = 8;  // VARTYPE 8, a string
        v.push_back({"text type code", f, 1, 96});
    }
    {
        Bytes f = good;
        f.b[24 + 74] = 0x70;  // texture count 28784
        f.b[24 + 75] = 0x70;
        v.push_back({"texture count past the end", f, 1, 96});
    }
    {
        Bytes f = good;
        for (int i = 0; i < 4; ++i) f.b[24 + 133 + i] = 0xFF;  // block upper -1
        v.push_back({"negative block upper index", f, 1, 157});
    }
    {
        Bytes f = good;
        f.b[24 + 133] = 0x40;  // 65 blocks
        v.push_back({"block count past the end", f, 1, 157});
    }
    {
        Bytes f = good;
        f.b[24 + 137 + 24] = 2;  // face A texture 2 of 1
        v.push_back({"texture index 2", f, 1, 185});
    }
    {
        Bytes f = good;
        f.b[24 + 137 + 30] = 0;  // face D texture 0
        v.push_back({"texture index 0", f, 1, 191});
    }
    {
        Bytes f = test::FileOf({test::SimpleRecord(), test::SimpleRecord()});
        f.b[24] = 5;  // second index entry says 5
        v.push_back({"offset mismatch", f, 2, 24});
    }
    {
        Bytes f = good;
        f.b[24 + 172] = 0xFE;  // platform upper -2
        for (int i = 1; i < 4; ++i) f.b[24 + 172 + i] = 0xFF;
        v.push_back({"platform upper -2", f, 1, 196});
    }
    {
        Bytes f = good;
        f.b[24 + 188] = 0x00;  // settings text length 0x8000 (negative)
        f.b[24 + 189] = 0x80;
        f.b.resize(24 + 190);
        v.push_back({"negative text length", f, 1, 212});
    }
    return v;
}

TEST(LevelFile, EveryBrokenFileIsReportedWithTrackAndByte) {
    for (const Broken& c : BrokenFiles()) {
        LevelFile file;
        LevelFileError e;
        EXPECT_FALSE(Read(c.file, file, e)) << c.what;
        EXPECT_EQ(file.LevelCount(), 0) << c.what;
        EXPECT_EQ(e.Track, c.track) << c.what << ": " << e.Describe();
        EXPECT_EQ(e.Byte, c.byte) << c.what << ": " << e.Describe();
        EXPECT_FALSE(e.Message.empty());
    }
}

TEST(LevelFile, EveryTruncationOfAValidFileFails) {
    const Bytes f = test::FileOf({test::SimpleRecord(), test::SimpleRecord()});
    for (size_t n = 0; n < f.b.size(); ++n) {
        LevelFile file;
        LevelFileError e;
        ASSERT_FALSE(ReadLevelFile(f.b.data(), n, file, e)) << n;
        EXPECT_LE(e.Byte, static_cast<int64_t>(n));
    }
}

TEST(LevelFile, BytesAfterTheLastRecordAreKeptButNotRead) {
    Bytes f = test::FileOf({test::SimpleRecord()});
    f.u8(1).u8(2).u8(3);
    const LevelFile file = ReadGood(f);
    EXPECT_EQ(file.Trailing, (std::vector<uint8_t>{1, 2, 3}));
    EXPECT_EQ(EncodeLevelFile(file), f.b);
}

}  // namespace
}  // namespace qb
