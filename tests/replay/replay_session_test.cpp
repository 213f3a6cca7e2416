// Runs recorded by the game itself: what a finish keeps, the driver's name,
// and the replay of a track that has changed since.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "platform/KeyboardDevice.h"
#include "platform/QuorbitDebug.h"
#include "shell/DriveControls.h"
#include "shell/ReplayStore.h"
#include "shell/RunRecorder.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

const std::string GameDir = QUORBIT_GAME_DIR;

KeyScript Solution(const std::string& name) {
    KeyScript s;
    std::string error;
    EXPECT_TRUE(LoadKeyScript(std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/" + name, s, error))
        << error;
    return s;
}

// Drives `script` from the start until the finish; the frames driven.
int64_t DriveToFinish(SimRun& run, const KeyScript& script) {
    int64_t f = 0;
    for (; f < script.TotalFrames() && !run.Finished(); ++f) run.Step(*script.KeysAt(f));
    return f;
}

void RaceAgain(SimRun& run) {
    frmGame& g = run.game();
    g.GameState = TrackChoice;
    g.track->BuildLevel(g.levels->CurrentLevel, false);
    g.startPlaying();
}

Replay Read(const std::string& path) {
    Replay r;
    std::string error;
    EXPECT_TRUE(LoadReplay(path, r, error)) << error;
    return r;
}

TEST(RecordedRuns, AFinishKeepsTheRunAsTheBestAndTheLastWithTheDriversName) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(2, error)) << error;
    // Jumping with Return instead of Space, with Return already held at the
    // start (that press does not jump until it is let go).
    KeyScript script = Solution("02.keys");
    for (KeyStep& s : script.steps)
        for (uint8_t& k : s.keys)
            if (k == DIK_SPACE) k = DIK_RETURN;
    script.steps.front().keys.push_back(DIK_RETURN);
    const int64_t driven = DriveToFinish(run, script);
    ASSERT_TRUE(run.Finished()) << run.Result();

    ReplayStore& store = *run.game().replays;
    const TrackRef ref = store.CurrentTrack();
    EXPECT_EQ(ref.file, "levels.dat");
    EXPECT_EQ(ref.track, 2);
    const Replay best = Read(store.BestPath(ref));
    EXPECT_EQ(best.frames, run.FinishFrames());
    EXPECT_EQ(best.PlayFrames(), driven);
    EXPECT_EQ(best.stars, run.FinishStars());
    EXPECT_EQ(best.trackHash, ref.hash);
    EXPECT_EQ(best.date, "2026-01-02");
    EXPECT_EQ(FormatReplay(Read(store.LastPath())), FormatReplay(best));
    // The held Return is recorded as what it did: nothing at first, then jumps.
    EXPECT_EQ(DriveFrames(best.keys).front(), DriveAccelerate);

    // The name typed for the fastest times goes into both files.
    ASSERT_EQ(run.game().GameState, NameEntry);
    run.Step({});
    for (uint8_t k : {uint8_t{30}, uint8_t{49}, uint8_t{49}, uint8_t{30}}) {  // A N N A
        run.Step({k});
        run.Step({});
    }
    run.Step({DIK_RETURN});
    EXPECT_EQ(Read(store.BestPath(ref)).driver, "ANNA");
    EXPECT_EQ(Read(store.LastPath()).driver, "ANNA");

    // Driven again: the replay reproduces the run in quorbit-sim.
    std::ostringstream out, err;
    EXPECT_EQ(RunSimulator({"--game-dir", GameDir, "--replay", store.BestPath(ref)}, out, err), 0)
        << out.str() << err.str();
}

TEST(RecordedRuns, ASlowerFinishIsTheLastRunButNotTheBest) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    const KeyScript script = Solution("01.keys");
    DriveToFinish(run, script);
    ASSERT_TRUE(run.Finished());
    ReplayStore& store = *run.game().replays;
    const TrackRef ref = store.CurrentTrack();
    const int32_t bestFrames = Read(store.BestPath(ref)).frames;
    const int generation = store.Generation();

    // Ten frames of waiting at the start make the next finish slower.
    RaceAgain(run);
    KeyScript slower = script;
    slower.steps.insert(slower.steps.begin(), KeyStep{10, {}});
    int64_t f = 0;
    for (; f < slower.TotalFrames() && run.game().GameState == Playing; ++f) run.Step(*slower.KeysAt(f));
    EXPECT_EQ(Read(store.LastPath()).frames, bestFrames + 10);
    EXPECT_EQ(Read(store.BestPath(ref)).frames, bestFrames);
    EXPECT_EQ(store.Generation(), generation);
    std::string why;
    ASSERT_NE(store.Best(why), nullptr) << why;
    EXPECT_EQ(store.Best(why)->frames, bestFrames);
}

TEST(RecordedRuns, AKeptRunOfAChangedOrDamagedTrackIsRefusedAndReplaced) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    frmGame& g = run.game();
    ReplayStore& store = *g.replays;
    const TrackRef ref = store.CurrentTrack();

    Replay old;
    old.trackFile = ref.file;
    old.track = 1;
    old.trackHash = ref.hash ^ 1;  // driven on an earlier version of the track
    old.frames = 1;
    old.keys = DriveScript({DriveAccelerate, DriveAccelerate});
    ASSERT_TRUE(SaveReplay(store.BestPath(ref), old));
    store.Forget();  // as a race start does
    std::string why;
    EXPECT_EQ(store.Best(why), nullptr);
    EXPECT_NE(why.find("older version of this track"), std::string::npos) << why;

    // Even a run far slower than the stale one takes its place.
    DriveToFinish(run, Solution("01.keys"));
    ASSERT_TRUE(run.Finished());
    ASSERT_NE(store.Best(why), nullptr) << why;
    EXPECT_EQ(store.Best(why)->frames, run.FinishFrames());

    // A damaged file is named in the log and given up.
    std::ofstream(store.BestPath(ref), std::ios::binary) << "quorbit-replay 1\nfile lev";
    RaceAgain(run);
    g.levels->Level(1).Blocks.at(0).scaleX += 1;  // another version of track 1
    store.Forget();
    EXPECT_EQ(store.Best(why), nullptr);
    g.levels->Level(1).Blocks.at(0).scaleX -= 1;
    store.Forget();
    EXPECT_EQ(store.Best(why), nullptr);
    EXPECT_NE(why.find("track-01-best.replay: line 2"), std::string::npos) << why;
}

TEST(RecordedRuns, ARestartAfterAnExplosionStandsOnNothingSoAHeldJumpWaits) {
    // The car blows up standing on a deadly block with Space held; the
    // restarted run must begin as a started one does, or its replay (which
    // starts fresh) would not jump where the run did.
    test::Drive d("restart", test::TrackHead() + " block -2 0 -5 4 1 10 tex road deadly\n");
    bool died = false;
    for (int i = 0; i < 200 && !died; ++i) died = d.frame({DIK_SPACE}).events & EventDeath;
    ASSERT_TRUE(died);
    EXPECT_FALSE(d.frame({DIK_SPACE}).events & EventJump);
    EXPECT_EQ(d.game().recorder->Frames().size(), 1u);
}

}  // namespace
}  // namespace qb
