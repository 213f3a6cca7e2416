// stats.dat reader: any bytes with any track count decode, and encoding
// over the same bytes changes nothing but what was missing.
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
    for (size_t i = 0; i < size; ++i)
        FUZZ_CHECK(bytes[i] == data[i] || i >= 4 + 16 * static_cast<size_t>(count));
    return 0;
}
