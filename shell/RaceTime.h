// A race time: whole seconds and hundredths from the frame count at 25
// frames a second, so the hundredths are always multiples of 4.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

struct RaceTime {
    int32_t Seconds = 0;
    int32_t Hundredths = 0;

    static RaceTime FromFrames(int32_t frames) { return RaceTime{frames / 25, (frames % 25) * 4}; }
    // "10:08"
    std::string Clock() const {
        return std::to_string(Seconds) + ":" + (Hundredths < 10 ? "0" : "") + std::to_string(Hundredths);
    }
    // "Time = 10:08"
    std::string Text() const { return "Time = " + Clock(); }
};

}  // namespace qb
