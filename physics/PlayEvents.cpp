#include "physics/PlayEvents.h"

namespace qb {

std::string DescribePlayEvents(uint32_t events) {
    static const char* const kNames[] = {"jump",       "star",    "bounce", "turbo",
                                         "fall_block", "explode", "death",  "finish"};
    std::string out;
    for (int i = 0; i < 8; ++i) {
        if ((events & (1u << i)) == 0) continue;
        if (!out.empty()) out += ';';
        out += kNames[i];
    }
    return out;
}

}  // namespace qb
