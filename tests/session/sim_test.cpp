// The simulator's command line and key scripts, and the committed test
// course driven to its finish by its committed script.
#include <fstream>
#include <sstream>

#include "shell/KeyScript.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

struct SimResult {
    int code = 0;
    std::string out, err;
    std::vector<std::string> lines() const {
        std::vector<std::string> v;
        std::istringstream in(out);
        for (std::string l; std::getline(in, l);) v.push_back(l);
        return v;
    }
};

SimResult Sim(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    SimResult r;
    r.code = RunSimulator(args, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

std::string WriteTemp(const std::string& name, const std::string& text) {
    const std::string path = std::filesystem::temp_directory_path().string() + "/quorbit-" + name + "-" +
                             std::to_string(::getpid());
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

TEST(SimCourse, TheCommittedScriptFinishesWithAKnownTimeAndEveryStar) {
    const std::string dir = test::MakeGameDir(
        "course", test::ReadFile(std::string(QUORBIT_SOURCE_DIR) + "/content/test/sim_course.trk"));
    const std::string keys = std::string(QUORBIT_SOURCE_DIR) + "/content/test/sim_course.keys";
    const SimResult r = Sim({"--game-dir", dir, "--track", "1", "--keys", keys});
    ASSERT_EQ(r.code, 0) << r.err;
    const std::vector<std::string> lines = r.lines();
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines.front(), SimCsvHeader);
    EXPECT_EQ(lines.back(), "result: finished 6:36 stars 3/3");
    EXPECT_EQ(lines.size(), 162u) << "header, 160 frames, result";
    EXPECT_EQ(lines[1], "1,0.000000,2.975000,1.000000,0.000000,-0.025000,0.000000,0,0,0,0,0,1,2,");
    EXPECT_NE(lines[160].find(",5,finish"), std::string::npos) << lines[160];
    // The same keys give the same frames, to the last digit.
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "1", "--keys", keys}).out, r.out);
    // The game folder is only read.
    EXPECT_FALSE(std::filesystem::exists(dir + "stats.dat"));
    std::filesystem::remove_all(dir);
}

TEST(SimCommandLine, FramesLimitTheRunAndNoScriptHoldsNoKeys) {
    const std::string dir =
        test::MakeGameDir("simframes", test::TrackHead() + " block -2 0 -5 4 1 20 tex road\n");
    const SimResult r = Sim({"--game-dir", dir, "--track", "1", "--frames", "20", "--keys", "-"});
    ASSERT_EQ(r.code, 0) << r.err;
    const auto lines = r.lines();
    ASSERT_EQ(lines.size(), 22u);
    EXPECT_EQ(lines.back(), "result: running");
    EXPECT_EQ(lines[20].substr(0, 3), "20,");
    // A script shorter than --frames ends the run.
    const std::string keys = WriteTemp("short.keys", "# two steps\n\n3 Up+Right   # go\n2 -\n");
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "1", "--keys", keys, "--frames", "100"}).lines().size(), 7u);
    std::filesystem::remove(keys);
    std::filesystem::remove_all(dir);
}

TEST(SimCommandLine, BadArgumentsAndScriptsExitWithTwo) {
    const std::string dir =
        test::MakeGameDir("simbad", test::TrackHead() + " block -2 0 -5 4 1 20 tex road\n");
    EXPECT_EQ(Sim({"--track", "1", "--frames", "5"}).code, 2);
    EXPECT_EQ(Sim({"--game-dir", dir, "--frames", "5"}).code, 2);
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "0", "--frames", "5"}).code, 2);
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "x", "--frames", "5"}).code, 2);
    const SimResult missing = Sim({"--game-dir", dir, "--track", "2", "--frames", "5"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_NE(missing.err.find("track 2"), std::string::npos) << missing.err;
    EXPECT_TRUE(missing.out.empty());
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "1"}).code, 2) << "no script and no frame limit";
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "1", "--frames"}).code, 2);
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "1", "--speed", "3"}).code, 2);
    EXPECT_EQ(Sim({"--game-dir", dir + "nowhere", "--track", "1", "--frames", "5"}).code, 2);
    EXPECT_EQ(Sim({"--game-dir", dir, "--track", "1", "--keys", dir + "none.keys"}).code, 2);
    const std::string bad = WriteTemp("bad.keys", "5 Up\n3 Up+Jump\n");
    const SimResult r = Sim({"--game-dir", dir, "--track", "1", "--keys", bad});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("line 2"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("Jump"), std::string::npos) << r.err;
    std::filesystem::remove(bad);
    std::filesystem::remove_all(dir);
}

TEST(KeyScripts, StepsCountsAndNames) {
    KeyScript s;
    std::string error;
    ASSERT_TRUE(ParseKeyScript(
        "# start\n12 -\n\n30 Up+Space  # jump\n1 LShift+RShift+LCtrl+RCtrl+Esc+Return+H+Down+Left+Right\n", s,
        error))
        << error;
    ASSERT_EQ(s.steps.size(), 3u);
    EXPECT_EQ(s.TotalFrames(), 43);
    EXPECT_TRUE(s.steps[0].keys.empty());
    EXPECT_EQ(s.steps[1].keys, (std::vector<uint8_t>{DIK_UP, DIK_SPACE}));
    EXPECT_EQ(s.steps[2].keys.size(), 10u);
    ASSERT_NE(s.KeysAt(12), nullptr);
    EXPECT_EQ(s.KeysAt(12)->size(), 2u);
    EXPECT_EQ(s.KeysAt(43), nullptr);
    for (const char* bad :
         {"0 Up", "-3 Up", "3", "3 Up Down", "x Up", "3 up", "3 Up+", "3 +Up", "3 Up++Down"}) {
        EXPECT_FALSE(ParseKeyScript(bad, s, error)) << bad;
        EXPECT_EQ(error.rfind("line 1: ", 0), 0u) << error;
    }
}

}  // namespace
}  // namespace qb
