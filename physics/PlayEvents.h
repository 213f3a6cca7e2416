// What happened in a play frame. The physics notes each happening in the
// order it happens and touches nothing else; the session answers them with
// the sounds, the star counter, the statistics and the screens, and the
// simulator logs their flags. Whoever reads the flags clears them; the
// session clears the happenings once it has answered them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

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

enum class Happening : uint8_t {
    Jump,          // the car left the ground on a jump
    Star,          // a star was taken; the value is the stars taken in this run
    BouncePad,     // a bounce pad launched the car
    FallingBlock,  // a corner of the car stands on a falling block
    Turbo,         // a corner of the car stands on a turbo block
    Dropping,      // the car is dropping past the track, 10 to 15 below it
    Explode,       // the car starts to blow up
    BlowUp,        // the explosion shows its first picture
    BlownUp,       // the explosion has played out: the run is over
    FellOut,       // the car fell out of the world: the run is over
    Finish,        // the car landed on the finish
    BrokenTrack,   // a face tilted against all three axes of the car's box
};

struct PlayHappening {
    Happening what;
    int32_t value = 0;
};

class PlayEvents {
public:
    // A frame notes a handful at most; the room is kept between frames.
    PlayEvents() { happenings_.reserve(64); }

    // Notes a happening and sets its flag.
    void Add(Happening what, int32_t value = 0);
    const std::vector<PlayHappening>& Happenings() const { return happenings_; }
    void ClearHappenings() { happenings_.clear(); }

    uint32_t Flags = 0;
    // The race clock and the star count at the last finish.
    int32_t FinishFrames = 0;
    int32_t FinishStars = 0;

private:
    std::vector<PlayHappening> happenings_;
};

}  // namespace qb
