// Float to whole number, rounding half to even, defined for every input: a
// track file may hold NaN or 1e30 where a coordinate belongs, and a plain
// conversion of those is undefined. NaN gives 0; values past the range stop
// at its ends.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace qb {

template <typename Int>
Int WholeNumber(double v) {
    if (std::isnan(v)) return 0;
    const double r = std::nearbyint(v);
    if (r <= static_cast<double>(std::numeric_limits<Int>::min())) return std::numeric_limits<Int>::min();
    if (r >= static_cast<double>(std::numeric_limits<Int>::max())) return std::numeric_limits<Int>::max();
    return static_cast<Int>(r);
}

inline int32_t Whole32(double v) {
    return WholeNumber<int32_t>(v);
}
inline int16_t Whole16(double v) {
    return WholeNumber<int16_t>(v);
}

// A track coordinate as a whole number. It stays well inside 32 bits, so the
// sums the game forms from it (a position plus a size plus one) cannot
// overflow either.
constexpr int32_t kFarthestCoordinate = 1000000000;
inline int32_t WholeCoordinate(double v) {
    const int32_t w = Whole32(v);
    return w < -kFarthestCoordinate  ? -kFarthestCoordinate
           : w > kFarthestCoordinate ? kFarthestCoordinate
                                     : w;
}

}  // namespace qb
