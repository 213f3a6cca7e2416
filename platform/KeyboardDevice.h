// The keyboard as the game reads it: 256 key bytes indexed by DirectInput key
// codes (128 down, 0 up) plus a bounded queue of key events.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qb {

// DirectInput key codes the game uses.
enum DIK : uint8_t {
    DIK_ESCAPE = 0x01, DIK_1 = 0x02, DIK_0 = 0x0B, DIK_BACK = 0x0E, DIK_TAB = 0x0F,
    DIK_Q = 0x10, DIK_W = 0x11, DIK_E = 0x12, DIK_R = 0x13, DIK_T = 0x14, DIK_Y = 0x15,
    DIK_U = 0x16, DIK_I = 0x17, DIK_O = 0x18, DIK_P = 0x19, DIK_RETURN = 0x1C,
    DIK_LCONTROL = 0x1D, DIK_A = 0x1E, DIK_S = 0x1F, DIK_D = 0x20, DIK_F = 0x21,
    DIK_G = 0x22, DIK_H = 0x23, DIK_J = 0x24, DIK_K = 0x25, DIK_L = 0x26,
    DIK_LSHIFT = 0x2A, DIK_Z = 0x2C, DIK_X = 0x2D, DIK_C = 0x2E, DIK_V = 0x2F,
    DIK_B = 0x30, DIK_N = 0x31, DIK_M = 0x32, DIK_RSHIFT = 0x36, DIK_SPACE = 0x39,
    DIK_NUMPADENTER = 0x9C, DIK_RCONTROL = 0x9D, DIK_UP = 0xC8, DIK_LEFT = 0xCB,
    DIK_RIGHT = 0xCD, DIK_DOWN = 0xD0,
};

struct KeyEvent {
    uint32_t key = 0;
    uint32_t data = 0;  // 128 pressed, 0 released
    uint32_t timeStamp = 0;
    uint32_t sequence = 0;
};

struct KeyboardInfo {
    std::string productName;
    uint32_t deviceType = 0;
    std::string guidInstance;
};

class KeyboardDevice {
public:
    static constexpr int BufferSize = 10;
    static constexpr long DIERR_BUFFEROVERFLOW = 0x80040260L;

    virtual ~KeyboardDevice() = default;
    // Opens the keyboard. False when there is none.
    virtual bool acquire(KeyboardInfo& info) = 0;
    // The immediate state of all 256 keys.
    virtual void getState(uint8_t state[256]) = 0;
    // Drains the queued events. Returns 0, or DIERR_BUFFEROVERFLOW when more
    // than BufferSize events arrived since the last read (the queue keeps the
    // first BufferSize).
    virtual long getEvents(std::vector<KeyEvent>& out) = 0;
};

}  // namespace qb
