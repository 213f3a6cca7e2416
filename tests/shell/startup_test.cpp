#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "platform/DirectX.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

using test::TestGame;

// Index of the first log line equal to `text` at or after `from`; -1 if none.
int FindLine(const std::vector<std::string>& lines, const std::string& text, int from = 0) {
    for (int i = from; i < static_cast<int>(lines.size()); ++i)
        if (lines[i] == text) return i;
    return -1;
}

int FindPrefix(const std::vector<std::string>& lines, const std::string& prefix, int from = 0) {
    for (int i = from; i < static_cast<int>(lines.size()); ++i)
        if (lines[i].rfind(prefix, 0) == 0) return i;
    return -1;
}

TEST(Startup, WritesTheReportAndEveryStepInOrderThenRunsUntilClosed) {
    TestGame t("startup");
    t.hp.window.onProcess = [](WindowEvents& w) { w.onClose(); };
    const int code = t.game->Form_Load();
    EXPECT_EQ(code, 0);
    EXPECT_EQ(t.game->GameState, Closing);
    EXPECT_FALSE(t.game->GameRunning);
    // Loading frames during start-up, then the menu pass.
    EXPECT_TRUE(t.hp.window.shown);
    EXPECT_GE(t.hp.graphics.presentCount, 2);

    auto lines = t.log();
    ASSERT_GE(lines.size(), 20u);
    EXPECT_TRUE(std::regex_match(lines[3], std::regex("#[0-9]{4}-[0-9]{2}-[0-9]{2}#"))) << lines[3];
    lines[3] = "#date#";
    EXPECT_EQ(
        std::vector<std::string>(lines.begin(), lines.begin() + 9),
        (std::vector<std::string>{
            "", "\"Quorbit Debug\"", "\"Operating system\",\"Debian GNU/Linux 12 (bookworm)\"", "#date#", "",
            "\"Headless CPU\"", "\"CPU Speed\",1800,\"Mhz\"", "\"Memory\",\"511.48046875\"", ""}));

    const int card = FindLine(lines, "\"Graphics Card = Headless Adapter\"");
    const int hal = FindLine(lines, "\"Hardware Rasterizer (HAL) avalible\"", card);
    const int tnl = FindLine(lines, "\"Hardware Transform and lighting avalible\"", hal);
    const int dx = FindLine(lines, "\"Initalise DirectX and DX3D = True\"", tnl);
    const int polling = FindLine(lines, "\"Using Polling Method for Direct Input\"", dx);
    const int kbd = FindLine(lines, "\"Keyboard Information\"", polling);
    const int product = FindLine(lines, "\"Product Name : Headless Keyboard\"", kbd);
    const int type = FindLine(lines, "\"Device Type : 1043\"", product);
    const int guid = FindPrefix(lines, "\"GUID : {", type);
    const int input = FindLine(lines, "\"Initalise DirectInput = True\"", guid);
    const int sound = FindPrefix(lines, "\"Initalise DirectSound = ", input);
    const int anim = FindLine(lines, "\"Initalise Animated Textures = True\"", sound);
    for (int i : {card, hal, tnl, dx, polling, kbd, product, type, guid, input, sound, anim}) EXPECT_GE(i, 9);
    // The keyboard block is framed by empty records.
    EXPECT_EQ(lines[kbd - 1], "");
    EXPECT_EQ(lines[guid + 1], "");
}

