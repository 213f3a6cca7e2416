// The clock on SDL2's performance counter; sleeping is done by the kernel,
// never by spinning.
#pragma once

#include "platform/Clock.h"

namespace qb {

class SdlClock : public Clock {
public:
    int64_t performanceCounter() override;
    int64_t performanceFrequency() override;
    uint32_t tickCount() override;
    void sleepUntil(int64_t counter) override;
};

}  // namespace qb
