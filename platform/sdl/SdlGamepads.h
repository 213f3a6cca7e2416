// Game controllers through SDL's game-controller API and its mapping
// database: every controller plugged in (before the start or later) is
// opened; the first one still there drives. A button pressed and let go
// between two reads is still reported as pressed once.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <vector>

#include "platform/GamepadDevice.h"

namespace qb {

class SdlGamepads : public GamepadDevice {
public:
    SdlGamepads() = default;
    ~SdlGamepads() override;
    SdlGamepads(const SdlGamepads&) = delete;
    SdlGamepads& operator=(const SdlGamepads&) = delete;

    // Starts SDL's controller support on the first read.
    PadReading read() override;
    // How many controllers are open (the first of them drives).
    size_t count() const { return pads_.size(); }

private:
    struct Pad {
        SDL_JoystickID id;
        SDL_GameController* controller;
    };
    bool start();
    void openNew();
    bool dropDetached();  // true when the driver went
    static int watch(void* self, SDL_Event* e);

    bool started_ = false, failed_ = false;
    std::vector<Pad> pads_;
    uint32_t pressed_ = 0;  // taps of the driver seen by the event watch
};

}  // namespace qb
