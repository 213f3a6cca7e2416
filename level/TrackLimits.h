// How large a track file may be. The sixty shipped tracks hold at most 57
// objects of a kind and a dozen textures each, and the whole file is about
// 125 KB; these limits leave a hundredfold room and keep a file made to hurt
// (a count that claims millions, millions of empty names) from costing more
// memory or time than a real track ever would. Every reader of track files
// checks them before it allocates.
#pragma once

#include <cstdint>

namespace qb::limits {

// A file larger than this is refused from its size alone, before a byte is read.
constexpr int64_t kTrackFileBytes = 16 << 20;
// Tracks in one file.
constexpr int32_t kTracks = 1000;
// Blocks, moving platforms, ramps and stars: each kind on its own, per track.
// A track with this many of every kind and a thousand empty texture names
// is what the game can show within 256 MiB on a software GL driver.
constexpr int32_t kObjectsOfAKind = 10000;
// Texture names per track.
constexpr int32_t kTextures = 1000;
// Bytes of one texture name, and of a track's settings text.
constexpr int32_t kNameBytes = 255;

}  // namespace qb::limits
