// Time as the main loop sees it: a high-resolution counter for pacing play
// frames and a millisecond tick count. Only the loop's pacing reads it; the
// play tick counts frames.
#pragma once

#include <cstdint>

namespace qb {

class Clock {
public:
    virtual ~Clock() = default;
    virtual int64_t performanceCounter() = 0;
    virtual int64_t performanceFrequency() = 0;
    virtual uint32_t tickCount() = 0;
    // Sleeps until the counter reaches `counter` (returns at once if it has).
    virtual void sleepUntil(int64_t counter) = 0;
};

}  // namespace qb
