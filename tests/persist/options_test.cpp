#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "persist/optionsDat.h"

namespace qb {
namespace {

std::string ScratchFile(const std::string& name) {
    const auto dir = std::filesystem::temp_directory_path() /
                     ("quorbit-options-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return (dir / "options.dat").string();
}

TEST(OptionsDat, RoundTripKeepsOutOfRangeValues) {
    const std::string path = ScratchFile("roundtrip");
    optionsDat o(path);
    o.Options = {150, -2500, 2};
    ASSERT_TRUE(o.SaveOptions());
    EXPECT_EQ(std::filesystem::file_size(path), 12u);
    std::ifstream in(path, std::ios::binary);
    unsigned char b[12];
    in.read(reinterpret_cast<char*>(b), 12);
    EXPECT_EQ(b[0], 150);
    EXPECT_EQ(b[4], 0x3C);  // -2500 = FFFFF63C
    EXPECT_EQ(b[7], 0xFF);
    EXPECT_EQ(b[8], 2);

    optionsDat again(path);
    again.LoadOptions();
    EXPECT_EQ(again.Options.MusicVolume, 150);
    EXPECT_EQ(again.Options.SfxVolume, -2500);
    EXPECT_EQ(again.Options.VideoMode, 2);
}

TEST(OptionsDat, MissingFileIsCreatedEmptyAndReadsAsZeros) {
    const std::string path = ScratchFile("missing");
    optionsDat o(path);
    o.Options = {1, 2, 3};
    o.LoadOptions();
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(o.Options.MusicVolume, 0);
    EXPECT_EQ(o.Options.SfxVolume, 0);
    EXPECT_EQ(o.Options.VideoMode, 0);
}

TEST(OptionsDat, ShortFileReadsItsBytesAndLongerFileKeepsItsSurplus) {
    const std::string path = ScratchFile("short");
    { std::ofstream(path, std::ios::binary).write("\x32\x00\x00\x00\x10", 5); }
    optionsDat o(path);
    o.LoadOptions();
    EXPECT_EQ(o.Options.MusicVolume, 50);
    EXPECT_EQ(o.Options.SfxVolume, 0x10);
    EXPECT_EQ(o.Options.VideoMode, 0);

    { std::ofstream(path, std::ios::binary).write("0123456789abXYZ", 15); }
    o.Options = {0, 0, 1};
    ASSERT_TRUE(o.SaveOptions());
    std::ifstream in(path, std::ios::binary);
    std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    ASSERT_EQ(all.size(), 15u);
    EXPECT_EQ(all.substr(12), "XYZ");
    EXPECT_EQ(all[8], 1);
}

}  // namespace
}  // namespace qb
