// The SDL window's event delivery (through a hidden window, which works with
// or without a display) and the clock's sleeping.
#include <SDL.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>
#include <vector>

#include "platform/sdl/SdlClock.h"
#include "platform/sdl/SdlKeyboard.h"
#include "platform/sdl/SdlWindow.h"

namespace qb {
namespace {

struct Recorder : WindowEvents {
    std::vector<std::string> seen;
    void onMouseMove(float x, float y) override {
        seen.push_back("move " + std::to_string(static_cast<int>(x)) + "," +
                       std::to_string(static_cast<int>(y)));
    }
    void onMouseDown(int button, float x, float y) override {
        seen.push_back("down " + std::to_string(button) + " " + std::to_string(static_cast<int>(x)) + "," +
                       std::to_string(static_cast<int>(y)));
    }
    void onClose() override { seen.push_back("close"); }
};

class HiddenWindow : public ::testing::Test {
protected:
    SdlKeyboard keyboard;
    SdlWindow window{keyboard, true, ""};
    Recorder handler;

    void SetUp() override {
        window.show();
        if (!window.ready()) GTEST_SKIP() << "no window: " << window.failure();
        window.processEvents(handler);  // whatever creating the window queued
        handler.seen.clear();
    }
    void key(SDL_Scancode sc, bool down, Uint16 mod = KMOD_NONE, Uint8 repeat = 0) {
        SDL_Event e{};
        e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
        e.key.keysym.scancode = sc;
        e.key.keysym.mod = mod;
        e.key.repeat = repeat;
        SDL_PushEvent(&e);
    }
    uint8_t state(uint8_t dik) {
        uint8_t s[256];
        keyboard.getState(s);
        return s[dik];
    }
};

TEST_F(HiddenWindow, KeysReachTheKeyboardOnlyWhenEventsAreProcessed) {
    key(SDL_SCANCODE_UP, true);
    EXPECT_EQ(state(DIK_UP), 0);  // nothing happens between processing points
    window.processEvents(handler);
    EXPECT_EQ(state(DIK_UP), 128);
    key(SDL_SCANCODE_UP, true, KMOD_NONE, 1);  // auto-repeat is not a key event
    key(SDL_SCANCODE_UP, false);
    window.processEvents(handler);
    EXPECT_EQ(state(DIK_UP), 0);
    std::vector<KeyEvent> events;
    EXPECT_EQ(keyboard.getEvents(events), 0);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].data, 128u);
    EXPECT_EQ(events[1].data, 0u);
}

TEST_F(HiddenWindow, AltReturnIsTheWindowsAndAltF4Closes) {
    key(SDL_SCANCODE_RETURN, true, KMOD_LALT);
    window.processEvents(handler);
    EXPECT_EQ(state(DIK_RETURN), 0);
    key(SDL_SCANCODE_F4, true, KMOD_LALT);
    window.processEvents(handler);
    ASSERT_EQ(handler.seen.size(), 1u);
    EXPECT_EQ(handler.seen[0], "close");
}

TEST_F(HiddenWindow, MouseAndQuitReachTheHandlerInBackBufferPixels) {
    window.setBackBufferSize(800, 600);
    SDL_Event e{};
    e.type = SDL_MOUSEMOTION;
    e.motion.x = 120;
    e.motion.y = 340;
    SDL_PushEvent(&e);
    e = SDL_Event{};
    e.type = SDL_MOUSEBUTTONDOWN;
    e.button.button = SDL_BUTTON_RIGHT;
    e.button.x = 5;
    e.button.y = 6;
    SDL_PushEvent(&e);
    e = SDL_Event{};
    e.type = SDL_QUIT;
    SDL_PushEvent(&e);
    window.processEvents(handler);
    ASSERT_EQ(handler.seen.size(), 3u);
    EXPECT_EQ(handler.seen[0], "move 120,340");
    EXPECT_EQ(handler.seen[1], "down 2 5,6");
    EXPECT_EQ(handler.seen[2], "close");
}

TEST_F(HiddenWindow, LosingFocusReleasesKeysButAHiddenWindowKeepsPlaying) {
    key(SDL_SCANCODE_LEFT, true);
    window.processEvents(handler);
    SDL_Event e{};
    e.type = SDL_WINDOWEVENT;
    e.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
    SDL_PushEvent(&e);
    window.processEvents(handler);
    EXPECT_EQ(state(DIK_LEFT), 0);
    EXPECT_TRUE(window.hasFocus());
    EXPECT_FALSE(window.waitForRefresh());  // nothing paces a hidden window
}

double CpuSeconds() {
    rusage r{};
    getrusage(RUSAGE_SELF, &r);
    return static_cast<double>(r.ru_utime.tv_sec + r.ru_stime.tv_sec) +
           static_cast<double>(r.ru_utime.tv_usec + r.ru_stime.tv_usec) / 1e6;
}

TEST(SdlClock, SleepsUntilTheTargetWithoutSpinningAndTicksFollow) {
    SdlClock clock;
    const int64_t f = clock.performanceFrequency();
    ASSERT_GT(f, 0);
    const double cpuBefore = CpuSeconds();
    const uint32_t ticksBefore = clock.tickCount();
    const int64_t start = clock.performanceCounter();
    const int64_t target = start + f * 50 / 1000;  // 50 ms
    clock.sleepUntil(target);
    const int64_t end = clock.performanceCounter();
    EXPECT_GE(end, target);
    EXPECT_LT(static_cast<double>(end - start) / static_cast<double>(f), 0.5);
    EXPECT_LT(CpuSeconds() - cpuBefore, 0.02);
    // The millisecond tick count follows the same clock.
    EXPECT_GE(clock.tickCount() - ticksBefore, 49u);
    EXPECT_LT(clock.tickCount() - ticksBefore, 1000u);
    // A target in the past returns at once.
    const int64_t before = clock.performanceCounter();
    clock.sleepUntil(before - f);
    EXPECT_LT(static_cast<double>(clock.performanceCounter() - before) / static_cast<double>(f), 0.01);
}

}  // namespace
}  // namespace qb
