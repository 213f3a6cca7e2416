// The player's files beside the game: options.dat and stats.dat (binary
// layouts other copies of the game read too) and settings.cfg (text).
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>

#include "persist/Settings.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

using test::FreshDir;
using test::ReadFile;
using test::WriteFile;

int32_t At(const std::string& b, size_t o) {
    const auto u = [&](size_t i) { return static_cast<uint32_t>(static_cast<uint8_t>(b[o + i])); };
    return static_cast<int32_t>(u(0) | u(1) << 8 | u(2) << 16 | u(3) << 24);
}

// The three options, and a track's four counters, in one value each.
std::tuple<int32_t, int32_t, int32_t> Values(const OptionsRecord& o) {
    return {o.MusicVolume, o.SfxVolume, o.VideoMode};
}
std::tuple<int32_t, int32_t, int32_t, int32_t> Values(const LevelStat& l) {
    return {l.PlayTime, l.BlownUp, l.FallenOff, l.Jumps};
}

TEST(SavedFiles, AMissingOptionsOrStatsFileIsCreatedEmptyAndReadsAsZeros) {
    const std::string dir = FreshDir("persist-missing");
    optionsDat o(dir + "options.dat");
    o.Options = {1, 2, 3};
    o.LoadOptions();
    EXPECT_EQ(Values(o.Options), std::tuple(0, 0, 0));
    Stats s(dir + "stats.dat");
    s.LoadStats(5);
    EXPECT_EQ(s.LevelCount(), 5);
    EXPECT_EQ(s.TotalPlayTime, 0);
    EXPECT_EQ(s.LevelStats[5].Jumps, 0);
    for (const char* f : {"options.dat", "stats.dat"}) {
        EXPECT_TRUE(std::filesystem::exists(dir + f)) << f;
        EXPECT_EQ(std::filesystem::file_size(dir + f), 0u) << f;
    }
}

TEST(OptionsDat, RoundTripKeepsOutOfRangeValues) {
    const std::string path = FreshDir("persist-roundtrip") + "options.dat";
    optionsDat o(path);
    o.Options = {150, -2500, 2};
    ASSERT_TRUE(o.SaveOptions());
    const std::string b = ReadFile(path);
    ASSERT_EQ(b.size(), 12u);
    EXPECT_EQ(std::tuple(At(b, 0), At(b, 4), At(b, 8)), std::tuple(150, -2500, 2));
    optionsDat again(path);
    again.LoadOptions();
    EXPECT_EQ(Values(again.Options), std::tuple(150, -2500, 2));
}

TEST(OptionsDat, ShortFileReadsItsBytesAndLongerFileKeepsItsSurplus) {
    const std::string path = FreshDir("persist-short") + "options.dat";
    WriteFile(path, std::string("\x32\x00\x00\x00\x10", 5));
    optionsDat o(path);
    o.LoadOptions();
    EXPECT_EQ(Values(o.Options), std::tuple(50, 0x10, 0));

    WriteFile(path, "0123456789abXYZ");
    o.Options = {0, 0, 1};
    ASSERT_TRUE(o.SaveOptions());
    const std::string all = ReadFile(path);
    ASSERT_EQ(all.size(), 15u);
    EXPECT_EQ(all.substr(12), "XYZ");
    EXPECT_EQ(all[8], 1);
}

TEST(Stats, FileFor60TracksReadWith70GrowsTo1124Bytes) {
    const std::string path = FreshDir("persist-grow") + "stats.dat";
    {
        Stats s(path);
        s.LoadStats(60);
        s.TotalPlayTime = 1234;
        s.LevelStats[60] = {100, 2, 3, 4};
        ASSERT_TRUE(s.SaveStats());
    }
    EXPECT_EQ(std::filesystem::file_size(path), 4u + 60 * 16);
    Stats s(path);
    s.LoadStats(70);
    EXPECT_EQ(s.TotalPlayTime, 1234);
    EXPECT_EQ(Values(s.LevelStats[60]), std::tuple(100, 2, 3, 4));
    for (int n = 61; n <= 70; ++n) EXPECT_EQ(s.LevelStats[static_cast<size_t>(n)].PlayTime, 0);
    ASSERT_TRUE(s.SaveStats());
    EXPECT_EQ(std::filesystem::file_size(path), 1124u);
}

