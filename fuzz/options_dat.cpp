// options.dat reader: any length, the first 12 bytes decide.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "fuzz/fuzz_common.h"
#include "persist/optionsDat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const qb::OptionsRecord r = qb::optionsDat::Decode(data, size);
    unsigned char padded[12] = {};
    std::memcpy(padded, data, size < 12 ? size : 12);
    const qb::OptionsRecord p = qb::optionsDat::Decode(padded, 12);
    FUZZ_CHECK(r.MusicVolume == p.MusicVolume && r.SfxVolume == p.SfxVolume && r.VideoMode == p.VideoMode);
    return 0;
}
