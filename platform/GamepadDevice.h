// Game controllers as the game reads them, once a pass: the controller that
// drives (the first one plugged in that is still there) with its buttons,
// its left stick and its triggers.
#pragma once

#include <cstdint>

namespace qb {

// Button bits, in the order of the usual controller layout (A at the
// bottom of the four face buttons, B to its right).
enum PadButton : uint32_t {
    PadA = 1u << 0,
    PadB = 1u << 1,
    PadX = 1u << 2,
    PadY = 1u << 3,
    PadBack = 1u << 4,
    PadGuide = 1u << 5,
    PadStart = 1u << 6,
    PadLeftStick = 1u << 7,
    PadRightStick = 1u << 8,
    PadLeftShoulder = 1u << 9,
    PadRightShoulder = 1u << 10,
    PadUp = 1u << 11,
    PadDown = 1u << 12,
    PadLeft = 1u << 13,
    PadRight = 1u << 14,
};

struct PadReading {
    bool connected = false;
    uint32_t held = 0;                        // buttons down now
    uint32_t pressed = 0;                     // buttons that went down since the last read, even if up again
    float stickX = 0, stickY = 0;             // left stick, -1..1, right and down positive
    float triggerLeft = 0, triggerRight = 0;  // 0..1
    bool driverLost = false;                  // the controller that drove was unplugged since the last read
};

class GamepadDevice {
public:
    virtual ~GamepadDevice() = default;
    virtual PadReading read() = 0;
};

}  // namespace qb
