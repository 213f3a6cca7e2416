// The game started on a damaged track file: one message naming the file,
// the track and the byte, the same text in Debug.txt, and the menus reached
// with no track playable.
#include <gtest/gtest.h>

#include "level/LevelStructure.h"
#include "persist/Stats.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/frmGame.h"
#include "tests/level/TrackBytes.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

void StartOn(const std::string& name, const std::vector<uint8_t>& levels, const std::string& expectInError) {
    const std::string dir = test::Scratch(name);
    test::WriteBytes(dir + "levels.dat", levels);
    HeadlessPlatform hp(QUORBIT_GAME_DIR, dir);
    frmGame game(hp.platform);
    hp.window.onProcess = [](WindowEvents& w) { w.onClose(); };
    EXPECT_EQ(game.Form_Load(), 0);
    EXPECT_EQ(game.levels->LevelCount(), 0);
    EXPECT_EQ(game.stats->LevelCount(), 0);

    std::vector<std::string> about;
    for (const auto& m : hp.window.messages)
        if (m.find("levels.dat") != std::string::npos) about.push_back(m);
    ASSERT_EQ(about.size(), 1u) << name;
    EXPECT_NE(about[0].find(dir + "levels.dat"), std::string::npos) << about[0];
    EXPECT_NE(about[0].find(expectInError), std::string::npos) << about[0];
    EXPECT_NE(test::ReadFile(dir + "Debug.txt").find(expectInError), std::string::npos);
    // The file is left as it was.
    EXPECT_EQ(test::ReadBytes(dir + "levels.dat"), levels);
}

TEST(BrokenTrackFile, StartUpReachesTheMenusWithOneMessage) {
    test::Bytes huge;
    huge.i32(0x7fffffff).text("", 40);
    StartOn("huge", huge.b, "byte 0: level count 2147483647");

    std::vector<uint8_t> cut = test::FileOf({test::SimpleRecord(), test::SimpleRecord()}).b;
    cut.resize(300);
    StartOn("cut", cut, "byte 300: track 2: the file ends inside the fastest times");

    StartOn("empty", {}, "the file is missing or empty");
}

}  // namespace
}  // namespace qb
