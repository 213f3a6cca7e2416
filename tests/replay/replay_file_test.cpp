// The replay file: what it holds, what the reader refuses, and the shipped
// solutions driven again through quorbit-sim --replay.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "level/LevelStructure.h"
#include "level/TrackIdentity.h"
#include "platform/KeyboardDevice.h"
#include "shell/DriveControls.h"
#include "shell/ReplayFile.h"
#include "shell/SimDriver.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

const std::string GameDir = QUORBIT_GAME_DIR;

Replay Sample() {
    Replay r;
    r.trackFile = "levels.dat";
    r.track = 3;
    r.trackHash = 0x9f2c6a1e5b7d4c08ull;
    r.frames = 4;
    r.stars = 1;
    r.starCount = 2;
    r.driver = "ANNA";
    r.date = "2026-11-23";
    r.keys = DriveScript({DriveAccelerate, DriveAccelerate | DriveJump, DriveLeft | DriveBrake, 0, 0});
    return r;
}

std::string TempPath(const std::string& name) {
    return (fs::temp_directory_path() / ("quorbit-replay-" + name + "-" + std::to_string(::getpid())))
        .string();
}

TEST(ReplayFile, WritesReadableTextThatReadsBackTheSame) {
    const std::string text = FormatReplay(Sample());
    EXPECT_EQ(text,
              "quorbit-replay 1\nfile levels.dat\ntrack 3\ntrack-hash 9f2c6a1e5b7d4c08\nframes 4\ntime 0:16\n"
              "stars 1/2\ndriver ANNA\ndate 2026-11-23\nkeys\n1 Up\n1 Up+Space\n1 Down+Left\n2 -\n");
    Replay back;
    std::string error;
    ASSERT_TRUE(ParseReplay(text, back, error)) << error;
    EXPECT_EQ(FormatReplay(back), text);
    EXPECT_EQ(DriveFrames(back.keys), (std::vector<uint8_t>{DriveAccelerate, DriveAccelerate | DriveJump,
                                                            DriveLeft | DriveBrake, 0, 0}));
    // Any jump key replays as a jump; comments and CRLF line ends are fine.
    ASSERT_TRUE(ParseReplay(
        "# shared by Anna\r\n" + text.substr(0, text.find("keys\n")) + "keys\r\n2 Up+LShift\r\n3 RCtrl\r\n",
        back, error))
        << error;
    EXPECT_EQ(DriveFrames(back.keys)[1], DriveAccelerate | DriveJump);
}

TEST(ReplayFile, RefusesDamagedForeignAndInsaneFilesWithAReason) {
    const std::string good = FormatReplay(Sample());
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
    EXPECT_NE(refused("\x89PNG\r\n\x1a\n garbage").find("not a Quorbit replay"), std::string::npos);
    std::string v2 = good;
    v2.replace(v2.find(" 1\n"), 3, " 2\n");
    EXPECT_NE(refused(v2).find("format 2"), std::string::npos);

    auto with = [&](const std::string& from, const std::string& to) {
        std::string t = good;
        t.replace(t.find(from), from.size(), to);
        return t;
    };
    EXPECT_NE(refused(with("frames 4", "frames 90001")).find("longer than an hour"), std::string::npos);
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
    {
        std::ofstream out(big, std::ios::binary);
        out << good;
        out << std::string(Replay::LargestFile, '#');
    }
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
    EXPECT_EQ(TrackHashText(0xabcull), "0000000000000abc");
}

// The solution's own header says what it achieves: "# result: finished S:HH stars N/M".
bool SolutionReplay(int n, const LevelStructure& levels, Replay& r) {
    char name[16];
    std::snprintf(name, sizeof name, "%02d.keys", n);
    const std::string path = std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/" + name;
    std::ifstream in(path);
    std::stringstream ss;
    ss << in.rdbuf();
    const std::string text = ss.str();
    const size_t at = text.find("# result: finished ");
    if (at == std::string::npos) return false;
    int seconds = 0, hundredths = 0, stars = 0, of = 0;
    if (std::sscanf(text.c_str() + at, "# result: finished %d:%d stars %d/%d", &seconds, &hundredths, &stars,
                    &of) != 4)
        return false;
    std::string error;
    if (!LoadKeyScript(path, r.keys, error)) return false;
    r.trackFile = "levels.dat";
    r.track = n;
    r.trackHash = TrackHash(levels.Level(n));
    r.frames = seconds * 25 + hundredths / 4;
    r.stars = stars;
    r.starCount = of;
    r.keys = DriveScript(DriveFrames(r.keys));
    // A solution may hold its keys a little past the finish.
    std::vector<uint8_t> frames = DriveFrames(r.keys);
    frames.resize(static_cast<size_t>(r.PlayFrames()));
    r.keys = DriveScript(frames);
    return true;
}

int Check(const std::string& file, std::string& out) {
    std::ostringstream o, e;
    const int code = RunSimulator({"--game-dir", GameDir, "--replay", file}, o, e);
    out = o.str() + e.str();
    return code;
}

TEST(ReplayCheck, EveryShippedSolutionReproducesItsTimeAndStars) {
    LevelStructure levels(GameDir + "/levels.dat");
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    const std::string file = TempPath("solution");
    for (int n = 1; n <= 60; ++n) {
        Replay r;
        ASSERT_TRUE(SolutionReplay(n, levels, r)) << "solution " << n;
        ASSERT_TRUE(SaveReplay(file, r));
        std::string out;
        EXPECT_EQ(Check(file, out), 0) << "track " << n << ": " << out;
    }
    fs::remove(file);
}

TEST(ReplayCheck, AClaimTheKeysDoNotBearOutOrAChangedTrackFails) {
    LevelStructure levels(GameDir + "/levels.dat");
    std::string error, out;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    Replay r;
    ASSERT_TRUE(SolutionReplay(1, levels, r));
    const std::string file = TempPath("claim");

    Replay faster = r;  // one frame faster than the keys can drive it
    faster.frames -= 1;
    std::vector<uint8_t> frames = DriveFrames(faster.keys);
    frames.pop_back();
    faster.keys = DriveScript(frames);
    ASSERT_TRUE(SaveReplay(file, faster));
    EXPECT_EQ(Check(file, out), 1);
    EXPECT_NE(out.find("does not reproduce the recorded finished"), std::string::npos) << out;

    Replay moreStars = r;
    moreStars.stars = moreStars.starCount + 1;
    moreStars.starCount += 1;
    ASSERT_TRUE(SaveReplay(file, moreStars));
    EXPECT_EQ(Check(file, out), 1) << out;

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
