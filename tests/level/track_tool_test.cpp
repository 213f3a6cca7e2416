// The track tool as people run it, and the starter tracks the build ships:
// they can be finished with plain driving, so a new player always has
// something to win.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

#include "level/LevelFileWriter.h"
#include "level/LevelStructure.h"
#include "level/TrackSource.h"
#include "platform/KeyboardDevice.h"
#include "shell/SimDriver.h"
#include "tests/level/TrackBytes.h"

namespace qb {
namespace {

struct ToolRun {
    int code;
    std::string out;  // stdout and stderr together
};

ToolRun Tool(const std::string& args) {
    const std::string cmd = std::string(QUORBIT_TOOLS_DIR) + "/quorbit-track " + args + " 2>&1";
    ToolRun r{-1, {}};
    FILE* p = ::popen(cmd.c_str(), "r");
    if (!p) return r;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, n);
    const int status = ::pclose(p);
    r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return r;
}

TEST(TrackTool, DumpToAFolderThenBuildGivesIdenticalBytes) {
    const std::string dir = test::Scratch("tool-roundtrip");
    // Twelve tracks so the dump spreads over two files.
    std::vector<test::Bytes> records;
    for (int i = 0; i < 12; ++i)
        records.push_back(test::SimpleRecord(static_cast<float>(i * 50), i % 2 ? -1 : 0));
    test::Bytes f = test::FileOf(records);
    f.b[8] = 0xFF;   // zone 3 flag, low byte only
    f.b[20] = 0x42;  // reserved bytes of track 1's index entry
    test::WriteBytes(dir + "in.dat", f.b);

    ToolRun d = Tool("dump " + dir + "in.dat -o " + dir + "src");
    ASSERT_EQ(d.code, 0) << d.out;
    ToolRun b = Tool("build -o " + dir + "out.dat " + dir + "src/zone01.trk " + dir + "src/zone02.trk");
    ASSERT_EQ(b.code, 0) << b.out;
    EXPECT_NE(b.out.find("track 12: 1 block, 0 platforms, 0 ramps, 0 stars, 1 texture"), std::string::npos)
        << b.out;
    EXPECT_EQ(test::ReadBytes(dir + "out.dat"), f.b);

    ToolRun s = Tool("dump " + dir + "in.dat");
    EXPECT_EQ(s.code, 0);
    EXPECT_NE(s.out.find("reserved 66"), std::string::npos) << s.out;
}

TEST(TrackTool, CheckReportsFileAndPositionAndExitsOne) {
    const std::string dir = test::Scratch("tool-check");
    test::Bytes f = test::FileOf({test::SimpleRecord(), test::SimpleRecord()});
    f.b[32 + 206 + 137 + 28] = 9;  // track 2, face C texture 9 of 1
    test::WriteBytes(dir + "bad.dat", f.b);
    test::WriteBytes(dir + "good.dat", test::FileOf({test::SimpleRecord()}).b);
    test::WriteFile(dir + "bad.trk", "track\n texture a.bmp\n block 0 0 0 1 1\n");
    ToolRun r = Tool("check " + dir + "good.dat " + dir + "bad.dat " + dir + "bad.trk");
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.out.find(dir + "good.dat: 1 track, no errors"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find(dir + "bad.dat:byte 403: track 2: "), std::string::npos) << r.out;
    EXPECT_NE(r.out.find(dir + "bad.trk:3: "), std::string::npos) << r.out;

    EXPECT_EQ(Tool("check " + dir + "good.dat").code, 0);
    EXPECT_EQ(Tool("check " + dir + "nothing.dat").code, 1);
    // Build refuses broken sources and writes nothing.
    EXPECT_EQ(Tool("build -o " + dir + "x.dat " + dir + "bad.trk").code, 1);
    EXPECT_FALSE(std::filesystem::exists(dir + "x.dat"));
}

TEST(TrackTool, InvalidUsageExitsTwo) {
    for (const char* args : {"", "frobnicate", "build a.trk", "build -o", "check", "dump"})
        EXPECT_EQ(Tool(args).code, 2) << args;
    EXPECT_EQ(Tool("--help").code, 0);
}

// Holds Up until the run ends (a minute at most).
std::string Drive(int32_t track) {
    SimRun run(QUORBIT_GAME_DIR);
    std::string error;
    if (!run.Start(track, error)) return error;
    for (int f = 0; f < 1500 && !run.Finished(); ++f) run.Step({DIK_UP});
    return run.Result();
}

// Winning every shipped track with all its stars, and track 10 needing its
// jumps, are proven in tests/tracks; example.dat has no solution to drive.
TEST(ShippedTracks, TracksOneAndThreeFinishOnUpAloneAndEveryUserExampleLoads) {
    EXPECT_EQ(Drive(1).rfind("result: finished", 0), 0u);
    EXPECT_EQ(Drive(3).rfind("result: finished", 0), 0u);
    int examples = 0;
    for (const auto& e : std::filesystem::directory_iterator(std::string(QUORBIT_GAME_DIR) + "/usertracks")) {
        LevelStructure user(e.path().string());
        std::string error;
        EXPECT_TRUE(user.LoadLevels(error)) << error;
        ++examples;
    }
    EXPECT_GE(examples, 4);
}

}  // namespace
}  // namespace qb
