// A run from start to finish: times, the fastest-times table, the name
// entry, the pause menu and the statistics.
#include <algorithm>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "shell/GuiLink.h"
#include "shell/KeyboardControls.h"
#include "shell/RaceTime.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

// A start block and a finish block just ahead; `times` lines fill the table.
std::string FinishTrack(const std::string& times = "", const std::string& stars = "") {
    return TrackHead() + times + " block -2 0 -5 4 1 10 tex road\n block -2 0 5 4 1 4 tex flag finish\n" +
           stars;
}

// Lets the car settle, then puts it over the finish with the clock at
// `frames`, so the next frame lands there.
void FinishAt(Drive& d, int32_t frames) {
    ASSERT_TRUE(d.settle());
    d.car().Posz(7);
    d.game().RaceFrames = frames;
    const SimRow& r = d.frame();
    ASSERT_TRUE(r.events & EventFinish);
}

TEST(Finish, AFirstTimeOpensTheNameEntryWithTheTime) {
    Drive d("finish", FinishTrack());
    d.game().sound->SetMusicVolume(50);
    d.game().sound->PlayMusic(MusicTrack);
    FinishAt(d, 252);
    frmGame& g = d.game();
    EXPECT_EQ(g.GameState, NameEntry);
    EXPECT_EQ(d.hp().audio.musicPlaying, MusicWin) << "the win piece replaces the track's";
    EXPECT_EQ(FieldText(g, 2), "Time = 10:08");
    EXPECT_EQ(g.LastFinishSeconds, 10);
    EXPECT_EQ(g.LastFinishHundredths, 8);
    // The track is already rebuilt behind the screen, the car back at the start.
    EXPECT_EQ(d.car().Posz(), 1.0f);
    EXPECT_EQ(g.StarsCollected, 0);
    // No stars on this track: every finish wins the all-stars flag.
    EXPECT_TRUE(g.levels->AllStars(1));
    EXPECT_EQ(d.run->Result(), "result: finished 10:08 stars 0/0");
}

const std::string Table = " time 1 \"ANNA\" 5 48\n time 2 \"BEN\" 8 0\n time 3 \"CARA\" 10 8\n";

// Equal to third place is not enough; one frame faster is.
TEST(Finish, OnlyATimeFasterThanThirdPlaceQualifies) {
    struct Case {
        int32_t frames;
        int16_t screen;
        int32_t timeField;
        const char* time;
    };
    for (const Case& c : {Case{252, MadeIt, 1, "Time = 10:08"}, Case{251, NameEntry, 2, "Time = 10:04"}}) {
        SCOPED_TRACE(c.frames);
        Drive d("table" + std::to_string(c.frames), FinishTrack(Table));
        FinishAt(d, c.frames);
        EXPECT_EQ(d.game().GameState, c.screen);
        EXPECT_EQ(FieldText(d.game(), c.timeField), c.time);
    }
}

TEST(Finish, TheAllStarsFlagNeedsEveryStar) {
    Drive d("allstars", FinishTrack("", " star 0 1 2\n star 0 9 30\n"));
    ASSERT_TRUE(d.settle());
    while (d.car().Posz() < 3) d.frame({DIK_UP});
    EXPECT_EQ(d.game().StarsCollected, 1);
    EXPECT_EQ(FieldText(d.game(), 1), "Stars 1 / of 2");
    d.car().Posz(7);
    d.car().ForwardVelocity(0);
    ASSERT_TRUE(d.frame().events & EventFinish);
    EXPECT_FALSE(d.game().levels->AllStars(1));
    EXPECT_EQ(d.run->Result(), "result: finished " +
                                   RaceTime::FromFrames(d.game().Events.FinishFrames).Clock() + " stars 1/2");
}

