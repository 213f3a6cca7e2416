#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/Platform.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

TEST(GamePaths, WritableGameFolderKeepsEverythingTogether) {
    const std::string dir = test::ScratchDir("paths-rw");
    const GamePaths p = ResolveGamePaths(dir);
    EXPECT_EQ(p.gameDir, dir);
    EXPECT_EQ(p.writeDir, dir);
    EXPECT_EQ(p.levelsFile(), dir + "levels.dat");
}

TEST(GamePaths, ReadOnlyInstallWritesUnderXdgDataHomeWithACopyOfTheTracks) {
    const std::string dir = test::ScratchDir("paths-ro");
    const std::string home = test::ScratchDir("paths-xdg");
    { std::ofstream(dir + "levels.dat") << "tracks"; }
    std::filesystem::create_directories(dir + "usertracks");
    { std::ofstream(dir + "usertracks/mine.dat") << "mine"; }
    ::setenv("XDG_DATA_HOME", home.c_str(), 1);
    const GamePaths p = ResolveGamePaths(dir, false);
    EXPECT_EQ(p.gameDir, dir);
    EXPECT_EQ(p.writeDir, home + "quorbit/");
    auto firstLine = [](const std::string& path) {
        std::ifstream in(path);
        std::string s;
        in >> s;
        return s;
    };
    EXPECT_EQ(firstLine(p.levelsFile()), "tracks");
    EXPECT_EQ(firstLine(p.writeDir + "usertracks/mine.dat"), "mine");
    // A later start keeps the copy that holds the player's times.
    { std::ofstream(p.levelsFile()) << "mytimes"; }
    ResolveGamePaths(dir, false);
    EXPECT_EQ(firstLine(p.levelsFile()), "mytimes");
    // Without XDG_DATA_HOME the files go to ~/.local/share/quorbit.
    ::unsetenv("XDG_DATA_HOME");
    const std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("HOME", home.c_str(), 1);
    EXPECT_EQ(ResolveGamePaths(dir, false).writeDir, home + ".local/share/quorbit/");
    ::setenv("HOME", savedHome.c_str(), 1);
}

}  // namespace
}  // namespace qb
