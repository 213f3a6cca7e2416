// Writing a whole small file so that a crash or a kill at any moment leaves
// either the old or the new content: write a temporary file, flush it to
// disk, rename it over the old one.
#pragma once

#include <string>
#include <vector>

namespace qb {

bool WriteFileAtomically(const std::string& path, const std::vector<unsigned char>& bytes);
// Reads the whole file; an absent or unreadable file gives an empty vector.
std::vector<unsigned char> ReadWholeFile(const std::string& path);

}  // namespace qb
