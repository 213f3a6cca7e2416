// The Controls screen, reached from the options by keyboard and by mouse: a
// row chosen and a key pressed rebinds the action for play and for the next
// start; Defaults restores; Esc never gets lost.
#include <gtest/gtest.h>

#include "gui/Gui.h"
#include "persist/Settings.h"
#include "physics/clsPlayer.h"
#include "platform/KeyboardDevice.h"
#include "shell/KeyBindings.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

using test::TestGame;

TEST(ControlsScreen, ReachedFromTheOptionsARowTakesANewKeyThatDrivesAndIsKept) {
    test::ShippedGame c("controls-screen");
    frmGame& g = c.g;
    g.HandleKeyboard();
    c.tap(DIK_DOWN);  // Options
    c.tap(DIK_RETURN);
    ASSERT_EQ(g.GameState, Options);
    c.tap(DIK_DOWN);  // from "go back" down to the Controls item under it
    c.tap(DIK_RETURN);
    ASSERT_EQ(g.GameState, ControlsMenu);
    EXPECT_EQ(g.gui->ControlsRow, 1);

    // Accelerate (row 1) becomes W; Esc while waiting keeps the old key.
    c.tap(DIK_RETURN);
    EXPECT_TRUE(g.gui->ControlsWaiting);
    c.tap(DIK_ESCAPE);
    EXPECT_FALSE(g.gui->ControlsWaiting);
    EXPECT_EQ(g.GameState, ControlsMenu);
    EXPECT_EQ(g.bindings->Keys(Action::Accelerate), std::vector<uint8_t>{DIK_UP});
    c.tap(DIK_RETURN);
    c.tap(DIK_RETURN);  // Return cannot be given away: still waiting
    EXPECT_TRUE(g.gui->ControlsWaiting);
    c.tap(DIK_W);
    EXPECT_FALSE(g.gui->ControlsWaiting);
    EXPECT_EQ(g.bindings->Keys(Action::Accelerate), std::vector<uint8_t>{DIK_W});
    // Brake (row 2) takes W: the two swap.
    c.tap(DIK_DOWN);
    c.tap(DIK_RETURN);
    c.tap(DIK_W);
    EXPECT_EQ(g.bindings->Keys(Action::Brake), std::vector<uint8_t>{DIK_W});
    EXPECT_EQ(g.bindings->Keys(Action::Accelerate), std::vector<uint8_t>{DIK_DOWN});

    // The file keeps them for the next start.
    {
        Settings s(c.t.writeDir + "settings.cfg");
        s.Load();
        EXPECT_EQ(s.GetString("keys.brake", ""), "W");
        EXPECT_EQ(s.GetString("keys.accelerate", ""), "Down");
    }
    TestGame next("controls-screen-next");
    std::filesystem::copy_file(c.t.writeDir + "settings.cfg", next.writeDir + "settings.cfg");
    std::filesystem::copy_file(std::string(QUORBIT_GAME_DIR) + "/levels.dat", next.writeDir + "levels.dat");
    ASSERT_TRUE(next.game->startup());
    EXPECT_EQ(next.game->bindings->Keys(Action::Brake), std::vector<uint8_t>{DIK_W});

    // In play the new accelerate key drives, the old one does nothing.
    g.gui->OpenZone(1);
    g.gui->Click(26);
    ASSERT_EQ(g.GameState, Playing);
    g.playFrame();  // nothing held into play
    c.t.hp.keyboard.setOnly({DIK_UP});
    for (int i = 0; i < 5; ++i) g.playFrame();
    EXPECT_EQ(g.player->ForwardVelocity(), 0.0f);
    c.t.hp.keyboard.setOnly({DIK_DOWN});
    for (int i = 0; i < 5; ++i) g.playFrame();
    EXPECT_GT(g.player->ForwardVelocity(), 0.0f);
    c.t.hp.keyboard.setOnly({});

    // Back on the screen, Defaults (by mouse) restores and empties the file's keys.
    c.show(Options);
    g.gui->Click(57);
    ASSERT_EQ(g.GameState, ControlsMenu);
    g.gui->Click(58);
    EXPECT_TRUE(g.bindings->IsDefault());
    Settings s(c.t.writeDir + "settings.cfg");
    s.Load();
    EXPECT_FALSE(s.Has("keys.brake"));
    // Esc leaves for the options.
    g.HandleKeyboard();
    c.tap(DIK_ESCAPE);
    EXPECT_EQ(g.GameState, Options);
}

}  // namespace
}  // namespace qb
