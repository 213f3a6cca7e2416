// Two minutes of play as a person would have them, on the headless platform:
// menus by keyboard and mouse, resolution switched back and forth, three
// tracks, deaths, a finish with a name typed in, the pause menu, quitting.
// Built with the sanitizers this is the health check of the whole game.
#include <gtest/gtest.h>
#include <unistd.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <string>

#include "level/LevelStructure.h"
#include "platform/DirectX.h"
#include "platform/KeyboardDevice.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

// One step of the script: hold keys for some passes (then let go), click, or
// wait until the game reaches a state.
struct Step {
    std::vector<uint8_t> keys;
    int passes = 2;
    std::function<bool(const frmGame&)> until;  // keep holding until this holds
    float clickX = -1, clickY = -1;             // layout pixels
    int maxPasses = 5000;
};

Step Hold(std::vector<uint8_t> keys, int passes) {
    return Step{std::move(keys), passes, {}, -1, -1};
}
// One pass: held longer, Return would act again on the next screen.
Step Press(uint8_t key) {
    return Hold({key}, 1);
}
Step HoldUntil(std::vector<uint8_t> keys, GameStateValue state, int maxPasses = 5000) {
    Step s{std::move(keys), 0, [state](const frmGame& g) { return g.GameState == state; }, -1, -1};
    s.maxPasses = maxPasses;
    return s;
}
Step Click(float x, float y) {
    return Step{{}, 2, {}, x, y};
}

TEST(ScriptedSession, TwoMinutesOfMenusTracksDeathsAFinishAndVideoModes) {
    const std::string dir = test::FreshDir("session");
    fs::copy_file(std::string(QUORBIT_GAME_DIR) + "/levels.dat", dir + "levels.dat");
    HeadlessPlatform hp(QUORBIT_GAME_DIR, dir);
    frmGame game(hp.platform);

    std::deque<Step> script = {
        Hold({}, 30), Press(DIK_DOWN), Press(DIK_RETURN),           // main menu: options
        HoldUntil({}, Options, 50), Click(430, 425), Hold({}, 20),  // 1024x768
        Click(430, 395), Hold({}, 20),                              // 800x600
        Click(430, 425), Hold({}, 20),                              // 1024x768 again
        Press(DIK_ESCAPE), HoldUntil({}, MainMenu, 50), Press(DIK_RETURN),
        HoldUntil({}, ZoneChoice, 50),  // the focus is back on play
        Press(DIK_RETURN), HoldUntil({}, TrackChoice, 50), Hold({}, 10),
        // Track 1: hold Up to the finish, then type a name.
        Press(DIK_RETURN), HoldUntil({DIK_UP}, NameEntry, 4000),
        Hold({}, 3),  // the name entry first sees every letter up
        Press(DIK_A), Press(DIK_S), Press(DIK_A), Press(DIK_N), Press(DIK_BACK), Press(DIK_N),
        Press(DIK_RETURN), HoldUntil({}, TrackChoice, 50),
        // Track 2: Up alone runs into its gaps: deaths and restarts.
        Press(DIK_RIGHT), Hold({}, 5), Press(DIK_RETURN), Hold({DIK_UP}, 2600), Hold({DIK_UP, DIK_SPACE}, 60),
        Hold({DIK_LEFT, DIK_UP}, 40), Hold({DIK_ESCAPE}, 6),
        HoldUntil({}, PauseMenu, 20),                       // play frames come slower than passes
        Press(DIK_RETURN), HoldUntil({}, TrackChoice, 20),  // exit track (the focused item)
        // Track 3: weave, jump, pause, give up to the main menu.
        Press(DIK_RIGHT), Hold({}, 5), Press(DIK_RETURN), Hold({DIK_UP, DIK_RIGHT}, 80),
        Hold({DIK_UP, DIK_LEFT}, 80), Hold({DIK_UP, DIK_LCONTROL}, 60), Hold({DIK_DOWN}, 40),
        Hold({DIK_UP}, 60), Hold({DIK_ESCAPE}, 6),
        HoldUntil({}, PauseMenu, 20),  // play frames come slower than passes
        Press(DIK_DOWN), Press(DIK_RETURN), HoldUntil({}, MainMenu, 20),  // quit game
        // The instruction pages, both ways round.
        Press(DIK_DOWN), Press(DIK_DOWN), Press(DIK_RETURN), HoldUntil({}, InstructionsPage1, 20),
        Press(DIK_RIGHT), Press(DIK_RIGHT), Press(DIK_RIGHT), Press(DIK_LEFT), Press(DIK_ESCAPE),
        HoldUntil({}, MainMenu, 20), Hold({}, 3000),  // most of a minute idle in the menu
        Click(430, 395), Hold({}, 5),                 // instructions, by the mouse
    };

    int stepPasses = 0;
    bool failed = false;
    hp.window.onProcess = [&](WindowEvents& w) {
        if (script.empty()) {
            w.onClose();
            return;
        }
        Step& s = script.front();
        if (s.clickX >= 0 && stepPasses == 0) {
            w.onMouseDown(1, s.clickX + game.dx->GuiOffsetX, s.clickY + game.dx->GuiOffsetY);
            s.clickX = -1;
        }
        const bool holding = s.until ? !s.until(game) : stepPasses < s.passes;
        if (s.until && stepPasses > s.maxPasses) {
            ADD_FAILURE() << "stuck in state " << game.GameState << " with " << script.size()
                          << " steps left";
            failed = true;
            w.onClose();
            return;
        }
        if (holding) {
            hp.keyboard.setOnly({});
            for (uint8_t k : s.keys) hp.keyboard.press(k);
            ++stepPasses;
            return;
        }
        hp.keyboard.setOnly({});  // let go before the next step
        script.pop_front();
        stepPasses = 0;
    };
    EXPECT_EQ(game.Form_Load(), 0);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(script.empty());
    // Minutes went by on the game's clock (play passes come at the drawing
    // rate, 60 a second, so the held steps are shorter than they count).
    EXPECT_GE(hp.clock.now, 90 * 1000000LL);

    // The finish was booked: the name is in the table, the runs in the stats.
    LevelStructure levels(dir + "levels.dat");
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    EXPECT_EQ(levels.Level(1).Times.Names[0].substr(0, 4), "ASAN");
    EXPECT_EQ(game.dx->VideoMode, 2);
    fs::remove_all(dir);
}

}  // namespace
}  // namespace qb