// The finish puts the star count back to 0 for the next run before either
// finish screen is read: both must show what the run took.
TEST(Finish, BothFinishScreensShowTheStarsTheRunTook) {
    for (const auto& [table, screen] : {std::pair{Table, MadeIt}, std::pair{std::string(), NameEntry}}) {
        SCOPED_TRACE(screen);
        Drive d("stars" + std::to_string(screen), FinishTrack(table, " star 0 1 2\n star 0 9 30\n"));
        ASSERT_TRUE(d.settle());
        while (d.car().Posz() < 3) d.frame({DIK_UP});
        d.car().Posz(7);
        d.game().RaceFrames = 300;
        ASSERT_TRUE(d.frame().events & EventFinish);
        frmGame& g = d.game();
        EXPECT_EQ(g.GameState, screen);
        EXPECT_EQ(g.StarsCollected, 0);
        std::vector<std::string> texts;
        for (int32_t i = 1; g.gui->HasField(i); ++i) texts.push_back(FieldText(g, i));
        EXPECT_EQ(std::count(texts.begin(), texts.end(), "Stars 1 / of 2"), 1)
            << ::testing::PrintToString(texts);
    }
}

// One menu pass with exactly these keys down.
void Pass(Drive& d, std::initializer_list<uint8_t> keys = {}) {
    d.frame(keys);
}
void Type(Drive& d, uint8_t key) {
    Pass(d);
    Pass(d, {key});
}

TEST(NameEntry, TypesCapitalsUpToFifteenAndStoresTheTime) {
    Drive d("name", FinishTrack());
    FinishAt(d, 251);
    frmGame& g = d.game();
    ASSERT_EQ(g.GameState, NameEntry);
    Type(d, DIK_A);
    EXPECT_EQ(FieldText(g, 1), "A");
    Pass(d, {DIK_A});  // held: no repeat
    EXPECT_EQ(FieldText(g, 1), "A");
    Pass(d);
    Pass(d, {DIK_B, DIK_A});  // together: taken in the order A to Z
    EXPECT_EQ(FieldText(g, 1), "AAB");
    Type(d, DIK_BACK);
    EXPECT_EQ(FieldText(g, 1), "AA");
    Type(d, DIK_SPACE);
    for (int i = 0; i < 12; ++i) Type(d, KeyboardControls::LetterKeys[static_cast<size_t>(i)]);
    EXPECT_EQ(FieldText(g, 1), "AA ABCDEFGHIJKL");
    Type(d, DIK_Z);  // a 16th character alone is refused
    EXPECT_EQ(FieldText(g, 1), "AA ABCDEFGHIJKL");
    Pass(d, {DIK_RETURN});
    EXPECT_EQ(g.GameState, TrackChoice);
    const FastestTimes& t = g.levels->Level(1).Times;
    EXPECT_EQ(t.Names[0], "AA ABCDEFGHIJKL");
    EXPECT_EQ(t.Seconds[0], 10);
    EXPECT_EQ(t.Hundredths[0], 4);
    // The table was written into the track file in place.
    LevelStructure reread(d.run->platform().platform.paths.levelsFile());
    std::string error;
    ASSERT_TRUE(reread.LoadLevels(error)) << error;
    EXPECT_EQ(reread.Level(1).Times.Names[0], "AA ABCDEFGHIJKL");
}

TEST(Controls, HOpensTheNameEntryOnlyInATestBuild) {
    Drive d("hkey", FinishTrack());
    FinishAt(d, 251);
    Pass(d, {DIK_RETURN});
    frmGame& g = d.game();
    g.GameState = Playing;
    g.gui->SetupScreen(0);
    d.frame();
    d.frame({DIK_H});
    if (KeyboardControls::TestKeys) {
        EXPECT_EQ(g.GameState, NameEntry);
        EXPECT_EQ(g.LastFinishSeconds, 10);
    } else {
        // The game players get: H is just a key.
        EXPECT_EQ(g.GameState, Playing);
    }
}

