// Quick taps: a key that goes down and up again between two passes of the
// loop still acts, once, on every screen. Played through the real main loop
// on the fake clock; each tap is a press and a release inside one window
// event round, so no pass ever reads the key as down in the state.
#include <gtest/gtest.h>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "persist/Stats.h"
#include "physics/clsPlayer.h"
#include "platform/KeyboardDevice.h"
#include "shell/GuiLink.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

struct Tap {
    uint8_t key;
    double atMs;
};

// Each tap is a press and a release inside one window event round.
struct Tapper : test::ShippedGame {
    using ShippedGame::ShippedGame;
    void run(std::vector<Tap> taps, double ms) {
        std::vector<bool> done(taps.size(), false);
        ShippedGame::run(ms, [&](double now) {
            for (size_t i = 0; i < taps.size(); ++i) {
                if (done[i] || now < taps[i].atMs) continue;
                done[i] = true;
                t.hp.keyboard.press(taps[i].key);
                t.hp.keyboard.release(taps[i].key);
            }
        });
    }
};

TEST(Taps, TappedKeysWalkTheMenusIntoATrackAndDriveIt) {
    Tapper h("taps-menus");
    ASSERT_EQ(h.g.GameState, MainMenu);
    // Down, Up, Return: the focus goes to Options and back, Play opens the
    // zones; Return opens zone A, Return starts its first track.
    h.run({{DIK_DOWN, 50}, {DIK_UP, 150}, {DIK_RETURN, 250}, {DIK_RETURN, 400}, {DIK_RETURN, 550}}, 700);
    EXPECT_EQ(h.screens, (std::vector<int16_t>{MainMenu, ZoneChoice, TrackChoice, Playing}));
    EXPECT_EQ(h.g.levels->CurrentLevel, 1);
    EXPECT_EQ(h.g.stats->JumpCount, 0);  // the Return that started did not jump

    // One tap of accelerate is one frame of it.
    h.run({{DIK_UP, 100}}, 400);
    EXPECT_FLOAT_EQ(h.g.player->ForwardVelocity(), 0.02f);
    // A tapped jump jumps once.
    h.run({{DIK_SPACE, 100}}, 400);
    EXPECT_EQ(h.g.stats->JumpCount, 1);

    // Esc to the pause menu, Down moves the focus once per tap, Esc resumes.
    h.run({{DIK_ESCAPE, 50}, {DIK_DOWN, 150}, {DIK_DOWN, 250}}, 350);
    EXPECT_EQ(h.g.GameState, PauseMenu);
    EXPECT_EQ(CurrentTab(h.g), 4);
    h.run({{DIK_ESCAPE, 50}}, 150);
    EXPECT_EQ(h.g.GameState, Playing);
}

TEST(Taps, ANameIsTypedWithTapsAndAKeyLetGoAndPressedAgainActsAgain) {
    Tapper h("taps-name");
    h.show(NameEntry);
    SetFieldText(h.g, 1, "");
    h.run({{DIK_Q, 20}, {DIK_B, 60}, {DIK_BACK, 100}, {DIK_SPACE, 140}, {DIK_A, 180}}, 250);
    EXPECT_EQ(FieldText(h.g, 1), "Q A");

    // A held key released and pressed again between two passes is a second
    // press, though no pass saw it up.
    h.show(PauseMenu);
    h.run({}, 50);
    ASSERT_EQ(CurrentTab(h.g), 2);
    h.t.hp.keyboard.press(DIK_DOWN);
    h.g.HandleKeyboard();
    EXPECT_EQ(CurrentTab(h.g), 3);
    h.g.HandleKeyboard();  // still held: nothing more
    EXPECT_EQ(CurrentTab(h.g), 3);
    h.t.hp.keyboard.release(DIK_DOWN);
    h.t.hp.keyboard.press(DIK_DOWN);
    h.g.HandleKeyboard();
    EXPECT_EQ(CurrentTab(h.g), 4);
}

TEST(QuickRestart, BackspaceRestartsTheTrackAtOnceAndIsBookedLikeARestart) {
    Tapper h("quick-restart");
    h.g.gui->OpenZone(1);
    h.g.gui->Click(26);  // Play track
    ASSERT_EQ(h.g.GameState, Playing);
    // The first tap comes after the first frame has seen the new screen
    // (a key down as the screen changes waits to be let go).
    h.run({{DIK_UP, 50}, {DIK_UP, 95}, {DIK_UP, 140}, {DIK_SPACE, 600}}, 1000);
    const float z = h.g.player->GetPosition().z;
    ASSERT_GT(h.g.RaceFrames, 20);
    ASSERT_EQ(h.g.stats->JumpCount, 1);
    const int32_t before = h.g.stats->LevelStats[1].Jumps;
    h.run({{DIK_BACK, 50}}, 100);
    EXPECT_EQ(h.g.GameState, Playing);
    EXPECT_LT(h.g.RaceFrames, 3);
    EXPECT_LT(h.g.player->GetPosition().z, z);
    EXPECT_EQ(h.g.StarsCollected, 0);
    // The run that ended is in the statistics, as with Restart in the pause menu.
    EXPECT_EQ(h.g.stats->LevelStats[1].Jumps, before + 1);
}

}  // namespace
}  // namespace qb