TEST(Stats, LongerFileKeepsItsSurplusAndAShortRecordReadsItsBytes) {
    const std::string path = FreshDir("persist-surplus") + "stats.dat";
    WriteFile(path, std::string(4 + 16 * 3 + 5, '\xAB'));
    Stats s(path);
    s.LoadStats(2);
    // 0xABABABAB is negative: a damaged counter reads as nothing, never as
    // "-1414812757 Times" on the track choice.
    EXPECT_EQ(s.LevelStats[2].Jumps, 0);
    EXPECT_EQ(s.TotalPlayTime, 0);
    s.LevelStats[1] = {1, 2, 3, 4};
    ASSERT_TRUE(s.SaveStats());
    const std::string after = ReadFile(path);
    ASSERT_EQ(after.size(), 57u);
    EXPECT_EQ(At(after, 4), 1);
    EXPECT_EQ(At(after, 16), 4);
    EXPECT_EQ(after.substr(36), std::string(21, '\xAB'));

    // A file cut inside a record: the bytes present count, the rest is 0.
    int32_t total;
    std::vector<LevelStat> levels;
    const uint8_t partial[] = {1, 0, 0, 0, 7, 0, 0, 0, 0xF9, 0xFF, 0xFF, 0xFF, 0x7B};
    Stats::Decode(partial, sizeof partial, 3, total, levels);
    EXPECT_EQ(total, 1);
    EXPECT_EQ(Values(levels[1]), std::tuple(7, 0, 0x7B, 0));  // blown up -7 on disk
}

TEST(Stats, FoldingARunAddsCountersSaturatesTimeAndSaves) {
    const std::string path = FreshDir("persist-fold") + "stats.dat";
    Stats s(path);
    s.LoadStats(3);
    s.BlownUpCount = 1;
    s.FallenOffCount = 2;
    s.JumpCount = 5;
    ASSERT_TRUE(s.FoldPlay(2, 1500));
    EXPECT_EQ(Values(s.LevelStats[2]), std::tuple(1500, 1, 2, 5));
    EXPECT_EQ(s.TotalPlayTime, 1500);
    EXPECT_EQ(s.BlownUpCount + s.FallenOffCount + s.JumpCount, 0);
    // A second attempt books only its own time.
    ASSERT_TRUE(s.FoldPlay(2, 500));
    EXPECT_EQ(Values(s.LevelStats[2]), std::tuple(2000, 1, 2, 5));

    s.LevelStats[3].PlayTime = INT32_MAX - 10;
    s.TotalPlayTime = INT32_MAX - 10;
    ASSERT_TRUE(s.FoldPlay(3, 4000000000u));
    EXPECT_EQ(s.LevelStats[3].PlayTime, INT32_MAX);
    EXPECT_EQ(s.TotalPlayTime, INT32_MAX);

    const std::string bytes = ReadFile(path);
    ASSERT_EQ(bytes.size(), 4u + 3 * 16);
    EXPECT_EQ(std::tuple(At(bytes, 0), At(bytes, 4 + 16), At(bytes, 4 + 16 + 12)),
              std::tuple(INT32_MAX, 2000, 5));

    // A level outside the table still counts towards the total.
    s.TotalPlayTime = 0;
    ASSERT_TRUE(s.FoldPlay(0, 10));
    EXPECT_EQ(s.TotalPlayTime, 10);
}

TEST(Stats, FormatPlayTime) {
    EXPECT_EQ(FormatPlayTime(125000), "2:05");
    EXPECT_EQ(FormatPlayTime(0), "0:00");
    EXPECT_EQ(FormatPlayTime(9000), "0:09");
    EXPECT_EQ(FormatPlayTime(3599999), "59:59");
    EXPECT_EQ(FormatPlayTime(3600000), "60:00");
    EXPECT_EQ(FormatPlayTime(INT32_MAX), "35791:23");
}

TEST(Settings, MissingFileGivesDefaultsSilentlyAndIsNotCreatedUntilSaved) {
    const std::string dir = FreshDir("persist-settings-missing");
    std::vector<std::string> told;
    Settings s(dir + "settings.cfg", [&](const std::string& w) { told.push_back(w); });
    s.Load();
    EXPECT_TRUE(s.GetBool("race.ghost", true));
    EXPECT_EQ(s.GetInt("keys.count", 7), 7);
    EXPECT_EQ(s.GetString("name", "Driver"), "Driver");
    EXPECT_FALSE(s.Has("race.ghost"));
    EXPECT_TRUE(told.empty());
    EXPECT_FALSE(std::filesystem::exists(dir + "settings.cfg"));
}

