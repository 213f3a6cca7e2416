// Zones B to F and the user-made tracks.
#include <gtest/gtest.h>

#include "level/LevelFileReader.h"
#include "level/TrackObjects.h"
#include "persist/Stats.h"
#include "shell/KeyboardControls.h"
#include "tests/gui/GuiTestGame.h"
#include "world/clsBackground.h"

namespace qb {
namespace {

using test::GuiGame;
using V = std::vector<int>;

TEST(Zones, ZonesWithTracksOpenTheOthersAreDimmedAndDead) {
    // 25 tracks: zones A and B full, C holds 21 to 25, D to F nothing.
    GuiGame t("zones", 25, {0, -1, 0, 0, 0, 0});
    ASSERT_TRUE(t.start());
    t.show(ZoneChoice);
    EXPECT_EQ(t.enabled(), (V{2, 4, 5, 6, 7, 8, 9, 46, 59}));  // zone B's all-stars marker
    EXPECT_EQ(t.gui().TabCount, 5);
    EXPECT_EQ(std::tuple(t.button(5).TabIndex(), t.button(6).TabIndex()), std::tuple(4, 5));
    for (int s = 7; s <= 9; ++s) {
        EXPECT_EQ(t.button(s).TabIndex(), 0);
        EXPECT_TRUE(t.button(s).AlphaOn());
        // Pointing at an empty zone lights nothing; clicking it does nothing.
        t.pointAt(s);
        EXPECT_EQ(t.highlighted(), V{4});
        t.click(s);
        EXPECT_EQ(t.game->GameState, ZoneChoice);
    }
    t.pointAt(6);
    EXPECT_EQ(t.highlighted(), V{6});
    EXPECT_EQ(t.gui().CurrentTab, 5);

    t.click(5);
    ASSERT_EQ(t.game->GameState, TrackChoice);
    const LevelStructure& lv = *t.game->levels;
    EXPECT_EQ(std::tuple(lv.CurrentZone, lv.ZoneFirstLevel, lv.ZoneLastLevel, lv.CurrentLevel),
              std::tuple(2, 11, 20, 11));
    EXPECT_EQ(t.field(7), "1 / 10");
    EXPECT_EQ(t.game->track->BuiltLevel, 11);
    EXPECT_EQ(t.game->background->pictureName(), t.dir + "backgrounds/bk001.jpg");
    t.click(25);
    EXPECT_EQ(lv.CurrentLevel, 20);
    EXPECT_EQ(t.field(7), "10 / 10");

    // Zone C ends where the file does.
    t.show(ZoneChoice);
    t.click(6);
    EXPECT_EQ(lv.ZoneLastLevel, 25);
    EXPECT_EQ(t.field(7), "1 / 5");
    t.click(25);
    EXPECT_EQ(lv.CurrentLevel, 25);
    EXPECT_EQ(t.field(7), "5 / 5");
    EXPECT_EQ(t.game->background->pictureName(), t.dir + "backgrounds/bk003.jpg");
}

TEST(Zones, ArrowKeysMoveOverTheZonesAndReturnOpensTheFocusedOne) {
    GuiGame t("zonekeys", 25);
    ASSERT_TRUE(t.start());
    t.show(ZoneChoice);
    Gui& g = t.gui();
    g.MoveFocusToward(1, 0);
    EXPECT_EQ(t.highlighted(), V{5});
    g.MoveFocusToward(1, 0);
    EXPECT_EQ(t.highlighted(), V{6});
    g.MoveFocusToward(1, 0);  // nothing further right
    EXPECT_EQ(t.highlighted(), V{6});
    g.MoveFocusToward(0, 1);  // D to F are empty: no stop below
    EXPECT_EQ(t.highlighted(), V{6});
    g.MoveFocusToward(0, -1);
    EXPECT_EQ(t.highlighted(), V{59});
    g.MoveFocusToward(0, -1);
    EXPECT_EQ(t.highlighted(), V{2});
    g.MoveFocusToward(0, 1);
    g.MoveFocusToward(0, 1);
    g.MoveFocusToward(-1, 0);
    g.MoveFocusToward(-1, 0);
    EXPECT_EQ(t.highlighted(), V{4});
    g.MoveFocusToward(1, 0);
    g.ActivateZoneChoiceFocus();
    EXPECT_EQ(std::tuple(t.game->GameState, t.game->levels->CurrentZone, t.game->levels->CurrentLevel),
              std::tuple(TrackChoice, 2, 11));
}

TEST(Zones, EveryZoneDrivesToItsOwnPiece) {
    GuiGame t("zonemusic", 25);
    ASSERT_TRUE(t.start());
    t.game->sound->SetMusicVolume(50);
    for (int zoneSlot : {4, 5, 6}) {
        t.show(ZoneChoice);
        t.click(zoneSlot);
        ASSERT_EQ(t.game->GameState, TrackChoice);
        EXPECT_EQ(t.hp.audio.musicPlaying, 0);
        t.click(26);
        ASSERT_EQ(t.game->GameState, Playing);
        EXPECT_EQ(t.hp.audio.musicPlaying, zoneSlot - 3) << "zone slot " << zoneSlot;
    }
}

TEST(UserTracks, NoneFoundShowsTheEmptyTableAndPlaysNothing) {
    GuiGame t("nouser");
    ASSERT_TRUE(t.start());
    t.show(ZoneChoice);
    t.click(59);
    ASSERT_EQ(t.game->GameState, UserTrackChoice);
    EXPECT_EQ(t.enabled(), (V{2, 24, 25, 26, 27, 28, 29}));
    ASSERT_EQ(t.gui().FieldCount, 8);
    // No track, no name.
    for (int i = 1; i <= 8; ++i)
        EXPECT_EQ(t.field(i), i <= 3 ? "No Name" : i <= 6 ? "0:0" : i == 7 ? "0 / 0" : "") << i;
    t.click(26);
    t.click(24);
    EXPECT_EQ(t.game->GameState, UserTrackChoice);
    EXPECT_EQ(t.field(7), "0 / 0");
    EXPECT_EQ(t.game->track->BlockUpper, -1);
    t.click(2);
    EXPECT_EQ(t.game->GameState, ZoneChoice);
}

TEST(UserTracks, BrowsedInNameOrderPlayedAndTheirTimesSavedIntoTheirFile) {
    GuiGame t("user", 10);
    std::filesystem::create_directories(t.dir + "usertracks");
    test::WriteTrackFile(t.dir + "usertracks/b_hills.dat", 1, {}, {test::Times("BEA", 40, 12)});
    test::WriteTrackFile(t.dir + "usertracks/a_loops.dat", 2, {},
                         {test::Times("AL", 30, 8), test::Times("ALI", 31, 0)});
    std::ofstream(t.dir + "usertracks/notes.txt") << "ignored";
    ASSERT_TRUE(t.start());
    const std::string mainFile = t.game->levels->path();
    t.show(ZoneChoice);
    t.click(59);
    ASSERT_EQ(t.game->GameState, UserTrackChoice);
    EXPECT_EQ(t.field(7), "1 / 3");
    EXPECT_EQ(t.field(8), "a_loops.dat") << "a track without a name goes by its file's";
    EXPECT_EQ(t.field(1), "AL");
    EXPECT_EQ(t.field(4), "30:08");
    EXPECT_EQ(t.game->levels->path(), t.dir + "usertracks/a_loops.dat");
    t.click(24);
    EXPECT_EQ(t.field(7), "2 / 3");
    EXPECT_EQ(t.field(1), "ALI");
    t.click(24);
    EXPECT_EQ(t.field(7), "3 / 3");
    EXPECT_EQ(t.field(1), "BEA");
    EXPECT_EQ(t.game->levels->path(), t.dir + "usertracks/b_hills.dat");
    t.click(24);
    EXPECT_EQ(t.field(7), "1 / 3");
    t.click(25);
    EXPECT_EQ(t.field(7), "3 / 3");
    EXPECT_EQ(t.game->track->BuiltLevel, 1);

    // Driven and finished: the time goes into b_hills.dat, and the run's
    // statistics into its own file, not into the main ones. The third user
    // track drives to the third piece.
    t.game->sound->SetMusicVolume(50);
    t.click(26);
    ASSERT_EQ(t.game->GameState, Playing);
    EXPECT_EQ(t.game->sound->CurrentMusic, 3);
    t.game->stats->JumpCount = 2;
    t.game->resetgame(false);
    ASSERT_TRUE(t.game->levels->SaveFastestTime("ZED", 20, 4));
    t.game->GameState = TrackChoice;
    t.gui().SetupScreen(3);
    EXPECT_EQ(t.game->GameState, UserTrackChoice);
    EXPECT_EQ(t.field(1), "ZED");
    EXPECT_EQ(t.field(2), "BEA");
    LevelStructure reread(t.dir + "usertracks/b_hills.dat");
    std::string error;
    ASSERT_TRUE(reread.LoadLevels(error)) << error;
    EXPECT_EQ(reread.Level(1).Times.Seconds[0], 20);
    EXPECT_TRUE(std::filesystem::exists(t.dir + "usertracks/b_hills.stats"));

    // Back on the zone choice the game's own tracks are in place again.
    t.click(2);
    EXPECT_EQ(t.game->levels->path(), mainFile);
    EXPECT_EQ(t.game->levels->LevelCount(), 10);
    EXPECT_EQ(t.game->stats->LevelCount(), 10);
    EXPECT_EQ(t.game->stats->LevelStats[1].Jumps, 0);
}

}  // namespace
}  // namespace qb
