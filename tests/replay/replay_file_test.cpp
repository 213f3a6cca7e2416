// The replay file: what it holds, what the reader refuses, and the shipped
// solutions driven again through quorbit-sim --replay.
#include "level/TrackIdentity.h"
#include "tests/replay/ReplayRuns.h"

namespace qb {
namespace {

using namespace test;

const std::string Sample =
    "quorbit-replay 1\nfile levels.dat\ntrack 3\ntrack-hash 9f2c6a1e5b7d4c08\nframes 4\ntime 0:16\n"
    "stars 1/2\ndriver ANNA\ndate 2026-11-23\nkeys\n1 Up\n1 Up+Space\n1 Down+Left\n2 -\n";

TEST(ReplayFile, ReadsWhatItWritesAndNothingElseOfItsText) {
    Replay r;
    std::string error;
    ASSERT_TRUE(ParseReplay(Sample, r, error)) << error;
    EXPECT_EQ(r.trackHash, 0x9f2c6a1e5b7d4c08ull);
    EXPECT_EQ(r.driver + r.date + r.trackFile, "ANNA2026-11-23levels.dat");
    EXPECT_EQ(DriveFrames(r.keys), (std::vector<uint8_t>{DriveAccelerate, DriveAccelerate | DriveJump,
                                                         DriveLeft | DriveBrake, 0, 0}));
    EXPECT_EQ(FormatReplay(r), Sample);
    // Any jump key replays as a jump; comments and CRLF line ends are fine.
    ASSERT_TRUE(ParseReplay("# shared by Anna\r\n" + Sample.substr(0, Sample.find("keys\n")) +
                                "keys\r\n2 Up+LShift\r\n3 RCtrl\r\n",
                            r, error))
        << error;
    EXPECT_EQ(DriveFrames(r.keys)[1], DriveAccelerate | DriveJump);
}

TEST(ReplayFile, RefusesDamagedForeignAndInsaneFilesWithAReason) {
    const std::string& good = Sample;
    auto refused = [](const std::string& text) {
        Replay r;
        std::string error;
        const bool ok = ParseReplay(text, r, error);
        EXPECT_FALSE(ok) << text;
        EXPECT_FALSE(error.empty());
        return error;
    };
    // Cut off after any line, or in the middle of the last key line.
    for (size_t end = good.find('\n'); end + 1 < good.size(); end = good.find('\n', end + 1))
        refused(good.substr(0, end + 1));
    refused(good.substr(0, good.size() - 3));
    EXPECT_NE(refused(good.substr(0, good.rfind("2 -"))).find("cut short"), std::string::npos);
    EXPECT_NE(refused("").find("empty"), std::string::npos);
    // Garbage, other format versions and other tracks: see watch_test.cpp.

    auto with = [&](const std::string& from, const std::string& to) {
        std::string t = good;
        t.replace(t.find(from), from.size(), to);
        return t;
    };
    EXPECT_NE(refused(with("2 -\n", "2 -\n99999999 -\n")).find("longer than an hour"), std::string::npos);
    EXPECT_NE(refused(with("2 -\n", "3 -\n")).find("cover 6 frames"), std::string::npos);
    EXPECT_NE(refused(with("2 -\n", "1 -\n1 Esc\n")).find("not a driving key"), std::string::npos);
    refused(with("1 Up\n", "1 Up+Jump\n"));
    refused(with("file levels.dat", "file ../../etc/passwd"));
    refused(with("file levels.dat", "file usertracks/../levels.dat"));
    refused(with("track-hash 9f2c6a1e5b7d4c08", "track-hash 9f2c6a1e5b7d4c0"));
    refused(with("stars 1/2", "stars 3/2"));
    refused(with("driver ANNA", "driver A VERY LONG NAME INDEED"));
    refused(with("track 3", "track 0"));

    // A file far larger than any run is not even read in.
    const std::string big = TempPath("big");
    std::ofstream(big, std::ios::binary) << good << std::string(Replay::LargestFile, '#');
    Replay r;
    std::string error;
    EXPECT_FALSE(LoadReplay(big, r, error));
    EXPECT_NE(error.find("far too long"), std::string::npos);
    fs::remove(big);
    EXPECT_FALSE(LoadReplay(TempPath("missing"), r, error));
}

TEST(TrackIdentity, ChangesWithTheTrackButNotWithItsFastestTimes) {
    LevelStructure levels(GameDir + "/levels.dat");
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    LevelRecord track = levels.Level(1);
    const uint64_t hash = TrackHash(track);
    EXPECT_NE(hash, TrackHash(levels.Level(2)));
    LevelStructure::InsertFastestTime(track.Times, "ANNA", 20, 4);
    EXPECT_EQ(TrackHash(track), hash);
    track.Blocks.at(0).scaleX += 1;
    EXPECT_NE(TrackHash(track), hash);
}

int Check(const std::string& file, std::string& out) {
    std::ostringstream o, e;
    const int code = RunSimulator({"--game-dir", GameDir, "--replay", file}, o, e);
    out = o.str() + e.str();
    return code;
}

// Each shipped solution recorded by quorbit-sim --save-replay (as the game
// records a finish) and driven again through --replay.
TEST(ReplayCheck, EveryShippedSolutionReproducesItsTimeAndStars) {
    const std::string file = TempPath("solution");
    std::ostringstream o, e;
    for (int n = 1; n <= 60; ++n) {
        ASSERT_EQ(RunSimulator({"--game-dir", GameDir, "--track", std::to_string(n), "--keys",
                                SolutionPath(n), "--save-replay", file},
                               o, e),
                  0)
            << e.str();
        EXPECT_EQ(Read(file).stars, Read(file).starCount) << n;
        std::string out;
        EXPECT_EQ(Check(file, out), 0) << "track " << n << ": " << out;
    }
    EXPECT_EQ(
        RunSimulator({"--game-dir", GameDir, "--track", "1", "--frames", "5", "--save-replay", file}, o, e),
        1);
    fs::remove(file);
}

TEST(ReplayCheck, AClaimTheKeysDoNotBearOutOrAChangedTrackFails) {
    std::string out;
    const std::string file = TempPath("claim");
    std::ostringstream o, e;
    ASSERT_EQ(
        RunSimulator(
            {"--game-dir", GameDir, "--track", "1", "--keys", SolutionPath(1), "--save-replay", file}, o, e),
        0);
    const Replay r = Read(file);

    Replay faster = r;  // one frame faster than the keys can drive it
    faster.frames -= 1;
    std::vector<uint8_t> frames = DriveFrames(faster.keys);
    frames.pop_back();
    faster.keys = DriveScript(frames);
    ASSERT_TRUE(SaveReplay(file, faster));
    EXPECT_EQ(Check(file, out), 1);
    EXPECT_NE(out.find("does not reproduce the recorded finished"), std::string::npos) << out;

    Replay otherTrack = r;  // the identity of track 1 claimed for track 2
    otherTrack.track = 2;
    ASSERT_TRUE(SaveReplay(file, otherTrack));
    EXPECT_EQ(Check(file, out), 1);
    EXPECT_NE(out.find("not the track this run was driven on"), std::string::npos) << out;

    std::ofstream(file, std::ios::binary) << "quorbit-replay 1\nfile levels.dat\n";
    EXPECT_EQ(Check(file, out), 2);
    EXPECT_NE(out.find("cut short"), std::string::npos) << out;
    fs::remove(file);
}

}  // namespace
}  // namespace qb
