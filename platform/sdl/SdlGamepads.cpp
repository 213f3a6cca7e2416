#include "platform/sdl/SdlGamepads.h"

#include <algorithm>

namespace qb {

SdlGamepads::~SdlGamepads() {
    if (!started_) return;
    SDL_DelEventWatch(&SdlGamepads::watch, this);
    for (Pad& p : pads_) SDL_GameControllerClose(p.controller);
    SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

bool SdlGamepads::start() {
    if (started_ || failed_) return started_;
    if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) != 0) {
        failed_ = true;  // no controllers, the keyboard still plays
        return false;
    }
    started_ = true;
    // Presses are caught as SDL posts them, whoever drains the queue, so a
    // quick tap between two reads is not lost.
    SDL_AddEventWatch(&SdlGamepads::watch, this);
    return true;
}

int SdlGamepads::watch(void* self, SDL_Event* e) {
    auto* pads = static_cast<SdlGamepads*>(self);
    if (e->type == SDL_CONTROLLERBUTTONDOWN && !pads->pads_.empty() &&
        e->cbutton.which == pads->pads_[0].id && e->cbutton.button < 32)
        pads->pressed_ |= 1u << e->cbutton.button;
    return 1;
}

void SdlGamepads::openNew() {
    const int n = SDL_NumJoysticks();
    for (int i = 0; i < n; ++i) {
        if (!SDL_IsGameController(i)) continue;
        const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID(i);
        if (std::any_of(pads_.begin(), pads_.end(), [&](const Pad& p) { return p.id == id; })) continue;
        if (SDL_GameController* c = SDL_GameControllerOpen(i)) pads_.push_back({id, c});
    }
}

bool SdlGamepads::dropDetached() {
    bool driverLost = false;
    for (size_t i = 0; i < pads_.size();) {
        if (SDL_GameControllerGetAttached(pads_[i].controller)) {
            ++i;
            continue;
        }
        if (i == 0) {
            driverLost = true;
            pressed_ = 0;  // the next driver's buttons start afresh
        }
        SDL_GameControllerClose(pads_[i].controller);
        pads_.erase(pads_.begin() + static_cast<long>(i));
    }
    return driverLost;
}

PadReading SdlGamepads::read() {
    PadReading r;
    if (!start()) return r;
    // Brings the states up to date and notices controllers coming and going.
    SDL_GameControllerUpdate();
    r.driverLost = dropDetached();
    openNew();
    // Nothing else reads controller events: keep them from piling up.
    SDL_FlushEvents(SDL_JOYAXISMOTION, SDL_CONTROLLERSENSORUPDATE);
    if (pads_.empty()) {
        pressed_ = 0;
        return r;
    }
    SDL_GameController* c = pads_[0].controller;
    r.connected = true;
    for (int b = 0; b < SDL_CONTROLLER_BUTTON_MAX && b < 32; ++b)
        if (SDL_GameControllerGetButton(c, static_cast<SDL_GameControllerButton>(b))) r.held |= 1u << b;
    r.pressed = pressed_;
    pressed_ = 0;
    auto axis = [&](SDL_GameControllerAxis a) {
        return std::clamp(static_cast<float>(SDL_GameControllerGetAxis(c, a)) / 32767.0f, -1.0f, 1.0f);
    };
    r.stickX = axis(SDL_CONTROLLER_AXIS_LEFTX);
    r.stickY = axis(SDL_CONTROLLER_AXIS_LEFTY);
    r.triggerLeft = std::max(0.0f, axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT));
    r.triggerRight = std::max(0.0f, axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT));
    return r;
}

}  // namespace qb
