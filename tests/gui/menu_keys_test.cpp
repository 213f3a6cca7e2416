// The options screen and the instruction pages, used with the keyboard alone
// and with the mouse alone.
#include <gtest/gtest.h>

#include "audio/DXmusicSFX.h"
#include "platform/DirectX.h"
#include "platform/KeyboardDevice.h"
#include "tests/gui/GuiTestGame.h"

namespace qb {
namespace {

using test::GuiGame;
using V = std::vector<int>;

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
