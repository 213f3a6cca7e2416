// Where the player's files go (beside the game, or under the data home when
// the game is installed read-only), and saving where things go wrong: a
// failed save is told to the player once, a track file replaced behind the
// game's back is not patched, a second game on the same folder stops, and no
// write goes through a symbolic link or into a folder other users share.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "level/FilePatch.h"
#include "level/LevelFileWriter.h"
#include "level/LevelStructure.h"
#include "persist/AtomicFile.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "platform/Platform.h"
#include "platform/QuorbitDebug.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

size_t Count(const std::vector<std::string>& lines, const std::string& part) {
    size_t n = 0;
    for (const std::string& l : lines) n += l.find(part) != std::string::npos ? 1 : 0;
    return n;
}

// A folder in place of the file makes the final rename fail, even for root.
TEST(SafeSaves, AFailedSaveIsToldOnceWithWhatAndWhy) {
    test::TestGame t("save-fails");
    ASSERT_TRUE(t.game->startup());
    t.hp.window.messages.clear();
    fs::remove(t.writeDir + "stats.dat");
    fs::create_directory(t.writeDir + "stats.dat");
    fs::remove(t.writeDir + "options.dat");
    fs::create_directory(t.writeDir + "options.dat");

    EXPECT_FALSE(t.game->stats->FoldPlay(1, 1000));
    EXPECT_FALSE(t.game->options->SaveOptions());
    t.game->ReportSaveFailures();
    ASSERT_EQ(t.hp.window.messages.size(), 2u);
    EXPECT_NE(t.hp.window.messages[0].find("could not save the statistics"), std::string::npos);
    EXPECT_NE(t.hp.window.messages[0].find(t.writeDir + "stats.dat: Is a directory"), std::string::npos)
        << t.hp.window.messages[0];
    EXPECT_NE(t.hp.window.messages[1].find("could not save the options"), std::string::npos);

    // The next failures of the same kind go to the log only.
    EXPECT_FALSE(t.game->stats->FoldPlay(1, 1000));
    t.game->ReportSaveFailures();
    t.game->ReportSaveFailures();
    EXPECT_EQ(t.hp.window.messages.size(), 2u);
    t.game->shutdown();
    EXPECT_EQ(Count(t.log(), "could not save the statistics"), 2u);
}

TEST(SafeSaves, TheLastRunsLogIsKeptAsTheOldOne) {
    test::TestGame t("old-log");
    ASSERT_TRUE(t.game->startup());
    t.game->debug->WriteLine("first run");
    t.game->shutdown();
    t.game.reset();
    t.game = std::make_unique<frmGame>(t.hp.platform);
    ASSERT_TRUE(t.game->startup());
    t.game->shutdown();
    EXPECT_EQ(Count(test::ReadCrlfLines(t.writeDir + "Debug.old.txt"), "first run"), 1u);
    EXPECT_EQ(Count(t.log(), "first run"), 0u);
}

// The track file is replaced (a newer set of tracks, an edited copy) while
// the game runs: its records are no longer where the game read them.
TEST(SafeSaves, ATrackFileReplacedSinceItWasReadIsNotPatched) {
    const std::string dir = test::FreshDir("replaced");
    const std::string path = dir + "levels.dat";
    fs::copy_file(std::string(QUORBIT_GAME_DIR) + "/levels.dat", path);
    LevelStructure levels(path);
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    levels.CurrentLevel = 2;
    levels.CurrentZone = 1;
    // Our own patches, the zone flags among them, leave it ours.
    ASSERT_TRUE(levels.SaveFastestTime("ANNA", 30, 4)) << levels.WriteError();
    ASSERT_TRUE(levels.SaveAllStarsFlag()) << levels.WriteError();
    ASSERT_TRUE(levels.SaveFastestTime("BEN", 31, 8)) << levels.WriteError();

    // Another file of the same size but other offsets: one track fewer.
    LevelFile other;
    LevelFileError e;
    ASSERT_TRUE(ReadLevelFileAt(path, other, e));
    other.Levels.erase(other.Levels.begin());
    other.AllStars.erase(other.AllStars.begin());
    other.Index.clear();
    std::vector<uint8_t> bytes = EncodeLevelFile(other);
    bytes.resize(fs::file_size(path), 0);
    ASSERT_TRUE(WriteFileAtomically(path, bytes));
    EXPECT_FALSE(levels.SaveFastestTime("CARL", 20, 0));
    EXPECT_NE(levels.SaveError.find("changed since the game read it"), std::string::npos) << levels.SaveError;
    EXPECT_EQ(test::ReadFile(path), std::string(bytes.begin(), bytes.end()));
    EXPECT_FALSE(levels.SaveAllStarsFlag());
    EXPECT_EQ(test::ReadFile(path), std::string(bytes.begin(), bytes.end()));
    fs::remove_all(dir);
}

