#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"
#include "tests/level/TrackBytes.h"

namespace qb {
namespace {

float Bits(uint32_t b) {
    float f;
    std::memcpy(&f, &b, 4);
    return f;
}

TaggedNumber Tagged(uint16_t type, std::vector<uint8_t> raw) {
    TaggedNumber t;
    t.VarType = type;
    t.Raw = raw;
    t.Value = TaggedNumberValue(type, t.Raw.data());
    return t;
}

// A file using every field, with values a hand-written source would never
// hold: the text form must carry them all.
LevelFile EveryKindOfObject() {
    LevelFile f;
    f.ZoneComplete = {-1, 0, 5, 0, 0, -1};
    f.Trailing = {0xDE, 0xAD};
    for (int n = 0; n < 3; ++n) {
        LevelRecord r;
        r.LeadByte = static_cast<uint8_t>(n * 7);
        r.Times.Names = {"ANNA           ", "A \"Q\" \\ \xE9   ",
                         std::string("Z\0Z", 3) + std::string(12, ' ')};
        r.Times.Seconds = {12, 13, 0};
        r.Times.Hundredths = {4, 96, 8};
        r.TextureNames = {"", "road.bmp", "Road.bmp", "finish.bmp", "x y.bmp", ""};
        r.TextureCount = n == 0   ? Tagged(4, {0, 0, 0xA0, 0x40})              // float 5
                         : n == 1 ? Tagged(6, {0x50, 0xC3, 0, 0, 0, 0, 0, 0})  // currency 5.0000
                                  : Tagged(2, {5, 0});
        r.Background = "bk001.jpg" + std::string(41, ' ');
        BlockRecord b{-2, 0, -5, 4, 1, 65, 1, 2, 3, 4, 0, 3, 0};
        r.Blocks.push_back(b);
        for (uint8_t a = 1; a <= 7; ++a) {
            b.Z += 10;
            b.ActionCode = a == 7 ? 200 : a;
            b.X = a == 3 ? -0.0f : a == 4 ? Bits(0x7fc00001) : a == 5 ? Bits(1) : 0.1f;
            r.Blocks.push_back(b);
        }
        r.Platforms.push_back(MovingPlatformRecord{1, 2, 3, 4, 1, 4, 5, 5, 5, 5, 1, 1, 0, 5, 3, 2, 1});
        r.Platforms.push_back(MovingPlatformRecord{1, 2, 3, 4, 1, 4, 5, 5, 5, 5, 1, 1, 1, 0, 9, 255, 7});
        r.Platforms.push_back(MovingPlatformRecord{1, 2, 3, 4, 1, 4, 1, 2, 3, 4, 1, 1, 2, 5, 2, 2, 0});
        r.Ramps.push_back(RampRecord{0, 1, 20, 4, 2, 6, 1, 2, 3});
        r.Ramps.push_back(RampRecord{2.5f, 1, 20, 4, 2, 6, 3, 3, 0});
        if (n != 1) {
            r.Stars.push_back(StarRecord{0, 2, 10});
            r.Stars.push_back(StarRecord{3.5f, 1e-7f, 3e30f});
        }
        r.Settings.FileGravity = n == 2 ? Bits(0xff800000) : 10;
        r.Settings.SettingsText = n == 0 ? "" : "custom \"settings\"";
        r.Settings.Values = {0, n == 1 ? 0xFFFFFFFFu : 0, 3, 0x3F800000};
        f.Levels.push_back(r);
        f.AllStars.push_back(static_cast<int16_t>(n == 0 ? -1 : n == 1 ? 0 : 17));
        f.Index.push_back(LevelIndexEntry{0, n == 2 ? 0xCAFEBABEu : 0u});
    }
    return f;
}

TEST(TrackSource, PrintThenParseGivesTheSameBytes) {
    const LevelFile file = EveryKindOfObject();
    const std::vector<uint8_t> bytes = EncodeLevelFile(file);
    LevelFile read;
    LevelFileError e;
    ASSERT_TRUE(ReadLevelFile(bytes.data(), bytes.size(), read, e)) << e.Describe();

    const std::string text = PrintTrackSource(read, 0, read.Levels.size(), true);
    TrackSource src;
    std::vector<SourceError> errors;
    ASSERT_TRUE(ParseTrackSource(text, "dump.trk", src, errors)) << errors.front().Describe() << "\n" << text;
    EXPECT_EQ(EncodeLevelFile(JoinTrackSources({src})), bytes) << text;

    // Split in two files the same way, header lines in the first.
    TrackSource a, b;
    ASSERT_TRUE(ParseTrackSource(PrintTrackSource(read, 0, 2, true), "a.trk", a, errors));
    ASSERT_TRUE(ParseTrackSource(PrintTrackSource(read, 2, 1, false), "b.trk", b, errors));
    EXPECT_EQ(EncodeLevelFile(JoinTrackSources({a, b})), bytes);
}

TEST(TrackSource, HandWrittenTrackUsesDefaultsAndNames) {
    const char* text = R"(# a comment
track 1  My first track
  gravity 200
  background sky.jpg     # bare word
  texture wall "wall.bmp"
  texture "road.bmp"
  time 2 "BOB" 20 4
  block -2 0 0  4 1 60  tex wall wall wall 2  scale 2 1  finish
  block 0 0 60  1 1 1   ice
  platform 0 0 70 4 1 4  tex 2  dir left  speed 5  dist 3  loop
  ramp 0 1 20  4 2 6  rot 1  tex 2 wall
  star 0 2 10
)";
    TrackSource src;
    std::vector<SourceError> errors;
    ASSERT_TRUE(ParseTrackSource(text, "t.trk", src, errors)) << errors.front().Describe();
    ASSERT_EQ(src.Tracks.LevelCount(), 1);
    const LevelRecord& r = src.Tracks.Levels[0];
    EXPECT_EQ(
        std::tuple(r.Settings.Gravity, r.BackgroundName(), r.TextureNameCount(), r.TextureCount.VarType),
        std::tuple(0.5f, "sky.jpg", 2, 2));
    EXPECT_EQ(r.Times.Names[1], "BOB            ");
    EXPECT_EQ(r.Times.Seconds, (std::array<int32_t, 3>{0, 20, 0}));
    // Faces wall wall wall road, top scaled 2, finish; ice with the first
    // texture on every face when none is named, textures repeating per unit.
    ASSERT_EQ(r.BlockUpper, 1);
    EXPECT_EQ(test::Fields(r.Blocks[0]), test::Fields(BlockRecord{-2, 0, 0, 4, 1, 60, 1, 1, 1, 2, 2, 1, 1}));
    EXPECT_EQ(test::Fields(r.Blocks[1]), test::Fields(BlockRecord{0, 0, 60, 1, 1, 1, 1, 1, 1, 1, 0, 0, 3}));
    ASSERT_EQ(std::tuple(r.PlatformUpper, r.RampUpper, r.StarUpper), std::tuple(0, 0, 0));
    EXPECT_EQ(test::Fields(r.Platforms[0]),
              test::Fields(MovingPlatformRecord{0, 0, 70, 4, 1, 4, 2, 2, 2, 2, 0, 0, 0, 5, 2, 3, 1}));
    EXPECT_EQ(test::Fields(r.Ramps[0]), test::Fields(RampRecord{0, 1, 20, 4, 2, 6, 2, 1, 1}));
    EXPECT_EQ(test::Fields(r.Stars[0]), test::Fields(StarRecord{0, 2, 10}));
    EXPECT_FALSE(src.HasZones);
}

TEST(TrackSource, EachMistakeIsReportedWithItsLineAndTheRestStillChecked) {
    const std::string text = std::string(
                                 "block 0 0 0 1 1 1\n"            // 1: outside a track
                                 "track\n"                        // 2: no texture, no block (reported here)
                                 "  gravity heavy\n"              // 3
                                 "track\n"                        // 4
                                 "  texture a \"a.bmp\"\n"        // 5
                                 "  texture a \"b.bmp\"\n"        // 6: used twice
                                 "  texture finish \"f.bmp\"\n"   // 7: reserved word
                                 "  block 0 0 0 1 1 1 tex 3\n"    // 8: texture out of range
                                 "  block 0 0 0 1 1 1 tex a a\n"  // 9: two of four faces
                                 "  block 0 0 0 1 1\n"            // 10: a size missing
                                 "  block 0 0 0 1 1 1 wobbly\n"   // 11: unknown option
                                 "  background \"") +
                             std::string(51, 'x') +
                             "\"\n"                                // 12: too long
                             "  time 4 \"X\" 1 1\n"                // 13: place 4
                             "  star 0 0 0 0\n"                    // 14: one number too many
                             "  texturecount string 3\n"           // 15
                             "  name \"unterminated\n"             // 16
                             "  block 0 0 0 1 1 1 scale 256 0\n";  // 17
    TrackSource src;
    std::vector<SourceError> errors;
    EXPECT_FALSE(ParseTrackSource(text, "bad.trk", src, errors));
    std::vector<int> lines;
    for (const auto& e : errors) {
        lines.push_back(e.Line);
        EXPECT_EQ(e.Describe().rfind("bad.trk:" + std::to_string(e.Line) + ": ", 0), 0u);
    }
    EXPECT_EQ(lines, (std::vector<int>{1, 3, 2, 2, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 4}));
    EXPECT_EQ(src.Tracks.LevelCount(), 0);
}

TEST(TrackSource, TextureCountMustMatchTheList) {
    TrackSource src;
    std::vector<SourceError> errors;
    EXPECT_TRUE(ParseTrackSource("track\ntexture a.bmp\ntexturecount double 1.4\nblock 0 0 0 1 1 1\n",
                                 "ok.trk", src, errors));
    EXPECT_EQ(src.Tracks.Levels[0].TextureCount.VarType, 5);
    EXPECT_FALSE(ParseTrackSource("track\ntexture a.bmp\ntexturecount byte 2\nblock 0 0 0 1 1 1\n", "no.trk",
                                  src, errors));
    EXPECT_EQ(errors.back().Line, 1);
}

}  // namespace
}  // namespace qb
