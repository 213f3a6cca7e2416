// The player's copy of an installed game's tracks: made whole or not at
// all (a full disk, a kill in the middle), made again at the next start
// when it failed, and brought up to a newer installed version with the
// player's times and all-stars flags.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "level/LevelFileWriter.h"
#include "level/LevelStructure.h"
#include "persist/AtomicFile.h"
#include "persist/InstalledCopy.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

// Track n: a road of n blocks, named "Track n".
LevelRecord Track(int n, int extraStars = 0) {
    LevelRecord r;
    r.Settings.SettingsText = "Track " + std::to_string(n);
    for (int b = 0; b < n; ++b) {
        BlockRecord block;
        block.Z = static_cast<float>(4 * b);
        block.scaleX = block.scaleY = block.scalez = 4;
        r.Blocks.push_back(block);
    }
    r.BlockUpper = n - 1;
    for (int s = 0; s < 1 + extraStars; ++s) r.Stars.push_back(StarRecord{0, 1, static_cast<float>(s)});
    r.StarUpper = static_cast<int32_t>(r.Stars.size()) - 1;
    r.TextureNames = {"", "road.bmp"};
    r.TextureCount.Value = 1;
    return r;
}

void Write(const std::string& path, std::vector<LevelRecord> tracks) {
    LevelFile f;
    f.Levels = std::move(tracks);
    f.AllStars.assign(f.Levels.size(), 0);
    ASSERT_TRUE(WriteFileAtomically(path, EncodeLevelFile(f)));
}

// An installed game folder: levels.dat of `tracks` tracks and two examples.
struct Install {
    std::string game, home;
    explicit Install(const std::string& name, int tracks = 12)
        : game(test::FreshDir("install-" + name + "-game")),
          home(test::FreshDir("install-" + name + "-home") + "quorbit/") {
        std::vector<LevelRecord> all;
        for (int n = 1; n <= tracks; ++n) all.push_back(Track(n));
        Write(game + "levels.dat", all);
        fs::create_directories(game + "usertracks");
        Write(game + "usertracks/ex1.dat", {Track(3)});
        Write(game + "usertracks/ex2.dat", {Track(4), Track(5)});
        fs::create_directories(home);
    }
    ~Install() {
        fs::remove_all(game);
        fs::remove_all(fs::path(home).parent_path().parent_path());
    }
    InstallOutcome run() const { return InstallTrackFiles(game, home); }
    // The player's copy of levels.dat, read as the game reads it.
    bool copyReads(LevelStructure& lv) const {
        std::string error;
        return lv.LoadLevels(error);
    }
};

bool SameBytes(const std::string& a, const std::string& b) {
    return ReadWholeFile(a) == ReadWholeFile(b);
}

TEST(InstalledCopy, MadeOnceWholeAndLeftAloneWhileTheInstalledFilesStayTheSame) {
    Install in("first");
    InstallOutcome o = in.run();
    EXPECT_EQ(o.problem, "");
    EXPECT_TRUE(o.levelsUsable);
    EXPECT_EQ(o.copied, (std::vector<std::string>{"levels.dat", "usertracks/ex1.dat", "usertracks/ex2.dat"}));
    EXPECT_TRUE(SameBytes(in.game + "levels.dat", in.home + "levels.dat"));
    EXPECT_TRUE(SameBytes(in.game + "usertracks/ex2.dat", in.home + "usertracks/ex2.dat"));
    // The player sets a time and removes an example: both stay so.
    LevelStructure lv(in.home + "levels.dat");
    ASSERT_TRUE(in.copyReads(lv));
    lv.CurrentLevel = 2;
    ASSERT_TRUE(lv.SaveFastestTime("ANNA", 12, 34));
    fs::remove(in.home + "usertracks/ex1.dat");
    o = in.run();
    EXPECT_TRUE(o.copied.empty());
    EXPECT_EQ(o.problem, "");
    EXPECT_FALSE(fs::exists(in.home + "usertracks/ex1.dat"));
    LevelStructure again(in.home + "levels.dat");
    ASSERT_TRUE(in.copyReads(again));
    EXPECT_EQ(again.Level(2).Times.Seconds[0], 12);
}

TEST(InstalledCopy, ANewerInstallBringsItsTracksAndCarriesTimesAndFlagsByTrack) {
    Install in("upgrade", 12);
    ASSERT_EQ(in.run().problem, "");
    {
        LevelStructure lv(in.home + "levels.dat");
        ASSERT_TRUE(in.copyReads(lv));
        lv.ZoneFirstLevel = 1;
        lv.ZoneLastLevel = 10;
        for (int n = 1; n <= 10; ++n) {
            lv.CurrentLevel = n;
            ASSERT_TRUE(lv.SaveFastestTime("P" + std::to_string(n), 20 + n, 0));
            ASSERT_TRUE(lv.SaveAllStarsFlag());
        }
        ASSERT_TRUE(lv.ZoneComplete(1));
    }
    // The new version: track 1 gone, a new track in front, track 5 changed
    // (a star more) under its old name, the rest moved down by one.
    std::vector<LevelRecord> next{Track(40)};
    for (int n = 2; n <= 12; ++n) next.push_back(Track(n, n == 5 ? 1 : 0));
    Write(in.game + "levels.dat", next);
    const InstallOutcome o = in.run();
    EXPECT_EQ(o.problem, "");
    EXPECT_EQ(o.copied, std::vector<std::string>{"levels.dat"});
    LevelStructure lv(in.home + "levels.dat");
    ASSERT_TRUE(in.copyReads(lv));
    ASSERT_EQ(lv.LevelCount(), 12);
    EXPECT_EQ(lv.Level(1).Times.Seconds[0], 0);  // new
    EXPECT_FALSE(lv.AllStars(1));
    for (int n = 2; n <= 10; ++n) {
        EXPECT_EQ(lv.Level(n).Times.Seconds[0], 20 + n) << n;
        EXPECT_EQ(lv.AllStars(n), n != 5) << n;  // a changed track keeps its times only
    }
    EXPECT_EQ(lv.Level(11).Times.Seconds[0], 0);
    EXPECT_FALSE(lv.ZoneComplete(1));
    EXPECT_EQ(lv.Level(5).StarUpper, 1);
    // Started again, nothing more happens.
    EXPECT_TRUE(in.run().copied.empty());
}

