// A key press acts on the screen where it went down. Each case is played
// through the real main loop on the fake clock, with presses as long as a
// person's (about 150 ms: nine menu passes, four play frames).
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
            for (int k = 0; k < 256; ++k) {
                if (down[k])
                    t.hp.keyboard.press(static_cast<uint8_t>(k));
                else
                    t.hp.keyboard.release(static_cast<uint8_t>(k));
            }
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

}  // namespace
}  // namespace qb
