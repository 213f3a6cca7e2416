// Runs the game records and races against: what a finish keeps, the ghost of
// the best run beside the live one, the race clock with the difference at
// the finish, and the options that switch them off.
#include "persist/Settings.h"
#include "physics/clsPlayer.h"
#include "shell/GhostCar.h"
#include "shell/RaceClock.h"
#include "shell/RaceTime.h"
#include "shell/RunRecorder.h"
#include "tests/physics/DriveTest.h"
#include "tests/replay/ReplayRuns.h"

namespace qb {
namespace {

using namespace test;

TEST(RecordedRuns, AFinishKeepsTheRunAsTheBestAndTheLastWithTheDriversName) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(2, error)) << error;
    // Jumping with Return instead of Space, with Return already held at the
    // start (that press does not jump until it is let go).
    KeyScript script = Solution(2);
    for (KeyStep& s : script.steps)
        for (uint8_t& k : s.keys)
            if (k == DIK_SPACE) k = DIK_RETURN;
    script.steps.front().keys.push_back(DIK_RETURN);
    Race(run, script);
    ASSERT_TRUE(run.Finished()) << run.Result();

    ReplayStore& store = *run.game().replays;
    const TrackRef ref = store.CurrentTrack();
    const Replay best = Read(store.BestPath(ref));
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

    // Driven again, the replay reproduces the run's time and stars in quorbit-sim.
    std::ostringstream out, err;
    EXPECT_EQ(RunSimulator({"--game-dir", GameDir, "--replay", store.BestPath(ref)}, out, err), 0)
        << out.str() << err.str();
}

TEST(RaceClock, ShowsTheTimeWithTheBestBesideItAndTheDifferenceAtTheFinish) {
    EXPECT_EQ(RaceClock::Difference(560, 572), "-0:48");
    EXPECT_EQ(RaceClock::Difference(600, 572), "+1:12");
    EXPECT_EQ(RaceClock::Difference(572, 572), "+0:00");

    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    frmGame& g = run.game();
    ReplayStore& store = *g.replays;
    PlayOn(run, 2);
    EXPECT_EQ(FieldText(g, RaceClock::Field), "0:08");
    const KeyScript script = Solution(1);
    Race(run, script);
    ASSERT_TRUE(run.Finished());
    EXPECT_EQ(FieldText(g, 3), "") << "no best run before the first finish";

    // The best waited two frames (above); this run waits 13 and is 11
    // frames slower.
    RaceAgain(run);
    const int32_t best = Read(store.BestPath(store.CurrentTrack())).frames;
    KeyScript slower = script;
    slower.steps.insert(slower.steps.begin(), KeyStep{12, {}});
    run.Step({});
    EXPECT_EQ(FieldText(g, RaceClock::Field), "0:04   best " + RaceTime::FromFrames(best).Clock());
    Race(run, slower);
    EXPECT_EQ(FieldText(g, 3), "+0:44 against the best");
    EXPECT_EQ(Read(store.LastPath()).frames, best + 11);
    EXPECT_EQ(Read(store.BestPath(store.CurrentTrack())).frames, best);

    // Hidden with C on the options screen, for good: no clock, no difference.
    g.GameState = Options;
    g.gui->SetupScreen(0);
    run.Step({});
    run.Step({46});  // C
    run.Step({46});  // held: once per press
    EXPECT_EQ(FieldText(g, 4), "Clock (C): off");
    Settings saved(g.settings->path());
    saved.Load();
    EXPECT_FALSE(saved.GetBool(RaceClock::SettingKey, true));
    RaceAgain(run);
    run.Step({});
    EXPECT_EQ(FieldText(g, RaceClock::Field), "");
}

