#include "persist/Stats.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <fstream>

namespace qb {
namespace {

std::string Scratch(const std::string& name) {
    const auto dir = std::filesystem::temp_directory_path() /
                     ("quorbit-persist-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir.string() + "/";
}

std::vector<uint8_t> Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

int32_t At(const std::vector<uint8_t>& b, size_t o) {
    return static_cast<int32_t>(b[o] | b[o + 1] << 8 | b[o + 2] << 16 |
                                static_cast<uint32_t>(b[o + 3]) << 24);
}

TEST(Stats, MissingFileIsCreatedEmptyAndReadsAsZeros) {
    const std::string path = Scratch("missing") + "stats.dat";
    Stats s(path);
    s.LoadStats(5);
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(s.LevelCount(), 5);
    EXPECT_EQ(s.TotalPlayTime, 0);
    EXPECT_EQ(s.LevelStats[5].Jumps, 0);
}

TEST(Stats, FileFor60TracksReadWith70GrowsTo1124Bytes) {
    const std::string path = Scratch("grow") + "stats.dat";
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
    EXPECT_EQ(s.LevelStats[60].PlayTime, 100);
    EXPECT_EQ(s.LevelStats[60].Jumps, 4);
    for (int n = 61; n <= 70; ++n) EXPECT_EQ(s.LevelStats[static_cast<size_t>(n)].PlayTime, 0);
    ASSERT_TRUE(s.SaveStats());
    EXPECT_EQ(std::filesystem::file_size(path), 1124u);
}

TEST(Stats, LongerFileKeepsItsSurplusAndAShortRecordReadsItsBytes) {
    const std::string path = Scratch("surplus") + "stats.dat";
    std::vector<uint8_t> bytes(4 + 16 * 3 + 5, 0xAB);
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), 57);
    Stats s(path);
    s.LoadStats(2);
    // 0xABABABAB is negative: a damaged counter reads as nothing, never as
    // "-1414812757 Times" on the track choice.
    EXPECT_EQ(s.LevelStats[2].Jumps, 0);
    EXPECT_EQ(s.TotalPlayTime, 0);
    s.LevelStats[1] = {1, 2, 3, 4};
    ASSERT_TRUE(s.SaveStats());
    const auto after = Read(path);
    ASSERT_EQ(after.size(), 57u);
    EXPECT_EQ(At(after, 4), 1);
    EXPECT_EQ(At(after, 16), 4);
    for (size_t i = 36; i < 57; ++i) EXPECT_EQ(after[i], 0xAB) << i;

    // A file cut inside a record: the bytes present count, the rest is 0.
    int32_t total;
    std::vector<LevelStat> levels;
    const uint8_t partial[] = {1, 0, 0, 0, 7, 0, 0, 0, 0xF9, 0xFF, 0xFF, 0xFF, 0x7B};
    Stats::Decode(partial, sizeof partial, 3, total, levels);
    EXPECT_EQ(total, 1);
    EXPECT_EQ(levels[1].PlayTime, 7);
    EXPECT_EQ(levels[1].BlownUp, 0);  // -7 on disk
    EXPECT_EQ(levels[1].FallenOff, 0x7B);
}

TEST(Stats, FoldingARunAddsCountersSaturatesTimeAndSaves) {
    const std::string path = Scratch("fold") + "stats.dat";
    Stats s(path);
    s.LoadStats(3);
    s.BlownUpCount = 1;
    s.FallenOffCount = 2;
    s.JumpCount = 5;
    ASSERT_TRUE(s.FoldPlay(2, 1500));
    EXPECT_EQ(s.LevelStats[2].PlayTime, 1500);
    EXPECT_EQ(s.LevelStats[2].BlownUp, 1);
    EXPECT_EQ(s.LevelStats[2].FallenOff, 2);
    EXPECT_EQ(s.LevelStats[2].Jumps, 5);
    EXPECT_EQ(s.TotalPlayTime, 1500);
    EXPECT_EQ(s.BlownUpCount + s.FallenOffCount + s.JumpCount, 0);
    // A second attempt books only its own time.
    ASSERT_TRUE(s.FoldPlay(2, 500));
    EXPECT_EQ(s.LevelStats[2].PlayTime, 2000);
    EXPECT_EQ(s.LevelStats[2].Jumps, 5);

    s.LevelStats[3].PlayTime = INT32_MAX - 10;
    s.TotalPlayTime = INT32_MAX - 10;
    ASSERT_TRUE(s.FoldPlay(3, 4000000000u));
    EXPECT_EQ(s.LevelStats[3].PlayTime, INT32_MAX);
    EXPECT_EQ(s.TotalPlayTime, INT32_MAX);

    const auto bytes = Read(path);
    ASSERT_EQ(bytes.size(), 4u + 3 * 16);
    EXPECT_EQ(At(bytes, 0), INT32_MAX);
    EXPECT_EQ(At(bytes, 4 + 16), 2000);
    EXPECT_EQ(At(bytes, 4 + 16 + 12), 5);

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

}  // namespace
}  // namespace qb
