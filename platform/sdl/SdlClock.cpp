#include "platform/sdl/SdlClock.h"

#include <SDL.h>
#include <sched.h>
#include <time.h>

namespace qb {

int64_t SdlClock::performanceCounter() {
    return static_cast<int64_t>(SDL_GetPerformanceCounter());
}

int64_t SdlClock::performanceFrequency() {
    return static_cast<int64_t>(SDL_GetPerformanceFrequency());
}

uint32_t SdlClock::tickCount() {
    return SDL_GetTicks();
}

void SdlClock::sleepUntil(int64_t counter) {
    const double frequency = static_cast<double>(performanceFrequency());
    for (;;) {
        const int64_t now = performanceCounter();
        if (now >= counter) return;
        const double remainingNs = static_cast<double>(counter - now) / frequency * 1e9;
        // The kernel wakes us a little late; aim short of the target and
        // finish the last tenth of a millisecond by yielding.
        if (remainingNs > 100000.0) {
            const double sleepNs = remainingNs > 1000000.0 ? remainingNs - 500000.0 : remainingNs - 50000.0;
            timespec ts{
                static_cast<time_t>(sleepNs / 1e9),
                static_cast<long>(sleepNs - static_cast<double>(static_cast<time_t>(sleepNs / 1e9)) * 1e9)};
            nanosleep(&ts, nullptr);
        } else {
            sched_yield();
        }
    }
}

}  // namespace qb
