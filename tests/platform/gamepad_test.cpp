// Game controllers through SDL, with SDL's virtual controllers standing in
// for real ones: plugged in before the start and while running, several at
// once, taps between two reads, unplugging; then the whole game driven by one.
#include <SDL.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "persist/Stats.h"
#include "physics/clsPlayer.h"
#include "platform/headless/HeadlessPlatform.h"
#include "platform/sdl/SdlGamepads.h"
#include "shell/GuiLink.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

// One virtual controller with every button and axis of the usual layout.
class VirtualPad {
public:
    VirtualPad() {
        SDL_VirtualJoystickDesc desc{};
        desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        desc.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
        desc.naxes = SDL_CONTROLLER_AXIS_MAX;
        desc.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
        desc.name = "Quorbit test pad";
        const int index = SDL_JoystickAttachVirtualEx(&desc);
        EXPECT_GE(index, 0) << SDL_GetError();
        joystick_ = SDL_JoystickOpen(index);
        EXPECT_NE(joystick_, nullptr) << SDL_GetError();
        id_ = SDL_JoystickInstanceID(joystick_);
    }
    ~VirtualPad() { unplug(); }
    void button(SDL_GameControllerButton b, bool down) {
        SDL_JoystickSetVirtualButton(joystick_, b, down ? SDL_PRESSED : SDL_RELEASED);
        SDL_JoystickUpdate();  // the change arrives as the device reports it
    }
    void tap(SDL_GameControllerButton b) {
        button(b, true);
        button(b, false);
    }
    void axis(SDL_GameControllerAxis a, float value) {
        SDL_JoystickSetVirtualAxis(joystick_, a, static_cast<Sint16>(value * 32767.0f));
    }
    void unplug() {
        if (!joystick_) return;
        for (int i = 0; i < SDL_NumJoysticks(); ++i)
            if (SDL_JoystickGetDeviceInstanceID(i) == id_) SDL_JoystickDetachVirtual(i);
        SDL_JoystickClose(joystick_);
        joystick_ = nullptr;
    }

private:
    SDL_Joystick* joystick_ = nullptr;
    SDL_JoystickID id_ = -1;
};

// SDL's joystick layer held open for the test, so the virtual devices outlive
// the reader's own start and stop.
struct SdlJoysticks {
    SdlJoysticks() { EXPECT_EQ(SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER), 0) << SDL_GetError(); }
    ~SdlJoysticks() { SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER); }
};

TEST(SdlGamepads, PluggedBeforeOrWhileRunningTheFirstDrivesAndUnpluggingIsReported) {
    SdlJoysticks sdl;
    SdlGamepads pads;
    auto first = std::make_unique<VirtualPad>();  // there before the first read
    PadReading r = pads.read();
    ASSERT_TRUE(r.connected);
    EXPECT_EQ(r.held, 0u);

    first->button(SDL_CONTROLLER_BUTTON_A, true);
    first->axis(SDL_CONTROLLER_AXIS_LEFTX, -1.0f);
    first->axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 1.0f);
    r = pads.read();
    EXPECT_EQ(std::tuple(r.held, r.pressed), std::tuple(PadA, PadA));
    EXPECT_LT(r.stickX, -0.99f);
    EXPECT_GT(r.triggerRight, 0.99f);
    r = pads.read();  // still held: no new press
    EXPECT_EQ(std::tuple(r.held, r.pressed), std::tuple(PadA, 0u));
    first->button(SDL_CONTROLLER_BUTTON_A, false);

    // A tap between two reads is seen once.
    first->tap(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
    r = pads.read();
    EXPECT_EQ(std::tuple(r.held, r.pressed), std::tuple(0u, PadDown));
    EXPECT_EQ(pads.read().pressed, 0u);

    // A second controller plugged in while running waits its turn.
    VirtualPad second;
    second.button(SDL_CONTROLLER_BUTTON_START, true);
    r = pads.read();
    EXPECT_EQ(pads.count(), 2u);
    EXPECT_EQ(r.held & PadStart, 0u);
    EXPECT_FALSE(r.driverLost);

    // The driver goes: reported once, and the second one drives.
    first->unplug();
    r = pads.read();
    EXPECT_EQ(std::tuple(r.driverLost, r.connected, r.held), std::tuple(true, true, PadStart));
    r = pads.read();
    EXPECT_FALSE(r.driverLost);
    second.unplug();
    r = pads.read();
    EXPECT_EQ(std::tuple(r.driverLost, r.connected, pads.count()), std::tuple(true, false, 0u));
}

