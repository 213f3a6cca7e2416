// The track checker over every shipped track and every example user track:
// each must be fair to a person at the keys, not only winnable.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "shell/KeyScript.h"
#include "shell/TrackLint.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

const std::string GameDir = QUORBIT_GAME_DIR;
const std::string Solutions = std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/";

void LintZone(int zone) {
    for (int n = (zone - 1) * 10 + 1; n <= zone * 10; ++n) {
        char name[32];
        std::snprintf(name, sizeof name, "%02d.keys", n);
        KeyScript script;
        std::string error;
        ASSERT_TRUE(LoadKeyScript(Solutions + name, script, error)) << error;
        const LintReport r = LintTrack(GameDir, n, script, LintOptions{});
        EXPECT_TRUE(r.Passed()) << r.Describe("track " + std::to_string(n));
    }
}

class ZoneLint : public ::testing::TestWithParam<int> {};

TEST_P(ZoneLint, EveryTrackIsFairToDrive) {
    LintZone(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Zones, ZoneLint, ::testing::Values(1, 2, 3, 4, 5, 6));

TEST(UserTrackLint, EveryExampleIsFairToDrive) {
    int count = 0;
    for (const auto& e : fs::directory_iterator(std::string(QUORBIT_SOURCE_DIR) + "/content/usertracks")) {
        const std::string stem = e.path().stem().string();
        const std::string keys = Solutions + "user_" + stem + ".keys";
        if (e.path().extension() != ".trk" || !fs::exists(keys)) continue;
        ++count;
        // A game folder whose track file is the example's.
        std::string dir = (fs::temp_directory_path() / "quorbit-lint-user-XXXXXX").string();
        ASSERT_NE(::mkdtemp(dir.data()), nullptr);
        for (const auto& g : fs::directory_iterator(GameDir))
            if (g.path().filename() != "levels.dat")
                fs::create_symlink(g.path(), fs::path(dir) / g.path().filename());
        fs::copy_file(GameDir + "/usertracks/" + stem + ".dat", fs::path(dir) / "levels.dat");
        KeyScript script;
        std::string error;
        ASSERT_TRUE(LoadKeyScript(keys, script, error)) << error;
        const LintReport r = LintTrack(dir, 1, script, LintOptions{});
        fs::remove_all(dir);
        EXPECT_TRUE(r.Passed()) << r.Describe(stem);
    }
    EXPECT_GE(count, 3);
}

}  // namespace
}  // namespace qb