// A full disk, as a file-size limit in a child process: every write past
// the limit fails. Nothing half-written is left as the player's copy, the
// player is told, and the next start (with room) makes the copy.
TEST(InstalledCopy, AFullDiskLeavesNoHalfCopyIsExplainedAndIsMadeAtTheNextStart) {
    Install in("full", 12);
    auto runLimited = [&](rlim_t bytes) {
        int fds[2];
        EXPECT_EQ(::pipe(fds), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(fds[0]);
            ::signal(SIGXFSZ, SIG_IGN);
            const struct rlimit limit { bytes, bytes };
            ::setrlimit(RLIMIT_FSIZE, &limit);
            const InstallOutcome o = InstallTrackFiles(in.game, in.home);
            const std::string report = (o.levelsUsable ? "1" : "0") + o.problem;
            (void)!::write(fds[1], report.data(), report.size());
            _exit(0);
        }
        ::close(fds[1]);
        std::string report;
        char buf[512];
        for (ssize_t n; (n = ::read(fds[0], buf, sizeof buf)) > 0;)
            report.append(buf, static_cast<size_t>(n));
        ::close(fds[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        return report;
    };
    const size_t size = fs::file_size(in.game + "levels.dat");
    const std::string report = runLimited(size / 2);
    ASSERT_FALSE(report.empty());
    EXPECT_EQ(report[0], '0');
    EXPECT_NE(report.find("could not copy its tracks"), std::string::npos) << report;
    EXPECT_NE(report.find("File too large"), std::string::npos) << report;
    EXPECT_NE(report.find("try again at the next start"), std::string::npos) << report;
    EXPECT_FALSE(fs::exists(in.home + "levels.dat"));
    EXPECT_FALSE(fs::exists(in.home + "levels.dat.tmp"));

    // The small examples were made; only the copy that failed is made again.
    EXPECT_TRUE(SameBytes(in.game + "usertracks/ex2.dat", in.home + "usertracks/ex2.dat"));
    const InstallOutcome o = in.run();
    EXPECT_EQ(o.problem, "");
    EXPECT_TRUE(o.levelsUsable);
    EXPECT_EQ(o.copied, std::vector<std::string>{"levels.dat"});
    EXPECT_TRUE(SameBytes(in.game + "levels.dat", in.home + "levels.dat"));
    EXPECT_TRUE(in.run().copied.empty());
}

// Killed at random moments while bringing a newer version over: every
// start after a kill finds a readable copy holding the player's time, and
// the first start left alone finishes the job.
TEST(InstalledCopy, KilledWhileCopyingTheNextStartRecovers) {
    Install in("kill", 300);
    ASSERT_EQ(in.run().problem, "");
    {
        LevelStructure lv(in.home + "levels.dat");
        ASSERT_TRUE(in.copyReads(lv));
        lv.CurrentLevel = 7;
        ASSERT_TRUE(lv.SaveFastestTime("KEPT", 9, 9));
    }
    std::vector<LevelRecord> next;
    for (int n = 1; n <= 300; ++n) next.push_back(Track(n));
    next.push_back(Track(301));
    Write(in.game + "levels.dat", next);
    std::mt19937 random(7);
    for (int round = 0; round < 12; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            InstallTrackFiles(in.game, in.home);
            _exit(0);
        }
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 40000)(random));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        LevelStructure lv(in.home + "levels.dat");
        ASSERT_TRUE(in.copyReads(lv)) << "round " << round;
        EXPECT_EQ(lv.Level(7).Times.Seconds[0], 9) << "round " << round;
    }
    EXPECT_EQ(in.run().problem, "");
    LevelStructure lv(in.home + "levels.dat");
    ASSERT_TRUE(in.copyReads(lv));
    EXPECT_EQ(lv.LevelCount(), 301);
    EXPECT_EQ(lv.Level(7).Times.Seconds[0], 9);
    EXPECT_TRUE(in.run().copied.empty());
}

// A copy an older version left truncated or empty is made anew; the
// damaged one is kept beside it.
TEST(InstalledCopy, ADamagedCopyIsMadeAnewAndKeptAside) {
    Install in("damaged");
    std::ofstream(in.home + "levels.dat") << "half a file";
    fs::create_directories(in.home + "usertracks");
    std::ofstream(in.home + "usertracks/ex1.dat").flush();
    const InstallOutcome o = in.run();
    EXPECT_EQ(o.problem, "");
    EXPECT_TRUE(SameBytes(in.game + "levels.dat", in.home + "levels.dat"));
    EXPECT_TRUE(SameBytes(in.game + "usertracks/ex1.dat", in.home + "usertracks/ex1.dat"));
    EXPECT_EQ(ReadWholeFile(in.home + "levels.dat.broken").size(), 11u);
}

}  // namespace
}  // namespace qb