TEST(PauseMenu, FreezesTheRunAndResumesWhereItStopped) {
    Drive d("pause", FinishTrack());
    frmGame& g = d.game();
    d.frames(5, {DIK_UP});
    const int32_t clock = g.RaceFrames;
    const float z = d.car().Posz();
    Type(d, DIK_ESCAPE);
    ASSERT_EQ(g.GameState, PauseMenu);
    const int32_t paused = g.RaceFrames;
    EXPECT_EQ(paused, clock + 2);
    EXPECT_EQ(CurrentTab(g), 2);
    d.frames(10);
    EXPECT_EQ(g.RaceFrames, paused);
    EXPECT_EQ(g.gui->Button(33).IsMouseOver(), false);
    d.frame({DIK_DOWN});
    EXPECT_EQ(CurrentTab(g), 3);
    EXPECT_TRUE(g.gui->Button(33).IsMouseOver());
    EXPECT_FALSE(g.gui->Button(32).IsMouseOver());
    Type(d, DIK_DOWN);
    Type(d, DIK_DOWN);
    EXPECT_EQ(CurrentTab(g), 1) << "down from the last item wraps to the first";
    Type(d, DIK_ESCAPE);
    EXPECT_EQ(g.GameState, Playing);
    EXPECT_EQ(g.RaceFrames, paused);
    EXPECT_GT(d.car().Posz(), z);
}

TEST(PauseMenu, RestartRebuildsTheTrackAndBooksTheRun) {
    Drive d("restart", TrackHead() + " block -2 0 -5 4 1 100 tex road\n");
    frmGame& g = d.game();
    d.frames(20, {DIK_UP});
    Type(d, DIK_ESCAPE);
    d.frame({DIK_UP});  // held since before the menu opened: no move
    EXPECT_EQ(CurrentTab(g), 2);
    Type(d, DIK_UP);  // from exit track (2) to restart (1)
    ASSERT_EQ(CurrentTab(g), 1);
    d.frame({DIK_RETURN});
    EXPECT_EQ(g.GameState, Playing);
    EXPECT_EQ(g.RaceFrames, 0);
    EXPECT_EQ(d.car().Posz(), 1.0f);
    EXPECT_GT(g.stats->LevelStats[1].PlayTime, 0);
}

TEST(PauseMenu, AReturnHeldOnExitTrackStaysOnTheTrackChoice) {
    Drive d("exittrack", TrackHead() + " block -2 0 -5 4 1 100 tex road\n");
    frmGame& g = d.game();
    d.frames(10, {DIK_UP});
    Type(d, DIK_ESCAPE);
    ASSERT_EQ(g.GameState, PauseMenu);
    ASSERT_EQ(CurrentTab(g), 2);
    // A person's press lasts several passes.
    for (int i = 0; i < 4; ++i) d.frame({DIK_RETURN});
    EXPECT_EQ(g.GameState, TrackChoice);
    Type(d, DIK_RETURN);  // a fresh press starts the track again
    EXPECT_EQ(g.GameState, Playing);
}

TEST(Statistics, EachDeathBooksItsOwnTimeOnce) {
    Drive d("stats", TrackHead() + " block -2 0 200 4 1 4 tex road\n");
    frmGame& g = d.game();
    const uint32_t start = d.hp().clock.tickCount();
    int deaths = 0;
    uint32_t deathTicks[2] = {0, 0};
    while (deaths < 2) {
        const SimRow& r = d.frame({DIK_SPACE});
        if (r.dead) deathTicks[deaths++] = d.hp().clock.tickCount();
        ASSERT_LT(d.rows.size(), 500u);
    }
    d.frame();  // the second restart
    // The first restart happened in the frame after the first death, 40 ms later.
    const int32_t expected = static_cast<int32_t>(deathTicks[1] + 40 - start);
    EXPECT_EQ(g.stats->LevelStats[1].PlayTime, expected);
    EXPECT_EQ(g.stats->TotalPlayTime, expected);
    EXPECT_EQ(g.stats->LevelStats[1].FallenOff, 2);
    EXPECT_EQ(g.stats->LevelStats[1].Jumps, 0) << "no jump in the air";
}

}  // namespace
}  // namespace qb
