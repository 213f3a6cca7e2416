// levels.dat reader: any bytes either fail cleanly or read into records that
// write back to the very same bytes, through the binary writer and through
// the text form.
#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz_common.h"
#include "level/LevelFileReader.h"
#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    qb::LevelFile file;
    qb::LevelFileError error;
    if (!qb::ReadLevelFile(data, size, file, error)) {
        FUZZ_CHECK(file.Levels.empty());
        FUZZ_CHECK(error.Byte >= 0 && static_cast<size_t>(error.Byte) <= size);
        return 0;
    }
    const std::vector<uint8_t> again = qb::EncodeLevelFile(file);
    FUZZ_CHECK(again.size() == size && std::equal(again.begin(), again.end(), data));

    const std::string text = qb::PrintTrackSource(file, 0, file.Levels.size(), true);
    qb::TrackSource src;
    std::vector<qb::SourceError> errors;
    FUZZ_CHECK(qb::ParseTrackSource(text, "dump.trk", src, errors));
    FUZZ_CHECK(qb::EncodeLevelFile(qb::JoinTrackSources({src})) == again);
    return 0;
}
