// The keyboard module: opens the keyboard once and logs what it found.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/KeyboardDevice.h"

namespace qb {

class QuorbitDebug;
class Window;

class DirectInput {
public:
    DirectInput(KeyboardDevice& device, QuorbitDebug& log, Window& window);
    bool InitialiseKeyboard();

    KeyboardDevice& keyboard;
    uint8_t KeyState[256] = {};
    std::vector<KeyEvent> EventBuffer;

private:
    QuorbitDebug& log_;
    Window& window_;
};

// Drops leading and trailing characters with codes 32 or below.
std::string Trim(const std::string& text);

}  // namespace qb
