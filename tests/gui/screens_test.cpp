// The screens: what each one enables, its keyboard stops, highlight and
// text fields; the pointer's highlight and click rules; the options and the
// instruction pages, used with the keyboard alone and with the mouse alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "audio/DXmusicSFX.h"
#include "level/TrackObjects.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "platform/DirectX.h"
#include "platform/KeyboardDevice.h"
#include "tests/gui/GuiTestGame.h"
#include "world/clsBackground.h"

namespace qb {
namespace {

using test::GuiGame;
using V = std::vector<int>;

// The texts of fields `from` to `to`.
std::vector<std::string> Fields(GuiGame& t, int from, int to) {
    std::vector<std::string> texts;
    for (int i = from; i <= to; ++i) texts.push_back(t.field(i));
    return texts;
}

TEST(Screens, MainMenuAfterStartUp) {
    GuiGame t("mainmenu");
    ASSERT_TRUE(t.start());
    EXPECT_EQ(t.game->GameState, MainMenu);
    EXPECT_EQ(t.enabled(), (V{1, 10, 15, 19, 20, 21, 22, 23}));
    for (int s = 19; s <= 23; ++s) EXPECT_EQ(t.button(s).TabIndex(), s - 18);
    EXPECT_EQ(t.highlighted(), V{19});
    EXPECT_EQ(std::tuple(t.gui().CurrentTab, t.gui().TabCount, t.gui().FieldCount), std::tuple(1, 5, 0));
    // The loading picture only stays for the loading.
    EXPECT_EQ(t.game->background->pictureName(), t.dir + "backgrounds/bk002.jpg");
    // Translucent backdrops as loaded.
    EXPECT_EQ(t.button(10).GetAlphaLevel(), 160);
    EXPECT_TRUE(t.button(27).AlphaOn());
    EXPECT_FALSE(t.button(1).AlphaOn());
}

TEST(Screens, EveryScreenItsSlotsStopsAndFields) {
    GuiGame t("table");
    ASSERT_TRUE(t.start());
    t.show(PauseMenu);
    EXPECT_EQ(t.enabled(), (V{30, 31, 32, 33, 34}));
    EXPECT_EQ(t.highlighted(), V{32});
    EXPECT_EQ(std::tuple(t.gui().CurrentTab, t.gui().TabCount), std::tuple(2, 4));

    t.game->levels->CurrentLevel = 3;  // three stars
    t.show(Playing);
    EXPECT_TRUE(t.enabled().empty());
    ASSERT_EQ(t.gui().FieldCount, 3);  // the star counter, the race clock and a note
    EXPECT_EQ(std::tuple(t.field(1), t.gui().Field(1).Left(), t.gui().Field(1).Colour()),
              std::tuple("Stars 0 / of 3", 500, 0xFFFFFF00u));
    // The pause menu keeps the star counter's field.
    t.show(PauseMenu);
    EXPECT_EQ(t.field(1), "Stars 0 / of 3");

    t.show(NameEntry);
    EXPECT_EQ(t.enabled(), V{35});
    EXPECT_EQ(t.field(1), "Your NAME");
    EXPECT_EQ(t.field(2), "Your Time = ");
    EXPECT_EQ(t.gui().Field(1).Get_Fontsize(), 30);
    t.game->StarsCollected = 2;  // what the drive took, shown beside the time
    t.show(MadeIt);
    EXPECT_EQ(t.enabled(), V{36});
    EXPECT_EQ(t.field(1), "Test Time");
    EXPECT_EQ(t.field(2), "Stars 2 / of 3");

    const V pages[] = {{1, 2, 38, 40, 41}, {1, 2, 3, 40, 41}, {1, 2, 39, 40, 41}};
    for (int p = 0; p < 3; ++p) {
        t.show(static_cast<int16_t>(InstructionsPage1 + p));
        EXPECT_EQ(t.enabled(), pages[p]);
        EXPECT_EQ(std::tuple(t.field(1), t.gui().Field(1).Right(), t.gui().Field(1).Get_Fontsize()),
                  std::tuple("Page " + std::to_string(p + 1) + " / 3", 740, 8));
    }
    t.show(ZoneChoice);
    EXPECT_EQ(t.enabled(), (V{2, 4, 5, 6, 7, 8, 9, 59}));
    EXPECT_EQ(std::tuple(t.button(2).TabIndex(), t.button(4).TabIndex(), t.button(59).TabIndex()),
              std::tuple(1, 2, 3));
    EXPECT_EQ(t.highlighted(), V{4});
    EXPECT_EQ(t.gui().CurrentTab, 2);
    // Loading draws no screen and leaves everything off.
    t.show(Loading);
    EXPECT_TRUE(t.enabled().empty());
}

TEST(Screens, OptionsShowTheVolumesAndTheModeInUse) {
    GuiGame t("options");
    ASSERT_TRUE(t.start());
    t.game->sound->SetSfxVolume(-400);
    t.game->sound->SetMusicVolume(70);
    t.click(20);
    EXPECT_EQ(t.game->GameState, Options);
    EXPECT_EQ(t.effectsPlayed(9), 1);
    EXPECT_EQ(t.field(1), "80%");
    EXPECT_EQ(t.field(2), "70%");
    EXPECT_EQ(t.gui().Field(1).Colour(), 0xFF000000u);
    // A fresh options file holds video mode 0; the game plays at 800x600
    // and marks that mode.
    EXPECT_EQ(t.game->options->Options.VideoMode, 0);
    EXPECT_EQ(t.enabled(), (V{1, 10, 11, 12, 13, 14, 15, 16, 17, 18, 37, 54, 55, 57}));
    t.game->dx->VideoMode = 2;
    t.show(Options);
    EXPECT_EQ(t.enabled(), (V{1, 10, 11, 12, 13, 14, 15, 16, 17, 18, 37, 53, 56, 57}));
}

TEST(Screens, VolumesStayInTheirRangeFromTheFileAndOnTheButtons) {
    GuiGame t("volumes");
    // An options.dat from outside the ranges: music 150 %, effects below silent.
    const int32_t stored[3] = {150, -2400, 1};
    std::ofstream(t.dir + "options.dat", std::ios::binary)
        .write(reinterpret_cast<const char*>(stored), sizeof stored);
    ASSERT_TRUE(t.start());
    t.show(Options);
    // The screen shows what plays.
    EXPECT_EQ(t.field(1), "0%");
    EXPECT_TRUE(t.game->sound->SfxMuted);
    EXPECT_EQ(t.field(2), "100%");
    EXPECT_FLOAT_EQ(t.hp.audio.musicGain, 1.0f);
    // Past either end a press changes nothing, not even the file.
    t.click(16);
    EXPECT_EQ(t.game->sound->SfxVolume, -2000);
    EXPECT_EQ(t.field(1), "0%");
    EXPECT_EQ(t.game->options->Options.SfxVolume, -2000);
    t.click(18);
    EXPECT_EQ(t.field(2), "100%");
    EXPECT_EQ(t.game->options->Options.MusicVolume, 100);
    t.click(17);
    EXPECT_EQ(t.field(1), "10%");
    t.click(37);
    EXPECT_EQ(t.field(2), "90%");
    EXPECT_EQ(t.game->options->Options.MusicVolume, 90);
}

TEST(Pointer, HighlightsOnlyButtonsWithARolloverAndMovesTheFocus) {
    GuiGame t("pointer");
    ASSERT_TRUE(t.start());
    // The backdrop has no roll-over picture: the highlight stays on Play.
    t.game->Form_MouseMove(200, 250);
    EXPECT_EQ(t.highlighted(), V{19});
    t.pointAt(20);
    EXPECT_EQ(t.highlighted(), V{20});
    EXPECT_EQ(t.gui().CurrentTab, 2);
    // Off every button: the last highlight stays.
    t.game->Form_MouseMove(5, 5);
    EXPECT_EQ(t.highlighted(), V{20});
    t.gui().MoveFocus(1);
    EXPECT_EQ(t.highlighted(), V{21});
    // The roll-over sound: once for the highlight, when it is drawn.
    const int before = t.effectsPlayed(8);
    t.game->RenderFrame();
    t.game->RenderFrame();
    EXPECT_EQ(t.effectsPlayed(8), before + 1);
    // Focus wraps both ways.
    t.gui().CurrentTab = 5;
    t.gui().MoveFocus(1);
    EXPECT_EQ(t.gui().CurrentTab, 1);
    EXPECT_EQ(t.highlighted(), V{19});
    t.gui().MoveFocus(-1);
    EXPECT_EQ(t.highlighted(), V{23});
}

TEST(Pointer, AClickJustOffAButtonDoesNothingAndOneOnItsCornerActs) {
    GuiGame t("click");
    ASSERT_TRUE(t.start());
    GUI_Button& play = t.button(19);
    t.game->Form_MouseDown(1, play.X() - 1, play.Y() + 10);
    t.game->Form_MouseDown(1, play.X() + 10, play.Y() + play.height());
    EXPECT_EQ(t.game->GameState, MainMenu);
    t.game->Form_MouseDown(1, play.X(), play.Y());
    EXPECT_EQ(t.game->GameState, ZoneChoice);
    // Main Menu goes back; a click in the empty sky does nothing.
    t.game->Form_MouseDown(1, 790, 590);
    EXPECT_EQ(t.game->GameState, ZoneChoice);
    t.click(2);
    EXPECT_EQ(t.game->GameState, MainMenu);
    t.click(23);
    EXPECT_EQ(t.game->GameState, Closing);
    EXPECT_FALSE(t.game->GameRunning);
}

TEST(TrackChoice, ArrowsWrapOverTheZoneAndTheTableShows) {
    GuiGame t("trackchoice", 12);
    ASSERT_TRUE(t.start());
    t.game->levels->Level(1).Times = test::Times(std::string("ANNA\0\0", 6) + " ", 5, 4);
    // The name is the settings text, on one line.
    t.game->levels->Level(1).Settings.SettingsText = " Mind\tthe Gaps\r\n";
    t.show(ZoneChoice);
    t.click(4);
    ASSERT_EQ(t.game->GameState, TrackChoice);
    EXPECT_EQ(t.game->levels->CurrentLevel, 1);
    EXPECT_EQ(t.enabled(), (V{2, 24, 25, 26, 27, 28, 29, 43, 51, 52}));
    ASSERT_EQ(t.gui().FieldCount, 14);  // 13, 14: why the best run cannot be watched
    EXPECT_EQ(Fields(t, 1, 12),
              (std::vector<std::string>{"ANNA", "", "", "5:04", "0:00", "0:00", "1 / 10", "0:00", "0 Times",
                                        "0 Times", "0 Times", "Mind the Gaps"}));
    EXPECT_EQ(t.game->track->BuiltLevel, 1);
    EXPECT_EQ(t.game->background->pictureName(), t.dir + "backgrounds/_default.jpg");
    EXPECT_EQ(t.button(24).LayoutY(), 475);
    EXPECT_EQ(t.button(26).LayoutY(), 495);

    t.click(25);
    EXPECT_EQ(t.game->levels->CurrentLevel, 10);
    EXPECT_EQ(t.field(7), "10 / 10");
    EXPECT_EQ(t.highlighted(), V{25});
    t.click(24);
    EXPECT_EQ(t.game->levels->CurrentLevel, 1);
    EXPECT_EQ(t.field(7), "1 / 10");
    EXPECT_EQ(t.game->track->BuiltLevel, 1);

    // The stats, the all-stars badge and the name follow the track; a name
    // too long for its place stops at a whole word.
    t.game->stats->LevelStats[2] = LevelStat{125000, 3, 4, 5};
    t.game->levels->Level(2).Settings.SettingsText = "The Longest Winding Road Over Seven Hills";
    t.game->levels->CurrentLevel = 2;
    t.show(TrackChoice);
    EXPECT_EQ(t.field(12), "The Longest Winding Road Over Seven...");
    EXPECT_EQ(t.field(8), "2:05");
    EXPECT_EQ(t.field(11), "5 Times");

    // Play: the run starts to the track music.
    t.game->sound->SetMusicVolume(50);
    t.click(26);
    EXPECT_EQ(t.game->GameState, Playing);
    EXPECT_EQ(t.game->sound->CurrentMusic, 1);
    EXPECT_EQ(t.field(1), "Stars 0 / of 2");
}

TEST(TrackChoice, AnyClickOnTheWonScreenReturnsWithTheNextArrowLit) {
    GuiGame t("madeit");
    ASSERT_TRUE(t.start());
    t.game->levels->CurrentLevel = 4;
    t.show(MadeIt);
    t.game->Form_MouseDown(1, 3, 3);
    EXPECT_EQ(t.game->GameState, TrackChoice);
    EXPECT_EQ(t.game->levels->CurrentLevel, 4);
    EXPECT_TRUE(t.button(24).IsMouseOver());
}

TEST(VideoMode, SwitchingTo1024x768ReplacesTheButtonsAndRebuildsTheScreen) {
    GuiGame t("video");
    ASSERT_TRUE(t.start());
    t.game->dx->VideoMode = 1;
    t.show(Options);
    t.click(55);
    EXPECT_EQ(std::tuple(t.game->dx->VideoMode, t.game->dx->GuiOffsetX, t.game->dx->GuiOffsetY,
                         t.game->options->Options.VideoMode),
              std::tuple(2, 112.0f, 84.0f, 2));
    EXPECT_EQ(
        std::tuple(t.button(1).X(), t.button(1).Y(), t.button(1).Corners()[0].x, t.gui().Field(1).Left()),
        std::tuple(112.0f, 164.0f, 112.0f, 572));
    EXPECT_EQ(std::tuple(t.button(53).enabled(), t.button(55).enabled(), t.button(56).enabled()),
              std::tuple(true, false, true));
    // The selected mode's button does nothing.
    t.click(56);
    EXPECT_EQ(t.game->dx->VideoMode, 2);
    // The track choice's bottom buttons sit 84 lower within the layout.
    t.show(TrackChoice);
    EXPECT_EQ(std::tuple(t.button(24).LayoutY(), t.button(24).Y(), t.gui().Field(7).Top()),
              std::tuple(475 + 84, 475.0f + 84 + 84, 550 + 84 + 84));
    t.game->levels->CurrentLevel = 1;
    t.show(Playing);
    EXPECT_EQ(t.gui().Field(1).Left(), 724);
    // And back.
    t.show(Options);
    t.click(53);
    EXPECT_EQ(std::tuple(t.game->dx->GuiOffsetX, t.button(1).X(), t.button(54).enabled()),
              std::tuple(0.0f, 0.0f, true));
}

TEST(TrackChoice, TheTrackNumberShowsUnderTheArrowsInBothModesRimmedForAnySky) {
    GuiGame t("tracknumber");
    ASSERT_TRUE(t.start());
    for (int mode : {1, 2}) {
        t.game->ChangeVideoMode(mode);
        t.show(ZoneChoice);
        t.click(4);
        ASSERT_EQ(t.game->GameState, TrackChoice);
        t.game->RenderFrame();
        const HeadlessGraphics& d = t.hp.graphics;
        int white = -1;
        for (size_t i = 0; i < d.textDrawn.size(); ++i)
            if (d.textDrawn[i] == "1 / 10" && d.textColours[i] == 0xFFFFFFFFu) white = static_cast<int>(i);
        ASSERT_GE(white, 0) << "mode " << mode;
        const auto r = d.textRects[static_cast<size_t>(white)];
        const int height = mode == 1 ? 600 : 768;
        EXPECT_GE(r[1], static_cast<int>(t.button(24).Y()) + t.button(24).height()) << "below the arrows";
        EXPECT_GE(r[3] - r[1], 20) << "room for the line";
        EXPECT_LE(r[3], height);
        // A dark rim one pixel all round the white letters, drawn first.
        int rim = 0;
        for (int i = 0; i < white; ++i) {
            const uint32_t c = d.textColours[static_cast<size_t>(i)];
            const auto q = d.textRects[static_cast<size_t>(i)];
            const int lum = static_cast<int>(((c >> 16) & 255) + ((c >> 8) & 255) + (c & 255)) / 3;
            if (d.textDrawn[static_cast<size_t>(i)] == "1 / 10" && lum < 60 && std::abs(q[0] - r[0]) <= 1 &&
                std::abs(q[1] - r[1]) <= 1)
                ++rim;
        }
        EXPECT_EQ(rim, 8) << "mode " << mode;
    }
}

TEST(VideoMode, AFailedSwitchIsLoggedKeepsTheModeInUseAndSavesNothing) {
    GuiGame t("videofail");
    const int32_t stored[3] = {50, -400, 1};
    std::ofstream(t.dir + "options.dat", std::ios::binary)
        .write(reinterpret_cast<const char*>(stored), sizeof stored);
    ASSERT_TRUE(t.start());
    t.show(Options);
    t.hp.graphics.failResetWidth = 1024;
    t.click(55);
    EXPECT_EQ(std::tuple(t.game->dx->VideoMode, t.game->dx->GuiOffsetX, t.hp.graphics.created.width,
                         t.button(1).X(), t.game->options->Options.VideoMode),
              std::tuple(1, 0.0f, 800, 0.0f, 1));
    EXPECT_TRUE(t.button(54).enabled());  // 800x600 is still the marked mode
    optionsDat reread(t.dir + "options.dat");
    reread.LoadOptions();
    EXPECT_EQ(reread.Options.VideoMode, 1);
    const std::string log = test::ReadFile(t.dir + "Debug.txt");
    EXPECT_NE(log.find("no room for the back buffer -2005532292"), std::string::npos) << log;
    EXPECT_NE(log.find("Reset failed"), std::string::npos);
    EXPECT_NE(log.find("Video mode 2 failed, staying at mode 1"), std::string::npos);
}

TEST(WebSite, OpensTheShippedHomePageAndSurvivesNoBrowser) {
    GuiGame t("web");
    ASSERT_TRUE(t.start());
    t.click(22);
    ASSERT_EQ(t.hp.window.openedUrls.size(), 1u);
    const std::string url = t.hp.window.openedUrls[0];
    ASSERT_EQ(url.rfind("file://", 0), 0u);
    EXPECT_TRUE(std::filesystem::is_regular_file(url.substr(7)));
    EXPECT_EQ(t.game->GameState, MainMenu);
    t.hp.window.urlOpens = false;
    t.click(15);
    EXPECT_EQ(t.hp.window.openedUrls.size(), 2u);
    EXPECT_EQ(t.game->GameState, MainMenu);
    EXPECT_TRUE(t.game->GameRunning);
}

// One press and release, a pass each, as a person's key would be seen.
void Tap(GuiGame& t, uint8_t key) {
    t.hp.keyboard.setOnly({key});
    t.game->HandleKeyboard();
    t.hp.keyboard.setOnly({});
    t.game->HandleKeyboard();
}

TEST(MenuKeys, EveryOptionCanBeChangedWithTheKeyboard) {
    GuiGame t("optionkeys");
    ASSERT_TRUE(t.start());
    t.game->HandleKeyboard();  // the main menu's first pass
    t.game->sound->SetSfxVolume(-1000);
    t.game->sound->SetMusicVolume(50);
    Tap(t, DIK_DOWN);
    Tap(t, DIK_RETURN);
    ASSERT_EQ(t.game->GameState, Options);
    EXPECT_EQ(t.highlighted(), V{14});  // the focus starts on "go back"
    Tap(t, DIK_UP);
    Tap(t, DIK_UP);
    Tap(t, DIK_UP);
    Tap(t, DIK_UP);
    EXPECT_EQ(t.highlighted(), V{16});
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.field(1), "40%");
    Tap(t, DIK_RIGHT);
    Tap(t, DIK_RETURN);
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.field(1), "60%");
    Tap(t, DIK_DOWN);
    EXPECT_EQ(t.highlighted(), V{18});
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.field(2), "60%");
    Tap(t, DIK_LEFT);
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.field(2), "50%");
    // The larger mode; the focus stays on it when the screen comes back.
    Tap(t, DIK_DOWN);
    Tap(t, DIK_DOWN);
    EXPECT_EQ(t.highlighted(), V{55});
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.game->dx->VideoMode, 2);
    EXPECT_EQ(t.highlighted(), V{56});
    Tap(t, DIK_UP);
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.game->dx->VideoMode, 1);
    Tap(t, DIK_DOWN);
    Tap(t, DIK_DOWN);
    EXPECT_EQ(t.highlighted(), V{14});
    Tap(t, DIK_RETURN);
    EXPECT_EQ(t.game->GameState, MainMenu);
}

