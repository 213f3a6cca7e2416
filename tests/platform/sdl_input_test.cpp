// The SDL keyboard as the game reads it (DirectInput codes for every key the
// game acts on, the bounded event queue with its overflow report), the
// window's event delivery (through a hidden window, which works with or
// without a display) and the clock's sleeping.
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

TEST(SdlKeyboardMapping, EveryKeyHasItsDirectInputCodeAndNoTwoShareOne) {
    struct Case {
        SDL_Scancode sc;
        int dik;
    };
    const Case cases[] = {
        {SDL_SCANCODE_ESCAPE, 1},      {SDL_SCANCODE_RETURN, 28},    {SDL_SCANCODE_UP, 200},
        {SDL_SCANCODE_DOWN, 208},      {SDL_SCANCODE_LEFT, 203},     {SDL_SCANCODE_RIGHT, 205},
        {SDL_SCANCODE_SPACE, 57},      {SDL_SCANCODE_BACKSPACE, 14}, {SDL_SCANCODE_LSHIFT, 42},
        {SDL_SCANCODE_RSHIFT, 54},     {SDL_SCANCODE_LCTRL, 29},     {SDL_SCANCODE_RCTRL, 157},
        {SDL_SCANCODE_KP_ENTER, 0x9C}, {SDL_SCANCODE_TAB, 0x0F},     {SDL_SCANCODE_1, 2},
        {SDL_SCANCODE_9, 10},          {SDL_SCANCODE_0, 11},
    };
    for (const Case& c : cases) EXPECT_EQ(ScancodeToDik(c.sc), c.dik) << SDL_GetScancodeName(c.sc);
    // A to Z follow their places on the keyboard.
    const int letters[26] = {30, 48, 46, 32, 18, 33, 34, 35, 23, 36, 37, 38, 50,
                             49, 24, 25, 16, 19, 31, 20, 22, 47, 17, 45, 21, 44};
    for (int i = 0; i < 26; ++i)
        EXPECT_EQ(ScancodeToDik(SDL_SCANCODE_A + i), letters[i]) << static_cast<char>('A' + i);
    int owner[256] = {};
    for (int sc = 0; sc < SDL_NUM_SCANCODES; ++sc) {
        const uint8_t dik = ScancodeToDik(sc);
        if (dik == 0) continue;
        // The two backslash positions of ISO and ANSI boards are one key.
        if (sc == SDL_SCANCODE_NONUSHASH) continue;
        EXPECT_EQ(owner[dik], 0) << "code " << int(dik) << " for scancodes " << owner[dik] << " and " << sc;
        owner[dik] = sc;
    }
    EXPECT_EQ(ScancodeToDik(SDL_SCANCODE_UNKNOWN), 0);
    EXPECT_EQ(ScancodeToDik(SDL_SCANCODE_AUDIONEXT), 0);
}

// The state reads 128 for a key down and 0 for one up; every change is
// queued once, in order, with its time.
TEST(SdlKeyboard, StateAndQueueFollowEveryChangeInOrder) {
    SdlKeyboard kb;
    uint8_t state[256];
    kb.onKey(SDL_SCANCODE_UP, true, 5);
    kb.onKey(SDL_SCANCODE_A, true, 100);
    kb.onKey(SDL_SCANCODE_A, true, 110);  // a second down without an up is no change
    kb.getState(state);
    EXPECT_EQ(state[200], 128);
    EXPECT_EQ(state[30], 128);
    kb.onKey(SDL_SCANCODE_A, false, 120);
    kb.getState(state);
    EXPECT_EQ(state[30], 0);
    EXPECT_EQ(state[200], 128);
    // Keys without a code change nothing and queue nothing.
    kb.onKey(SDL_SCANCODE_AUDIONEXT, true, 8);
    std::vector<KeyEvent> events;
    EXPECT_EQ(kb.getEvents(events), 0);
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(events[1].key, 30u);
    EXPECT_EQ(events[1].data, 128u);
    EXPECT_EQ(events[1].timeStamp, 100u);
    EXPECT_EQ(events[2].data, 0u);
    EXPECT_EQ(events[2].timeStamp, 120u);
    EXPECT_LT(events[1].sequence, events[2].sequence);
    EXPECT_EQ(kb.getEvents(events), 0);
    EXPECT_TRUE(events.empty());
}

TEST(SdlKeyboardQueue, TenChangesFitElevenOverflowOnceAndKeepTheFirstTen) {
    std::vector<KeyEvent> events;
    SdlKeyboard ten;
    for (int i = 0; i < 10; ++i) ten.onKey(SDL_SCANCODE_A + i, true, 0);
    EXPECT_EQ(ten.getEvents(events), 0);
    EXPECT_EQ(events.size(), 10u);
    SdlKeyboard kb;
    for (int i = 0; i < 11; ++i) kb.onKey(SDL_SCANCODE_A + i, true, static_cast<uint32_t>(i));
    EXPECT_EQ(kb.getEvents(events), KeyboardDevice::DIERR_BUFFEROVERFLOW);
    ASSERT_EQ(events.size(), 10u);
    EXPECT_EQ(events.front().key, 30u);                           // A
    EXPECT_EQ(events.back().key, ScancodeToDik(SDL_SCANCODE_J));  // the tenth
    // The state still knows the eleventh key; the next read is clean.
    uint8_t state[256];
    kb.getState(state);
    EXPECT_EQ(state[ScancodeToDik(SDL_SCANCODE_K)], 128);
    EXPECT_EQ(kb.getEvents(events), 0);
    EXPECT_TRUE(events.empty());
}

TEST(SdlKeyboardFocus, LosingFocusReleasesHeldKeys) {
    SdlKeyboard kb;
    kb.onKey(SDL_SCANCODE_UP, true, 1);
    kb.onKey(SDL_SCANCODE_RCTRL, true, 2);
    std::vector<KeyEvent> events;
    kb.getEvents(events);
    kb.releaseAll(3);
    uint8_t state[256];
    kb.getState(state);
    for (int k = 0; k < 256; ++k) EXPECT_EQ(state[k], 0) << k;
    EXPECT_EQ(kb.getEvents(events), 0);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].data, 0u);
}

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
    window.setBackBufferSize(800, 600, 1.0f);
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
