// stats.dat reader: any bytes with any track count decode, and encoding
// over the same bytes changes nothing but what was missing and the damaged
// (negative) counters, which read as 0; a second round changes nothing.
#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz_common.h"
#include "persist/Stats.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    const int32_t count = (data[0] | data[1] << 8) % 4096;
    data += 2;
    size -= 2;
    int32_t total = 0;
    std::vector<qb::LevelStat> levels;
    qb::Stats::Decode(data, size, count, total, levels);
    FUZZ_CHECK(levels.size() == static_cast<size_t>(count) + 1);

    std::vector<uint8_t> bytes(data, data + size);
    qb::Stats::Encode(bytes, total, levels);
    FUZZ_CHECK(bytes.size() == std::max(size, static_cast<size_t>(4 + 16 * count)));
    for (size_t i = 0; i < size; ++i) {
        const size_t top = (i & ~size_t{3}) + 3;
        const bool negativeWord = top < size && (data[top] & 0x80) != 0;
        FUZZ_CHECK(bytes[i] == data[i] || i >= 4 + 16 * static_cast<size_t>(count) || negativeWord);
    }

    int32_t total2 = 0;
    std::vector<qb::LevelStat> levels2;
    qb::Stats::Decode(bytes.data(), bytes.size(), count, total2, levels2);
    std::vector<uint8_t> again(bytes);
    qb::Stats::Encode(again, total2, levels2);
    FUZZ_CHECK(again == bytes);
    return 0;
}