TEST(Startup, WithoutHardwareLogsFalseExplainsAndStops) {
    struct Case {
        const char* name;
        void (*breakIt)(HeadlessGraphics&);
        const char* logLine;
        const char* message;
    };
    const Case cases[] = {
        {"nohal", [](HeadlessGraphics& g) { g.hardware = false; }, "\"No 3D Hardware Detected\"",
         "No 3D hardware detected. Quorbit requires a 3D accelerator Video Card"},
        {"notnl", [](HeadlessGraphics& g) { g.tnl = false; },
         "\"No Hardware Transform and lighting avalible\"",
         "Hardware Transform and lighting required. Feature not found"},
        {"createfails", [](HeadlessGraphics& g) { g.failCreate = true; },
         "\"Initalise DirectX and DX3D = False\"",
         "Something went wrong trying to initalise DX -2005530516 D3DERR_NOTAVAILABLE"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestGame t(c.name);
        c.breakIt(t.hp.graphics);
        EXPECT_NE(t.game->Form_Load(), 0);
        const auto lines = t.log();
        EXPECT_GE(FindLine(lines, c.logLine), 0);
        const int dx = FindLine(lines, "\"Initalise DirectX and DX3D = False\"");
        EXPECT_GE(dx, 0);
        EXPECT_GE(FindLine(lines, "\"Initalise DirectInput = False\"", dx), 0);
        EXPECT_GE(FindLine(lines, "\"Initalise DirectSound = False\"", dx), 0);
        EXPECT_EQ(FindLine(lines, "\"Using Polling Method for Direct Input\""), -1);
        ASSERT_EQ(t.hp.window.messages.size(), 1u);
        EXPECT_EQ(t.hp.window.messages[0], c.message);
        EXPECT_FALSE(t.game->GameRunning);
    }
}

TEST(Startup, WithoutKeyboardSkipsSoundButStillReachesTheMenus) {
    TestGame t("nokeyboard");
    t.hp.keyboard.present = false;
    int passes = 0;
    t.hp.window.onProcess = [&](WindowEvents& w) {
        if (++passes == 2) w.onClose();
    };
    EXPECT_EQ(t.game->Form_Load(), 0);
    const auto lines = t.log();
    EXPECT_GE(FindLine(lines, "\"Initalise DirectInput = False\""), 0);
    EXPECT_GE(FindLine(lines, "\"Initalise DirectSound = False\""), 0);
    EXPECT_GE(FindLine(lines, "\"Initalise Animated Textures = True\""), 0);
    ASSERT_FALSE(t.hp.window.messages.empty());
    EXPECT_EQ(t.hp.window.messages[0], "Error occured trying to initalise Direct Input");
}

// A fresh options file plays at 800x600; a stored video mode 2 at 1024x768
// with the 800x600 layout centred.
TEST(Startup, TheStoredVideoModeSetsTheBackBufferAndTheLayoutOffset) {
    struct Case {
        const char* name;
        int32_t storedMode;  // -1: no options.dat yet
        int width, height;
        float offsetX, offsetY;
    };
    for (const Case& c : {Case{"fresh", -1, 800, 600, 0, 0}, Case{"mode2", 2, 1024, 768, 112, 84}}) {
        SCOPED_TRACE(c.name);
        TestGame t(c.name);
        if (c.storedMode >= 0) {
            const int32_t stored[3] = {50, -2000, c.storedMode};
            std::ofstream(t.writeDir + "options.dat", std::ios::binary)
                .write(reinterpret_cast<const char*>(stored), sizeof stored);
        }
        t.hp.window.onProcess = [](WindowEvents& w) { w.onClose(); };
        t.game->Form_Load();
        EXPECT_EQ(t.hp.graphics.created.width, c.width);
        EXPECT_EQ(t.hp.graphics.created.height, c.height);
        EXPECT_EQ(t.game->dx->GuiOffsetX, c.offsetX);
        EXPECT_EQ(t.game->dx->GuiOffsetY, c.offsetY);
        EXPECT_TRUE(std::filesystem::exists(t.writeDir + "options.dat"));
        if (c.storedMode >= 0) continue;
        // A second start replaces the log instead of appending to it.
        const auto first = t.log();
        frmGame again(t.hp.platform);
        again.Form_Load();
        EXPECT_EQ(first.size(), t.log().size());
    }
}

TEST(Startup, MultisamplingTakesTheHighestOf2_4_6) {
    struct Case {
        std::vector<int> support;
        int expected;
    };
    for (const Case& c : {Case{{2, 6}, 6}, Case{{}, 0}, Case{{2, 4}, 4}, Case{{4}, 4}}) {
        TestGame t("msaa");
        t.hp.graphics.sampleSupport = c.support;
        t.hp.window.onProcess = [](WindowEvents& w) { w.onClose(); };
        t.game->Form_Load();
        EXPECT_EQ(t.hp.graphics.created.multiSamples, c.expected);
    }
}

}  // namespace
}  // namespace qb
