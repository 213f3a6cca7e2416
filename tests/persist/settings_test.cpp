#include "persist/Settings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "persist/optionsDat.h"

namespace qb {
namespace {

std::string ScratchDir(const std::string& name) {
    const auto dir = std::filesystem::temp_directory_path() /
                     ("quorbit-settings-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir.string() + "/";
}

void WriteText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::string ReadText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(Settings, MissingFileGivesDefaultsSilentlyAndIsNotCreatedUntilSaved) {
    const std::string dir = ScratchDir("missing");
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
    const std::string dir = ScratchDir("roundtrip");
    const std::string path = dir + "settings.cfg";
    // options.dat beside it must come through byte for byte.
    optionsDat options(dir + "options.dat");
    options.Options = {40, -300, 2};
    ASSERT_TRUE(options.SaveOptions());
    const std::string optionsBefore = ReadText(dir + "options.dat");

    WriteText(path,
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
    EXPECT_EQ(ReadText(path),
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

    EXPECT_EQ(ReadText(dir + "options.dat"), optionsBefore);
    EXPECT_EQ(std::filesystem::file_size(dir + "options.dat"), 12u);
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp"));
}

TEST(Settings, DamagedLinesAndValuesFallBackPerKeyAndAreToldOnce) {
    const std::string dir = ScratchDir("damaged");
    const std::string path = dir + "settings.cfg";
    WriteText(path,
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
    EXPECT_EQ(s.GetInt("keys.jump", 44), 44);
    EXPECT_EQ(s.GetInt("keys.left", 1), 1);
    EXPECT_EQ(s.GetInt("keys.right", 2, 0, 255), 2);
    EXPECT_EQ(s.GetString("clock", "on"), "on");
    EXPECT_FALSE(s.GetBool("smooth", true));  // the later line counts
    EXPECT_EQ(s.GetInt("speed", 0), 7);
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
    const std::string text = ReadText(path);
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
