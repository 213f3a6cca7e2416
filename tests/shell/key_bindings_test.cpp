// The player's own keys: rebinding swaps instead of doubling, Esc and Return
// stay where they are, Defaults restores, and settings.cfg keeps them (or the
// defaults when what it holds cannot be right).
#include <gtest/gtest.h>

#include "persist/Settings.h"
#include "platform/KeyboardDevice.h"
#include "shell/KeyBindings.h"

namespace qb {
namespace {

using Keys = std::vector<uint8_t>;

TEST(KeyBindings, RebindingTakesTheKeyAndSwapsWithTheActionThatHadIt) {
    KeyBindings b;
    EXPECT_TRUE(b.IsDefault());
    EXPECT_EQ(b.KeysText(Action::Jump), "Space, Ctrl, Shift");
    EXPECT_EQ(b.KeysText(Action::Pause), "Esc, P");

    // A free key: the action has it alone.
    ASSERT_TRUE(b.Rebind(Action::Accelerate, DIK_W));
    EXPECT_EQ(b.Keys(Action::Accelerate), Keys{DIK_W});
    EXPECT_EQ(b.ActionOf(DIK_UP), -1);
    // A key in use: the other action gets this one's old key, nothing doubled.
    ASSERT_TRUE(b.Rebind(Action::Brake, DIK_W));
    EXPECT_EQ(b.Keys(Action::Brake), Keys{DIK_W});
    EXPECT_EQ(b.Keys(Action::Accelerate), Keys{DIK_DOWN});
    // Taking one of the jump keys leaves it the others plus the old key.
    ASSERT_TRUE(b.Rebind(Action::Left, DIK_SPACE));
    EXPECT_EQ(b.Keys(Action::Jump), (Keys{DIK_LEFT, DIK_LCONTROL, DIK_RCONTROL, DIK_LSHIFT, DIK_RSHIFT}));
    EXPECT_EQ(b.KeysText(Action::Jump), "Left, Ctrl, Shift");
    for (int key = 0; key < 256; ++key) {
        int owners = 0;
        for (int a = 0; a < ActionCount; ++a)
            for (uint8_t k : b.Keys(static_cast<Action>(a))) owners += k == key;
        EXPECT_LE(owners, 1) << key;
    }

    // Pause keeps Esc whatever it is given, and gives its other key away.
    ASSERT_TRUE(b.Rebind(Action::Pause, DIK_Q));
    EXPECT_EQ(b.Keys(Action::Pause), (Keys{DIK_ESCAPE, DIK_Q}));
    ASSERT_TRUE(b.Rebind(Action::QuickRestart, DIK_Q));
    EXPECT_EQ(b.Keys(Action::Pause), (Keys{DIK_ESCAPE, DIK_BACK}));
    // Esc and Return cannot be given to anything; nothing changes.
    const KeyBindings before = b;
    EXPECT_FALSE(b.Rebind(Action::Jump, DIK_ESCAPE));
    EXPECT_FALSE(b.Rebind(Action::Pause, DIK_ESCAPE));
    EXPECT_FALSE(b.Rebind(Action::Accelerate, DIK_RETURN));
    EXPECT_FALSE(b.Rebind(Action::Accelerate, 0xFF));  // no such key
    for (int a = 0; a < ActionCount; ++a)
        EXPECT_EQ(b.Keys(static_cast<Action>(a)), before.Keys(static_cast<Action>(a)));

    b.RestoreDefaults();
    EXPECT_TRUE(b.IsDefault());
}

TEST(KeyBindings, SettingsKeepTheKeysAndAnythingWrongGivesTheDefaults) {
    Settings s("/nonexistent/settings.cfg");
    KeyBindings b;
    b.Rebind(Action::Accelerate, DIK_W);
    b.Rebind(Action::Jump, DIK_K);
    b.Save(s);
    EXPECT_EQ(s.GetString("keys.accelerate", ""), "W");
    EXPECT_EQ(s.GetString("keys.pause", ""), "P");  // Esc is never written
    KeyBindings read;
    std::string problem;
    read.Load(s, problem);
    EXPECT_EQ(problem, "");
    EXPECT_EQ(read.Keys(Action::Accelerate), Keys{DIK_W});
    EXPECT_EQ(read.Keys(Action::Jump), Keys{DIK_K});
    EXPECT_EQ(read.Keys(Action::Pause), (Keys{DIK_ESCAPE, DIK_P}));

    // Back to the defaults: the lines go, the file says nothing about keys.
    read.RestoreDefaults();
    read.Save(s);
    EXPECT_FALSE(s.Has("keys.accelerate"));

    for (const auto& [key, value] : std::vector<std::pair<std::string, std::string>>{
             {"keys.jump", "Space Blorp"},      // not a key
             {"keys.left", "Esc"},              // Esc belongs to pause
             {"keys.right", "Return"},          // Return belongs to the menus
             {"keys.brake", "Up"},              // Up is accelerate's by default
             {"keys.restart", "Backspace B B"}  // twice in one action
         }) {
        Settings bad("/nonexistent/settings.cfg");
        bad.SetString(key, value);
        KeyBindings k;
        k.Rebind(Action::Accelerate, DIK_W);
        k.Load(bad, problem);
        EXPECT_TRUE(k.IsDefault()) << key << " = " << value;
        EXPECT_NE(problem.find("settings.cfg: " + key), std::string::npos) << problem;
        EXPECT_NE(problem.find("default keys"), std::string::npos) << problem;
    }
}

}  // namespace
}  // namespace qb
