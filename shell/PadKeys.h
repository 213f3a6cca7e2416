// A controller acts through the same keys as the keyboard: each pass its
// buttons and stick become key presses for the screen in front, so every
// keyboard rule (presses once, held actions, keys held into a new screen)
// holds for it too.
//
// In play the D-pad or the left stick steers, accelerates and brakes (the
// triggers too), A jumps, Start pauses, Back restarts. In the menus the D-pad
// or the stick moves the focus, A chooses, B goes back.
#pragma once

#include <array>
#include <cstdint>

#include "platform/GamepadDevice.h"

namespace qb {

class KeyBindings;

class PadKeys {
public:
    // The stick and the triggers are on/off controls: one goes on past
    // OnAt and off again only below OffAt, so a hand resting near the edge
    // does not flicker the car's keys.
    static constexpr float OnAt = 0.5f;
    static constexpr float OffAt = 0.3f;

    // Adds the controller's keys for a pass on `screen` to the key state and
    // marks its new presses in `fresh`.
    void Apply(const PadReading& pad, int16_t screen, const KeyBindings& bindings, uint8_t state[256],
               std::array<bool, 256>& fresh);
    // The screen changed: what the controller holds waits to be let go.
    void HoldOver() { heldOver_ = held_; }

private:
    uint32_t directions(const PadReading& pad);
    bool left_ = false, right_ = false, up_ = false, down_ = false;
    bool triggerLeft_ = false, triggerRight_ = false;
    uint32_t held_ = 0;      // buttons and stick directions down in the last pass
    uint32_t heldOver_ = 0;  // held into a new screen, not yet let go
};

}  // namespace qb
