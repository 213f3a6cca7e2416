// One positioned write into an existing file, flushed to disk before it
// returns: the patch either reaches the disk whole or the call fails, and
// nothing else in the file is touched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qb {

// False (with `error` set) when the file cannot be opened or written.
bool PatchFileAt(const std::string& path, int64_t offset, const uint8_t* data, size_t size,
                 std::string& error);

}  // namespace qb