TEST(Settings, RoundTripKeepsTypesCommentsUnknownKeysAndOptionsDatUntouched) {
    const std::string dir = FreshDir("persist-settings-roundtrip");
    const std::string path = dir + "settings.cfg";
    // options.dat beside it must come through byte for byte.
    optionsDat options(dir + "options.dat");
    options.Options = {40, -300, 2};
    ASSERT_TRUE(options.SaveOptions());
    const std::string optionsBefore = ReadFile(dir + "options.dat");

    WriteFile(path,
              "\xEF\xBB\xBF# my notes\r\n"
              "future.thing = 3 # not a comment\r\n"
              "\n"
              "  # indented comment\n"
              "name = Zoë\n");
    Settings s(path);
    s.Load();
    EXPECT_EQ(s.GetString("name", ""), "Zoë");
    EXPECT_EQ(s.GetString("future.thing", ""), "3 # not a comment");
    s.SetBool("race.ghost", false);
    s.SetInt("keys.jump", -44);
    s.SetString("name", "  Ann\nB  ");
    ASSERT_TRUE(s.Save());
    EXPECT_EQ(ReadFile(path),
              "# my notes\n"
              "future.thing = 3 # not a comment\n"
              "\n"
              "  # indented comment\n"
              "name = Ann B\n"
              "race.ghost = false\n"
              "keys.jump = -44\n");

    Settings again(path);
    again.Load();
    EXPECT_FALSE(again.GetBool("race.ghost", true));
    EXPECT_EQ(again.GetInt("keys.jump", 0), -44);
    EXPECT_EQ(again.GetString("name", ""), "Ann B");
    EXPECT_TRUE(again.problems().empty());
    again.Erase("keys.jump");
    EXPECT_EQ(again.GetInt("keys.jump", 5), 5);

    EXPECT_EQ(ReadFile(dir + "options.dat"), optionsBefore);
    EXPECT_EQ(std::filesystem::file_size(dir + "options.dat"), 12u);
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp"));
}

TEST(Settings, DamagedLinesAndValuesFallBackPerKeyAndAreToldOnce) {
    const std::string dir = FreshDir("persist-settings-damaged");
    const std::string path = dir + "settings.cfg";
    WriteFile(path,
              "race.ghost = maybe\n"
              "just words\n"
              "bad key! = 1\n"
              "= 4\n"
              "keys.jump = 12abc\n"
              "keys.left = 99999999999\n"
              "keys.right = 300\n"
              "clock = \xFF\xFE\n"
              "smooth = yes\n"
              "smooth = off\n"
              "speed = +7\n");
    std::vector<std::string> told;
    Settings s(path, [&](const std::string& w) { told.push_back(w); });
    s.Load();
    // One report per damaged line, one for the repeated key.
    EXPECT_EQ(told.size(), 5u);
    EXPECT_TRUE(s.GetBool("race.ghost", true));
    EXPECT_FALSE(s.GetBool("race.ghost", false));  // asked again: no second report
    EXPECT_EQ(std::tuple(s.GetInt("keys.jump", 44), s.GetInt("keys.left", 1),
                         s.GetInt("keys.right", 2, 0, 255), s.GetString("clock", "on"), s.GetInt("speed", 0)),
              std::tuple(44, 1, 2, "on", 7));
    EXPECT_FALSE(s.GetBool("smooth", true));  // the later line counts
    EXPECT_EQ(told.size(), 9u);
    for (const std::string& w : told) EXPECT_NE(w.find("settings.cfg"), std::string::npos) << w;
    EXPECT_EQ(s.problems(), told);

    // Setting a damaged key repairs it; damaged lines come back as comments
    // and the file is text again.
    s.SetBool("race.ghost", true);
    ASSERT_TRUE(s.Save());
    told.clear();
    Settings again(path, [&](const std::string& w) { told.push_back(w); });
    again.Load();
    EXPECT_TRUE(again.GetBool("race.ghost", false));
    EXPECT_FALSE(again.GetBool("smooth", true));
    EXPECT_EQ(again.GetString("clock", "on"), "on");
    // Damaged lines were turned into comments: nothing left to tell until a
    // damaged value is asked for.
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(again.GetInt("keys.jump", 44), 44);
    EXPECT_EQ(told.size(), 1u);
    const std::string text = ReadFile(path);
    EXPECT_NE(text.find("# just words\n"), std::string::npos);
    EXPECT_NE(text.find("# smooth = yes\n"), std::string::npos);
    EXPECT_NE(text.find("# clock = ??\n"), std::string::npos);
}

TEST(Settings, UnwritableFolderFailsTheSaveWithoutThrowing) {
    Settings s("/nonexistent-quorbit-dir/settings.cfg");
    s.Load();
    s.SetBool("x", true);
    EXPECT_FALSE(s.Save());
    EXPECT_TRUE(s.GetBool("x", false));
}

}  // namespace
}  // namespace qb