TEST(MenuKeys, EveryInstructionPageByKeyboardAndByMouse) {
    GuiGame t("pages");
    ASSERT_TRUE(t.start());
    t.game->HandleKeyboard();  // the main menu's first pass
    Tap(t, DIK_DOWN);
    Tap(t, DIK_DOWN);
    Tap(t, DIK_RETURN);
    ASSERT_EQ(t.game->GameState, InstructionsPage1);
    for (int16_t page : {InstructionsPage2, InstructionsPage3, InstructionsPage1}) {
        Tap(t, DIK_RIGHT);
        EXPECT_EQ(t.game->GameState, page);
    }
    Tap(t, DIK_LEFT);
    EXPECT_EQ(t.game->GameState, InstructionsPage3);
    Tap(t, DIK_ESCAPE);
    EXPECT_EQ(t.game->GameState, MainMenu);

    // The mouse turns every page both ways.
    t.click(21);
    for (int16_t page : {InstructionsPage2, InstructionsPage3, InstructionsPage1}) {
        t.click(40);
        EXPECT_EQ(t.game->GameState, page);
    }
    for (int16_t page : {InstructionsPage3, InstructionsPage2, InstructionsPage1}) {
        t.click(41);
        EXPECT_EQ(t.game->GameState, page);
    }
    t.click(2);
    EXPECT_EQ(t.game->GameState, MainMenu);
}

}  // namespace
}  // namespace qb
