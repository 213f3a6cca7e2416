// Kills a process that keeps saving fastest times, statistics and options at
// random moments, over and over, and checks that every file is whole and
// holds either the old or the new content: never a mixture, never garbage.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>

#include "level/LevelStructure.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

constexpr int32_t Base = 100000;  // run i saves the time Base - i

std::string RunName(int32_t run) {
    std::string n = "R" + std::to_string(run);
    n.resize(15, ' ');
    return n;
}

// Loads the files, then saves until it is killed, writing a byte to `done`
// once loaded and after every whole round of saves.
[[noreturn]] void SaveForever(const std::string& dir, int32_t firstRun, int done) {
    LevelStructure levels(dir + "levels.dat");
    std::string error;
    if (!levels.LoadLevels(error)) _exit(3);
    levels.CurrentLevel = 1;
    optionsDat options(dir + "options.dat");
    options.LoadOptions();
    Stats stats(dir + "stats.dat");
    stats.LoadStats(levels.LevelCount());
    if (::write(done, "r", 1) != 1) _exit(4);
    for (int32_t run = firstRun;; ++run) {
        options.Options = {run, -run, 3 * run};
        options.SaveOptions();
        stats.JumpCount = 1;
        stats.FoldPlay(1, 10);
        levels.SaveFastestTime(RunName(run), Base - run, 0);
        if (::write(done, "s", 1) != 1) _exit(4);
    }
}

// Checks the three files; returns the newest run whose time is in the table.
int32_t CheckFiles(const std::string& dir) {
    LevelStructure levels(dir + "levels.dat");
    std::string error;
    EXPECT_TRUE(levels.LoadLevels(error)) << error;
    if (levels.LevelCount() < 1) return 0;
    const FastestTimes& t = levels.Level(1).Times;
    int32_t newest = 0;
    for (int place = 0; place < 3; ++place) {
        if (t.Seconds[place] == 0) continue;
        const int32_t run = Base - t.Seconds[place];
        EXPECT_EQ(t.Names[place], RunName(run)) << "place " << place + 1;
        EXPECT_EQ(t.Hundredths[place], 0);
        if (place > 0 && t.Seconds[place - 1] != 0) {
            EXPECT_GE(t.Seconds[place], t.Seconds[place - 1]);
        }
        newest = std::max(newest, run);
    }

    // A kill before the first save leaves no options file at all.
    const auto optionBytes = fs::exists(dir + "options.dat") ? fs::file_size(dir + "options.dat") : 0;
    if (optionBytes > 0) {
        EXPECT_EQ(optionBytes, 12u);
        optionsDat options(dir + "options.dat");
        options.LoadOptions();
        EXPECT_EQ(options.Options.SfxVolume, -options.Options.MusicVolume);
        EXPECT_EQ(options.Options.VideoMode, 3 * options.Options.MusicVolume);
    }

    Stats stats(dir + "stats.dat");
    stats.LoadStats(levels.LevelCount());
    EXPECT_EQ(stats.LevelStats[1].PlayTime, 10 * stats.LevelStats[1].Jumps);
    EXPECT_EQ(stats.TotalPlayTime, stats.LevelStats[1].PlayTime);
    for (const auto& entry : fs::directory_iterator(dir))
        EXPECT_NE(entry.path().extension(), ".dat.tmp") << "a temporary file was left behind";
    return newest;
}

TEST(KilledWhileSaving, EveryFileStaysWholeAndHoldsOldOrNewContent) {
    const std::string source = std::string(QUORBIT_GAME_DIR) + "/levels.dat";
    if (!fs::exists(source)) GTEST_SKIP() << "no generated levels.dat";
    const std::string dir = test::FreshDir("kill");
    fs::copy_file(source, dir + "levels.dat");

    std::mt19937 rng(20261123);
    std::uniform_int_distribution<int> delayUs(0, 20000);
    int32_t nextRun = 1;
    int progressed = 0;
    for (int round = 0; round < 120; ++round) {
        // The kill is timed from the saver's own progress (loaded, then none,
        // one or two whole rounds done) plus a random delay, so a busy
        // machine slow to load or to write does not decide where it lands.
        int done[2];
        ASSERT_EQ(::pipe(done), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) SaveForever(dir, nextRun, done[1]);
        ::close(done[1]);
        const int waitFor = 1 + round % 3;
        int seen = 0;
        char byte = 0;
        while (seen < waitFor && ::read(done[0], &byte, 1) == 1) ++seen;
        const bool started = seen == waitFor;
        ::usleep(static_cast<useconds_t>(delayUs(rng)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(done[0]);
        ASSERT_TRUE(started && WIFSIGNALED(status)) << "the saver stopped by itself, status " << status;
        const int32_t newest = CheckFiles(dir);
        if (HasFailure()) {
            ADD_FAILURE() << "after round " << round;
            break;
        }
        if (newest >= nextRun) ++progressed;
        nextRun = std::max(nextRun, newest) + 1000;  // later runs are always faster
    }
    // The kills must have landed while work was going on, not only before it.
    EXPECT_GT(progressed, 10);
    fs::remove_all(dir);
}

}  // namespace
}  // namespace qb