// The game on the headless platform, but with SDL's controllers.
struct PadGame {
    std::string dir;
    HeadlessPlatform hp;
    SdlGamepads pads;
    Platform platform;
    std::unique_ptr<frmGame> game;
    PadGame()
        : dir(test::FreshDir("pad")), hp(QUORBIT_GAME_DIR, dir), platform{hp.graphics, hp.keyboard,
                                                                          pads,        hp.clock,
                                                                          hp.window,   hp.audio,
                                                                          hp.system,   hp.platform.paths} {
        std::filesystem::copy_file(std::string(QUORBIT_GAME_DIR) + "/levels.dat", dir + "levels.dat");
        game = std::make_unique<frmGame>(platform);
        EXPECT_TRUE(game->startup());
    }
    // Menu passes: the loop reads the controller once each.
    void passes(int n) {
        for (int i = 0; i < n; ++i) game->HandleKeyboard();
    }
    void frames(int n) {
        for (int i = 0; i < n && game->GameState == Playing; ++i) {
            hp.clock.advanceMs(frmGame::FrameInterval);
            game->playFrame();
        }
    }
};

TEST(GamepadPlay, MenusAndARaceWithAControllerAndUnpluggingPauses) {
    SdlJoysticks sdl;
    PadGame g;
    frmGame& game = *g.game;
    VirtualPad pad;
    g.passes(2);
    ASSERT_EQ(game.GameState, MainMenu);
    // Down and back up with the D-pad, then the stick: Options, then Play.
    pad.tap(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
    g.passes(1);
    EXPECT_EQ(CurrentTab(game), 2);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTY, -0.9f);
    g.passes(3);  // held: one step
    EXPECT_EQ(CurrentTab(game), 1);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTY, -0.4f);  // between the marks: still up
    g.passes(1);
    EXPECT_EQ(CurrentTab(game), 1);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTY, 0.0f);
    g.passes(1);
    // A chooses: Play, then zone A; B goes back and A again.
    pad.tap(SDL_CONTROLLER_BUTTON_A);
    g.passes(2);
    ASSERT_EQ(game.GameState, ZoneChoice);
    pad.tap(SDL_CONTROLLER_BUTTON_B);
    g.passes(2);
    ASSERT_EQ(game.GameState, MainMenu);
    pad.tap(SDL_CONTROLLER_BUTTON_A);
    g.passes(2);
    pad.tap(SDL_CONTROLLER_BUTTON_A);
    g.passes(2);
    ASSERT_EQ(game.GameState, TrackChoice);
    // A held starts the track and does not jump until let go.
    pad.button(SDL_CONTROLLER_BUTTON_A, true);
    g.passes(1);
    ASSERT_EQ(game.GameState, Playing);
    g.frames(20);
    EXPECT_EQ(game.stats->JumpCount, 0);
    pad.button(SDL_CONTROLLER_BUTTON_A, false);

    // D-pad up accelerates, the stick steers past its dead zone, A jumps.
    pad.button(SDL_CONTROLLER_BUTTON_DPAD_UP, true);
    g.frames(10);
    EXPECT_GT(game.player->ForwardVelocity(), 0.1f);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 0.2f);  // inside the dead zone
    g.frames(1);
    EXPECT_EQ(game.player->GetVelocity().x, 0.0f);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 0.8f);
    g.frames(1);
    EXPECT_GT(game.player->GetVelocity().x, 0.0f);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 0.0f);
    pad.tap(SDL_CONTROLLER_BUTTON_A);
    g.frames(1);
    EXPECT_EQ(game.stats->JumpCount, 1);

    // Start pauses and resumes.
    pad.tap(SDL_CONTROLLER_BUTTON_START);
    g.frames(1);
    ASSERT_EQ(game.GameState, PauseMenu);
    pad.tap(SDL_CONTROLLER_BUTTON_START);
    g.passes(1);
    ASSERT_EQ(game.GameState, Playing);

    // Pulling the controller out holds the race.
    const int32_t clock = game.RaceFrames;
    pad.unplug();
    g.frames(1);
    EXPECT_EQ(game.GameState, PauseMenu);
    EXPECT_LE(game.RaceFrames, clock + 1);
}

}  // namespace
}  // namespace qb