TEST(SafeSaves, ASecondGameOnTheSameFolderSaysSoAndStops) {
    test::TestGame first("second-copy");
    ASSERT_TRUE(first.game->startup());
    first.game->debug->WriteLine("the first game");
    HeadlessPlatform hp(QUORBIT_GAME_DIR, first.writeDir);
    {
        frmGame second(hp.platform);
        EXPECT_EQ(second.Form_Load(), 1);
        ASSERT_EQ(hp.window.messages.size(), 1u);
        EXPECT_NE(hp.window.messages[0].find("already running with its files in " + first.writeDir),
                  std::string::npos);
    }
    // The first game's log and files are untouched by the second.
    EXPECT_EQ(Count(first.log(), "the first game"), 1u);
    first.game->shutdown();
    first.game.reset();
    // Once the first has gone, a game starts there again.
    frmGame third(hp.platform);
    EXPECT_TRUE(third.startup());
}

TEST(SafeSaves, WritesNeverFollowASymbolicLink) {
    const std::string dir = test::FreshDir("links");
    const std::string victim = dir + "victim";
    { std::ofstream(victim) << "precious"; }
    fs::create_symlink(victim, dir + "options.dat");
    fs::create_symlink(victim, dir + "stats.dat.tmp");
    fs::create_symlink(victim, dir + "Debug.txt");
    fs::create_symlink(victim, dir + "levels.dat");

    optionsDat options(dir + "options.dat");
    options.Options.MusicVolume = 50;
    EXPECT_TRUE(options.SaveOptions());
    EXPECT_FALSE(fs::is_symlink(dir + "options.dat"));
    Stats stats(dir + "stats.dat");
    stats.LoadStats(3);
    EXPECT_TRUE(stats.SaveStats());
    EXPECT_TRUE(fs::is_regular_file(dir + "stats.dat"));
    QuorbitDebug log;
    FixedSystemInfo system;
    log.Open(dir + "Debug.txt", system);
    log.WriteLine("written");
    log.Close();
    std::string error;
    const uint8_t patch[2] = {1, 2};
    EXPECT_FALSE(PatchFileAt(dir + "levels.dat", 0, patch, 2, error));
    EXPECT_EQ(test::ReadFile(victim), "precious");
    fs::remove_all(dir);
}

// How the copy is made and kept up to date: tests/persist/installed_copy_test.
TEST(GamePaths, AWritableFolderKeepsEverythingAndAReadOnlyOneWritesUnderTheDataHome) {
    const std::string dir = test::FreshDir("paths");
    const GamePaths rw = ResolveGamePaths(dir);
    EXPECT_EQ(rw.gameDir, dir);
    EXPECT_EQ(rw.writeDir, dir);
    EXPECT_EQ(rw.levelsFile(), dir + "levels.dat");

    const std::string home = test::FreshDir("paths-xdg");
    test::WriteFile(dir + "levels.dat", "tracks");
    ::setenv("XDG_DATA_HOME", home.c_str(), 1);
    const GamePaths p = ResolveGamePaths(dir, false);
    EXPECT_EQ(p.gameDir, dir);
    EXPECT_EQ(p.writeDir, home + "quorbit/");
    EXPECT_EQ(test::ReadFile(p.levelsFile()), "tracks");
    // Without XDG_DATA_HOME the files go to ~/.local/share/quorbit.
    ::unsetenv("XDG_DATA_HOME");
    const std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("HOME", home.c_str(), 1);
    EXPECT_EQ(ResolveGamePaths(dir, false).writeDir, home + ".local/share/quorbit/");
    ::setenv("HOME", savedHome.c_str(), 1);
}

TEST(SafeSaves, WithoutAHomeTheGameWritesToAPrivateFolderAndSaysWhy) {
    const std::string dir = test::FreshDir("no-home");
    const char* home = std::getenv("HOME");
    const std::string savedHome = home ? home : "";
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("HOME");
    const GamePaths p = ResolveGamePaths(dir, false);
    const GamePaths again = ResolveGamePaths(dir, false);
    ::setenv("HOME", savedHome.c_str(), 1);
    EXPECT_NE(p.writeDir, "/tmp/quorbit/");
    EXPECT_EQ(p.writeDir.rfind("/tmp/quorbit-", 0), 0u) << p.writeDir;
    EXPECT_NE(p.writeDir, again.writeDir);
    struct stat st {};
    ASSERT_EQ(::stat(p.writeDir.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0700u);
    EXPECT_NE(p.problem.find("for this run only"), std::string::npos);
    fs::remove_all(p.writeDir);
    fs::remove_all(again.writeDir);
}

TEST(SafeSaves, TrackNamesReachOnlyTheirOwnFolders) {
    LevelRecord r;
    r.Background = "../../etc/passwd";
    r.Background.resize(50, ' ');
    EXPECT_EQ(r.BackgroundFile(), "");
    r.Background = "bk001.jpg";
    r.Background.resize(50, ' ');
    EXPECT_EQ(r.BackgroundFile(), "bk001.jpg");
    for (const char* bad : {"", ".", "..", "a/b.bmp", "/etc/passwd", "../textures/wall.bmp"})
        EXPECT_FALSE(LevelRecord::IsPlainFileName(bad)) << bad;
    EXPECT_TRUE(LevelRecord::IsPlainFileName("wall.bmp"));
    EXPECT_TRUE(LevelRecord::IsPlainFileName("..wall.bmp"));
}

}  // namespace
}  // namespace qb
