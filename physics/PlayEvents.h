// What happened in a play frame, for the simulator's log and the tests: each
// part of the frame ors its flag in; whoever reads them clears them.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

enum PlayEvent : uint32_t {
    EventJump = 1u << 0,
    EventStar = 1u << 1,
    EventBounce = 1u << 2,
    EventTurbo = 1u << 3,
    EventFallBlock = 1u << 4,
    EventExplode = 1u << 5,
    EventDeath = 1u << 6,
    EventFinish = 1u << 7,
};

// "jump;star;..." in the fixed order above, "" for none.
std::string DescribePlayEvents(uint32_t events);

}  // namespace qb
