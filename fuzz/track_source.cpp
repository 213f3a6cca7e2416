// Track source parser: any text either gives errors with line numbers or
// tracks the game's reader accepts, and those print and parse back to the
// same bytes.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_common.h"
#include "level/LevelFileReader.h"
#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    qb::TrackSource src;
    std::vector<qb::SourceError> errors;
    if (!qb::ParseTrackSource(text, "fuzz.trk", src, errors)) {
        FUZZ_CHECK(!errors.empty());
        for (const auto& e : errors) FUZZ_CHECK(e.Line >= 1);
        return 0;
    }
    if (src.Tracks.Levels.empty()) return 0;
    const std::vector<uint8_t> bytes = qb::EncodeLevelFile(qb::JoinTrackSources({src}));
    qb::LevelFile read;
    qb::LevelFileError error;
    FUZZ_CHECK(qb::ReadLevelFile(bytes.data(), bytes.size(), read, error));

    qb::TrackSource again;
    FUZZ_CHECK(qb::ParseTrackSource(qb::PrintTrackSource(read, 0, read.Levels.size(), true), "dump.trk",
                                    again, errors));
    FUZZ_CHECK(qb::EncodeLevelFile(qb::JoinTrackSources({again})) == bytes);
    return 0;
}
