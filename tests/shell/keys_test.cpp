// Keys as a person's hands work them, played through the real main loop on
// the fake clock. A press acts on the screen where it went down (presses last
// about 150 ms: nine menu passes, four play frames). A quick tap, down and up
// again between two passes inside one window event round, still acts, once,
// on every screen, though no pass ever reads the key as down in the state.
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

struct Hold {
    uint8_t key;
    double fromMs, toMs;
};

struct Hands : test::ShippedGame {
    explicit Hands(const char* name) : ShippedGame(name) {
        EXPECT_EQ(g.levels->LevelCount(), 60);
        g.gui->OpenZone(1);
    }
    // Runs the main loop for `ms` of fake time with these keys held.
    void play(std::vector<Hold> holds, double ms) {
        run(ms, [&](double now) {
            bool down[256] = {};
            for (const Hold& h : holds)
                if (now >= h.fromMs && now < h.toMs) down[h.key] = true;
            for (int k = 0; k < 256; ++k)
                down[k] ? t.hp.keyboard.press(static_cast<uint8_t>(k))
                        : t.hp.keyboard.release(static_cast<uint8_t>(k));
        });
    }
};

TEST(KeysActWhereTheyWentDown, OneEscGoesBackOneScreen) {
    struct Case {
        int16_t from, to;
    };
    for (const Case& c :
         {Case{MadeIt, TrackChoice}, Case{TrackChoice, ZoneChoice}, Case{UserTrackChoice, ZoneChoice}}) {
        SCOPED_TRACE(c.from);
        Hands h("esc-back");
        h.show(c.from);
        h.play({{DIK_ESCAPE, 20, 170}}, 400);
        EXPECT_EQ(h.screens, (std::vector<int16_t>{c.from, c.to}));
    }
}

TEST(KeysActWhereTheyWentDown, AReturnHeldAsAJumpDoesNotChooseInThePauseMenu) {
    Hands h("pause-return");
    h.g.gui->Click(26);  // Play track
    ASSERT_EQ(h.g.GameState, Playing);
    // Return held as the jump key; Esc tapped halfway through.
    h.play({{DIK_RETURN, 40, 1500}, {DIK_ESCAPE, 600, 750}}, 1700);
    EXPECT_EQ(h.screens, (std::vector<int16_t>{Playing, PauseMenu}));
    EXPECT_EQ(CurrentTab(h.g), 2);  // still on "Exit track", not chosen
    const int32_t clock = h.g.RaceFrames;
    EXPECT_GT(clock, 10);
    // Esc again: the run goes on where it stopped.
    h.play({{DIK_ESCAPE, 20, 170}}, 200);
    EXPECT_EQ(h.g.GameState, Playing);
    EXPECT_GE(h.g.RaceFrames, clock);
    EXPECT_LE(h.g.RaceFrames, clock + 6);
}

TEST(KeysActWhereTheyWentDown, KeysHeldIntoANewScreenWaitToBeLetGo) {
    Hands h("held-over");
    // Up held from the track choice into play: the car waits for a fresh press.
    h.play({{DIK_UP, 0, 400}, {DIK_RETURN, 20, 170}}, 400);
    ASSERT_EQ(h.g.GameState, Playing);
    EXPECT_EQ(h.g.player->ForwardVelocity(), 0.0f);
    EXPECT_EQ(h.g.stats->JumpCount, 0);  // nor did the Return jump
    h.play({{DIK_UP, 100, 400}}, 400);
    EXPECT_GT(h.g.player->ForwardVelocity(), 0.0f);

    // A jump key pressed in the pause menu does not jump when play resumes.
    h.play({{DIK_ESCAPE, 20, 170}}, 300);
    ASSERT_EQ(h.g.GameState, PauseMenu);
    const int32_t jumps = h.g.stats->JumpCount;
    h.play({{DIK_SPACE, 0, 600}, {DIK_ESCAPE, 100, 250}}, 600);
    EXPECT_EQ(h.screens, (std::vector<int16_t>{PauseMenu, Playing}));
    EXPECT_EQ(h.g.stats->JumpCount, jumps);

    // A jump key held from play into the name entry types no blank.
    h.show(NameEntry);
    h.play({}, 100);
    h.show(Playing);
    h.t.hp.keyboard.press(DIK_SPACE);
    h.g.HandleKeyboard();
    h.show(NameEntry);
    h.play({{DIK_SPACE, 0, 300}, {DIK_A, 100, 250}}, 400);
    EXPECT_EQ(FieldText(h.g, 1), "A");
}

TEST(KeysActWhereTheyWentDown, AClickThatChangesTheScreenHoldsKeysOverToo) {
    Hands h("click-esc");
    h.show(MadeIt);
    // Esc already down when a click leaves the made-it screen.
    h.t.hp.keyboard.press(DIK_ESCAPE);
    h.g.Form_MouseDown(1, 400, 300);
    ASSERT_EQ(h.g.GameState, TrackChoice);
    h.play({{DIK_ESCAPE, 0, 150}}, 300);
    EXPECT_EQ(h.g.GameState, TrackChoice);
}

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
