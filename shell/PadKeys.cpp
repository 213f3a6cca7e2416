#include "shell/PadKeys.h"

#include "platform/KeyboardDevice.h"
#include "shell/GameState.h"
#include "shell/KeyBindings.h"

namespace qb {

namespace {
// The triggers share the bits of the stick's directions in play.
constexpr uint32_t TriggerLeft = 1u << 20, TriggerRight = 1u << 21;

bool Hysteresis(bool on, float value) {
    return on ? value > PadKeys::OffAt : value > PadKeys::OnAt;
}
}  // namespace

uint32_t PadKeys::directions(const PadReading& pad) {
    left_ = Hysteresis(left_, -pad.stickX);
    right_ = Hysteresis(right_, pad.stickX);
    up_ = Hysteresis(up_, -pad.stickY);
    down_ = Hysteresis(down_, pad.stickY);
    triggerLeft_ = Hysteresis(triggerLeft_, pad.triggerLeft);
    triggerRight_ = Hysteresis(triggerRight_, pad.triggerRight);
    uint32_t d = 0;
    if (left_) d |= PadLeft;
    if (right_) d |= PadRight;
    if (up_) d |= PadUp;
    if (down_) d |= PadDown;
    if (triggerLeft_) d |= TriggerLeft;
    if (triggerRight_) d |= TriggerRight;
    return d;
}

void PadKeys::Apply(const PadReading& pad, int16_t screen, const KeyBindings& bindings, uint8_t state[256],
                    std::array<bool, 256>& fresh) {
    if (!pad.connected) {
        left_ = right_ = up_ = down_ = triggerLeft_ = triggerRight_ = false;
        held_ = heldOver_ = 0;
        return;
    }
    const uint32_t held = pad.held | directions(pad);
    // A tap shows in `pressed` only: it counts as held for this pass.
    const uint32_t now = held | pad.pressed;
    heldOver_ &= now & ~pad.pressed;  // let go (or pressed anew): no longer held over
    held_ = held;
    const uint32_t acting = now & ~heldOver_;

    auto key = [&](uint32_t bits, uint8_t code) {
        if ((acting & bits) == 0 || code == 0) return;
        state[code] = 128;
        if (pad.pressed & bits) fresh[code] = true;
    };
    if (screen == Playing) {
        // Any key of the action does; the last one is never Esc.
        auto first = [&](Action a) -> uint8_t {
            const auto& keys = bindings.Keys(a);
            return keys.empty() ? 0 : keys.back();
        };
        key(PadUp | TriggerRight, first(Action::Accelerate));
        key(PadDown | TriggerLeft, first(Action::Brake));
        key(PadLeft, first(Action::Left));
        key(PadRight, first(Action::Right));
        key(PadA, first(Action::Jump));
        key(PadStart, DIK_ESCAPE);
        key(PadBack, first(Action::QuickRestart));
        return;
    }
    key(PadUp, DIK_UP);
    key(PadDown, DIK_DOWN);
    key(PadLeft, DIK_LEFT);
    key(PadRight, DIK_RIGHT);
    key(PadA, DIK_RETURN);
    if (screen == NameEntry) {
        key(PadB, DIK_BACK);  // B takes back a letter; A finishes the name
    } else {
        key(PadB, DIK_ESCAPE);
        // Start resumes from the pause menu as it paused; elsewhere it chooses.
        key(PadStart, screen == PauseMenu ? DIK_ESCAPE : DIK_RETURN);
    }
}

}  // namespace qb
