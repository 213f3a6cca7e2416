// The keyboard read through SDL2 key events: the window feeds every key change
// in, the game reads the 256-byte DirectInput-style state and the bounded
// event queue out.
#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "platform/KeyboardDevice.h"

namespace qb {

// The DirectInput code of an SDL scancode (an SDL_Scancode value); 0 when
// the key has no code.
uint8_t ScancodeToDik(int scancode);

class SdlKeyboard : public KeyboardDevice {
public:
    bool acquire(KeyboardInfo& info) override;
    void getState(uint8_t state[256]) override;
    long getEvents(std::vector<KeyEvent>& out) override;

    // One key change from the window (repeats are not key changes).
    void onKey(int scancode, bool down, uint32_t timeStampMs);
    // Focus went elsewhere: whatever was held is released.
    void releaseAll(uint32_t timeStampMs);

private:
    uint8_t keys_[256] = {};
    std::deque<KeyEvent> queue_;
    bool overflow_ = false;
    uint32_t sequence_ = 0;
    void push(uint8_t key, uint32_t data, uint32_t timeStampMs);
};

}  // namespace qb