TEST(Ghost, FollowsTheBestRunFrameForFrameAndChangesNothingOfTheLiveRun) {
    // Track 15 rides two moving platforms: plenty to disturb.
    const KeyScript best = Solution(15);
    KeyScript other = best;  // a slower run with the ghost ahead of it
    other.steps.insert(other.steps.begin(), KeyStep{7, {}});

    SimRun withGhost(GameDir);
    std::string error;
    ASSERT_TRUE(withGhost.Start(15, error)) << error;
    std::vector<SimRow> bestRows;
    Race(withGhost, best, &bestRows);
    ASSERT_TRUE(withGhost.Finished());
    RaceAgain(withGhost);
    GhostCar& ghost = *withGhost.game().ghost;
    ASSERT_EQ(ghost.Frames(), static_cast<int64_t>(bestRows.size()) - 1);
    for (int64_t f = 1; f <= ghost.Frames(); ++f) {
        const Vector3& p = bestRows[static_cast<size_t>(f - 1)].position;
        ASSERT_EQ(ghost.At(f)->position.z, p.z) << f;
        ASSERT_EQ(ghost.At(f)->position.y, p.y) << f;
    }
    EXPECT_EQ(ghost.At(ghost.Frames() + 1), nullptr);
    const int drawsBefore = withGhost.platform().graphics.drawCalls;
    const std::string seen = Race(withGhost, other);

    // The same history with the ghost switched off (a click on its line of
    // the options screen) before the second run.
    SimRun alone(GameDir);
    ASSERT_TRUE(alone.Start(15, error)) << error;
    Race(alone, best);
    alone.game().GameState = Options;
    alone.game().gui->SetupScreen(0);
    alone.game().Form_MouseDown(1, 300, 460);
    EXPECT_EQ(FieldText(alone.game(), 3), "Ghost (G): off");
    RaceAgain(alone);
    EXPECT_EQ(alone.game().ghost->Frames(), 0);
    const std::string unseen = Race(alone, other);
    EXPECT_TRUE(unseen == seen) << "the ghost changed the run";
    EXPECT_NE(seen.find("finish"), std::string::npos);
    // The ghost was there to see: it drew the car's model a second time.
    EXPECT_GT(withGhost.platform().graphics.drawCalls - drawsBefore, 0);
}

TEST(Ghost, IsASeeThroughCarThatHidesBehindBlocksAndLeavesTheDeviceAsItFoundIt) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    Race(run, Solution(1));
    ASSERT_TRUE(run.Finished());
    RaceAgain(run);
    PlayOn(run, 40);  // standing still, the ghost drives away
    using Draw = HeadlessGraphics::MeshDraw;
    const std::vector<Draw> draws = run.platform().graphics.meshDraws;
    auto state = [](const Draw& d, RenderState s, uint32_t unset) {
        const auto it = d.states.find(s);
        return it == d.states.end() ? unset : it->second;
    };
    auto stage = [](const Draw& d, TextureStageState s, uint32_t unset) {
        const auto it = d.stage.find(s);
        return it == d.stage.end() ? unset : it->second;
    };
    auto seeThrough = [&](const Draw& d) {
        return stage(d, TextureStageState::AlphaArg2, TaCurrent) == TaTFactor;
    };
    // The frame: the live car, then the ghost's depth, then its skin at half
    // cover, tested against the depth of the blocks in front of it.
    const auto first = std::find_if(draws.begin(), draws.end(), seeThrough);
    ASSERT_NE(first, draws.end()) << "no see-through ghost drawn";
    const auto parts = std::count_if(draws.begin(), draws.end(), seeThrough);
    ASSERT_GE(first - draws.begin(), 2 * parts) << "the live car and the ghost's depth come first";
    for (auto d = first - parts; d != first; ++d) {
        EXPECT_EQ(state(*d, RenderState::SrcBlend, 0), BlendZero) << "depth only: nothing painted";
        EXPECT_EQ(state(*d, RenderState::DestBlend, 0), BlendOne);
        EXPECT_EQ(state(*d, RenderState::ZWriteEnable, 1), 1u);
    }
    for (auto d = first; d != first + parts; ++d) {
        EXPECT_EQ(state(*d, RenderState::ZEnable, 0), 1u);
        EXPECT_EQ(state(*d, RenderState::ZWriteEnable, 1), 0u);
        EXPECT_EQ(state(*d, RenderState::SrcBlend, 0), BlendSrcAlpha) << "painted over, not added as light";
        EXPECT_EQ(state(*d, RenderState::DestBlend, 0), BlendInvSrcAlpha);
        EXPECT_EQ(state(*d, RenderState::TextureFactor, 0) >> 24, 0x80u);
        EXPECT_EQ(stage(*d, TextureStageState::AlphaOp, 0), TopModulate);
        EXPECT_EQ(stage(*d, TextureStageState::ColorArg2, TaCurrent), TaCurrent) << "lit as the car";
    }
    // Its world is where the best run was, ahead of the car standing still.
    EXPECT_GT(first->world.m[3][2], (first - parts - 1)->world.m[3][2] + 5);
    // What is drawn next sees the device's usual states again.
    const HeadlessGraphics& g = run.platform().graphics;
    EXPECT_EQ(g.renderStates.at(RenderState::ZWriteEnable), 1u);
    EXPECT_EQ(g.stageStates.at(TextureStageState::AlphaOp), TopSelectArg1);
    EXPECT_EQ(g.stageStates.at(TextureStageState::AlphaArg2), TaCurrent);
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
