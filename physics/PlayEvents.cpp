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

void PlayEvents::Add(Happening what, int32_t value) {
    switch (what) {
        case Happening::Jump:
            Flags |= EventJump;
            break;
        case Happening::Star:
            Flags |= EventStar;
            break;
        case Happening::BouncePad:
            Flags |= EventBounce;
            break;
        case Happening::Turbo:
            Flags |= EventTurbo;
            break;
        case Happening::FallingBlock:
            Flags |= EventFallBlock;
            break;
        case Happening::Explode:
            Flags |= EventExplode;
            break;
        case Happening::BlownUp:
        case Happening::FellOut:
            Flags |= EventDeath;
            break;
        case Happening::Finish:
            Flags |= EventFinish;
            break;
        default:
            break;
    }
    happenings_.push_back(PlayHappening{what, value});
}

}  // namespace qb
