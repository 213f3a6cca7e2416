// Replay reader: any text either is refused with a reason or reads into a
// replay that writes out and reads back to the same replay.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_common.h"
#include "shell/ReplayFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    qb::Replay r;
    std::string error;
    if (!qb::ParseReplay(text, r, error)) {
        FUZZ_CHECK(!error.empty());
        return 0;
    }
    FUZZ_CHECK(r.frames >= 0 && r.frames <= qb::Replay::LongestRun);
    FUZZ_CHECK(r.keys.TotalFrames() == r.PlayFrames());
    const std::string once = qb::FormatReplay(r);
    qb::Replay back;
    FUZZ_CHECK(qb::ParseReplay(once, back, error));
    FUZZ_CHECK(qb::FormatReplay(back) == once);
    return 0;
}
