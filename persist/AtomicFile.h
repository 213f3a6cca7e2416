// Writing a whole small file so that a crash or a kill at any moment leaves
// either the old or the new content: write a temporary file, flush it to
// disk, rename it over the old one.
#pragma once

#include <string>
#include <vector>

namespace qb {

// False when any step fails; `error` then says which file and why.
bool WriteFileAtomically(const std::string& path, const std::vector<unsigned char>& bytes,
                         std::string* error = nullptr);
// Creates an empty file when there is none (never through a symbolic link).
bool CreateIfMissing(const std::string& path);
// Reads the whole file; an absent or unreadable file gives an empty vector.
std::vector<unsigned char> ReadWholeFile(const std::string& path);

}  // namespace qb
