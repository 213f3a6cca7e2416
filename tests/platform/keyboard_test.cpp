// The SDL keyboard as the game reads it: DirectInput codes for every key the
// game acts on, and the bounded event queue with its overflow report.
#include <SDL.h>
#include <gtest/gtest.h>

#include "platform/sdl/SdlKeyboard.h"

namespace qb {
namespace {

TEST(SdlKeyboardMapping, GameKeysHaveTheirDirectInputCodes) {
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
}

TEST(SdlKeyboardMapping, LettersFollowTheirPlaceOnTheKeyboard) {
    // A to Z in DirectInput's numbering.
    const int codes[26] = {30, 48, 46, 32, 18, 33, 34, 35, 23, 36, 37, 38, 50,
                           49, 24, 25, 16, 19, 31, 20, 22, 47, 17, 45, 21, 44};
    for (int i = 0; i < 26; ++i)
        EXPECT_EQ(ScancodeToDik(SDL_SCANCODE_A + i), codes[i]) << static_cast<char>('A' + i);
}

TEST(SdlKeyboardMapping, NoTwoKeysShareACode) {
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

TEST(SdlKeyboardState, DownIs128AndUpIs0) {
    SdlKeyboard kb;
    uint8_t state[256];
    kb.onKey(SDL_SCANCODE_UP, true, 5);
    kb.onKey(SDL_SCANCODE_SPACE, true, 6);
    kb.getState(state);
    EXPECT_EQ(state[200], 128);
    EXPECT_EQ(state[57], 128);
    kb.onKey(SDL_SCANCODE_UP, false, 7);
    kb.getState(state);
    EXPECT_EQ(state[200], 0);
    EXPECT_EQ(state[57], 128);
    // Keys without a code change nothing and queue nothing.
    std::vector<KeyEvent> events;
    kb.getEvents(events);
    kb.onKey(SDL_SCANCODE_AUDIONEXT, true, 8);
    EXPECT_EQ(kb.getEvents(events), 0);
    EXPECT_TRUE(events.empty());
}

TEST(SdlKeyboardQueue, EventsCarryKeyDataTimeAndOrder) {
    SdlKeyboard kb;
    kb.onKey(SDL_SCANCODE_A, true, 100);
    kb.onKey(SDL_SCANCODE_A, true, 110);  // a second down without an up is no change
    kb.onKey(SDL_SCANCODE_A, false, 120);
    std::vector<KeyEvent> events;
    EXPECT_EQ(kb.getEvents(events), 0);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].key, 30u);
    EXPECT_EQ(events[0].data, 128u);
    EXPECT_EQ(events[0].timeStamp, 100u);
    EXPECT_EQ(events[1].data, 0u);
    EXPECT_LT(events[0].sequence, events[1].sequence);
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

}  // namespace
}  // namespace qb
