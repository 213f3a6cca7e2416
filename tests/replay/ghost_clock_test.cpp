// The ghost of the best run and the race clock on screen: the ghost follows
// the best run frame for frame and changes nothing of the live one; the
// clock shows the run's time, the best beside it, and the difference at the
// finish.
#include <gtest/gtest.h>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/Settings.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/GhostCar.h"
#include "shell/GuiLink.h"
#include "shell/RaceClock.h"
#include "shell/RaceTime.h"
#include "shell/ReplayStore.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"

namespace qb {
namespace {

const std::string GameDir = QUORBIT_GAME_DIR;

KeyScript Solution(const std::string& name) {
    KeyScript s;
    std::string error;
    EXPECT_TRUE(LoadKeyScript(std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/" + name, s, error))
        << error;
    return s;
}

// Every frame of a drive as text, to the last digit.
std::string Drive(SimRun& run, const KeyScript& script, std::vector<SimRow>* rows = nullptr) {
    std::string digest;
    for (int64_t f = 0; f < script.TotalFrames() && run.game().GameState == Playing; ++f) {
        const SimRow row = run.Step(*script.KeysAt(f));
        if (rows) rows->push_back(row);
        digest += FormatSimRow(row) + "\n";
    }
    return digest;
}

void RaceAgain(SimRun& run) {
    frmGame& g = run.game();
    g.GameState = TrackChoice;
    g.track->BuildLevel(g.levels->CurrentLevel, false);
    g.startPlaying();
    g.gui->SetupScreen(0);
}

TEST(Ghost, FollowsTheBestRunFrameForFrameAndChangesNothingOfTheLiveRun) {
    // Track 12 has moving platforms and bounce pads: plenty to disturb.
    const KeyScript best = Solution("12.keys");
    KeyScript other = best;  // a slower run with the ghost ahead of it
    other.steps.insert(other.steps.begin(), KeyStep{7, {}});

    SimRun withGhost(GameDir);
    std::string error;
    ASSERT_TRUE(withGhost.Start(12, error)) << error;
    std::vector<SimRow> bestRows;
    Drive(withGhost, best, &bestRows);
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
    const std::string seen = Drive(withGhost, other);

    // The same history with the ghost turned off before the second run.
    SimRun alone(GameDir);
    ASSERT_TRUE(alone.Start(12, error)) << error;
    Drive(alone, best);
    alone.game().settings->SetBool(GhostCar::SettingKey, false);
    RaceAgain(alone);
    EXPECT_EQ(alone.game().ghost->Frames(), 0);
    const std::string unseen = Drive(alone, other);
    EXPECT_TRUE(unseen == seen) << "the ghost changed the run";
    EXPECT_NE(seen.find("finish"), std::string::npos);
    // The ghost was there to see: it drew the car's model a second time.
    EXPECT_GT(withGhost.platform().graphics.drawCalls - drawsBefore, 0);
}

TEST(Ghost, TurnedOffItIsNeitherDrivenNorDrawn) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    Drive(run, Solution("01.keys"));
    ASSERT_TRUE(run.Finished());
    run.game().settings->SetBool(GhostCar::SettingKey, false);
    RaceAgain(run);
    EXPECT_EQ(run.game().ghost->Frames(), 0);
}

TEST(RaceClock, ShowsTheTimeWithTheBestBesideItAndTheDifferenceAtTheFinish) {
    EXPECT_EQ(RaceClock::Difference(560, 572), "-0:48");
    EXPECT_EQ(RaceClock::Difference(600, 572), "+1:12");
    EXPECT_EQ(RaceClock::Difference(572, 572), "+0:00");

    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    frmGame& g = run.game();
    run.Step({});
    run.Step({});
    EXPECT_EQ(FieldText(g, RaceClock::Field), "0:08");
    const KeyScript script = Solution("01.keys");
    Drive(run, script);
    ASSERT_TRUE(run.Finished());
    EXPECT_EQ(FieldText(g, 3), "") << "no best run before the first finish";

    // The best waited two frames (above); this run waits 13 and is 11
    // frames slower.
    RaceAgain(run);
    KeyScript slower = script;
    slower.steps.insert(slower.steps.begin(), KeyStep{12, {}});
    run.Step({});
    std::string why;
    ASSERT_NE(g.replays->Best(why), nullptr) << why;
    EXPECT_EQ(FieldText(g, RaceClock::Field),
              "0:04   best " + RaceTime::FromFrames(g.replays->Best(why)->frames).Clock());
    Drive(run, slower);
    EXPECT_EQ(FieldText(g, 3), "+0:44 against the best");

    // Hidden: no clock, no difference.
    g.settings->SetBool(RaceClock::SettingKey, false);
    RaceAgain(run);
    run.Step({});
    EXPECT_EQ(FieldText(g, RaceClock::Field), "");
}

TEST(RaceOptions, GAndCOrAClickSwitchTheGhostAndTheClockAndTheChoiceIsSaved) {
    SimRun run(GameDir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    frmGame& g = run.game();
    g.GameState = Options;
    g.gui->SetupScreen(0);
    EXPECT_EQ(FieldText(g, 3), "Ghost (G): on");
    EXPECT_EQ(FieldText(g, 4), "Race clock (C): on");
    run.Step({});
    run.Step({34});  // G
    run.Step({34});  // held: once per press
    EXPECT_EQ(FieldText(g, 3), "Ghost (G): off");
    run.Step({46});  // C
    EXPECT_EQ(FieldText(g, 4), "Race clock (C): off");
    EXPECT_FALSE(g.settings->GetBool(GhostCar::SettingKey, true));
    Settings saved(g.settings->path());
    saved.Load();
    EXPECT_FALSE(saved.GetBool(GhostCar::SettingKey, true));
    EXPECT_FALSE(saved.GetBool(RaceClock::SettingKey, true));
    // A click on the ghost's line switches it back on.
    g.Form_MouseDown(1, 300, 460);
    EXPECT_EQ(FieldText(g, 3), "Ghost (G): on");
}

}  // namespace
}  // namespace qb
