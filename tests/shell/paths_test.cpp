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
    if (::geteuid() == 0) GTEST_SKIP() << "root can write anywhere";
    const std::string dir = test::ScratchDir("paths-ro");
    const std::string home = test::ScratchDir("paths-xdg");
    { std::ofstream(dir + "levels.dat") << "tracks"; }
    ::chmod(dir.c_str(), 0555);
    ::setenv("XDG_DATA_HOME", home.c_str(), 1);
    const GamePaths p = ResolveGamePaths(dir);
    ::chmod(dir.c_str(), 0755);
    EXPECT_EQ(p.writeDir, home + "quorbit/");
    std::ifstream copy(p.levelsFile());
    std::string s;
    copy >> s;
    EXPECT_EQ(s, "tracks");
}

}  // namespace
}  // namespace qb
