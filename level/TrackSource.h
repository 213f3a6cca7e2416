// The text form of tracks (*.trk): what people write and read, turned into
// the records of levels.dat and back without losing a byte. The format is
// described in docs/tracks.md.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "level/LevelFileReader.h"

namespace qb {

struct SourceError {
    std::string File;
    int Line = 0;
    std::string Message;
    std::string Describe() const { return File + ":" + std::to_string(Line) + ": " + Message; }
};

// The tracks of one source file, in order, plus the file-wide lines.
struct TrackSource {
    LevelFile Tracks;  // Index holds each track's reserved index bytes
    bool HasZones = false;
    bool HasTrailing = false;
};

// Parses one source text; false when any error was found (each appended to
// `errors`). Tracks with errors are left out of `out`.
bool ParseTrackSource(std::string_view text, const std::string& fileName, TrackSource& out,
                      std::vector<SourceError>& errors);

// The sources in the given order as one track file; zone flags and trailing
// bytes come from the last source that sets them.
LevelFile JoinTrackSources(const std::vector<TrackSource>& sources);

// Source text for tracks first+1 .. first+count of `file` (numbered from
// first+1 in the text); the file-wide lines (zone flags, trailing bytes)
// are included when `withFileLines` is set.
std::string PrintTrackSource(const LevelFile& file, size_t first, size_t count, bool withFileLines);

// One line describing a track, for the build summary.
std::string DescribeTrack(const LevelRecord& rec, int32_t number);

}  // namespace qb
