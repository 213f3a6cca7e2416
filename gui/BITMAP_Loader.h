// Reads a bitmap's width and height straight from its file headers: the
// buttons take their size from the picture itself.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

// Width and height are the signed 32-bit values at offsets 4 and 8 of the
// 40-byte information header that follows the 14-byte file header. Nothing
// else is checked. Throws std::runtime_error when the file cannot be opened
// or is shorter than the two headers.
void GetBitmapSize(const std::string& path, int32_t& width, int32_t& height);

}  // namespace qb
