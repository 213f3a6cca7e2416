// Scratch folders and whole-file reads and writes, shared by every test
// folder (this folder holds no tests of its own).
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>

namespace qb::test {

// An empty folder of the system's temporary folder, named for the test and
// this process; the path ends with '/'.
inline std::string FreshDir(const std::string& name) {
    const auto dir =
        std::filesystem::temp_directory_path() / ("quorbit-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir.string() + "/";
}

// The whole file as bytes; empty when it cannot be read.
inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// `dir` made a game folder: each named folder of the built game linked in.
inline void LinkGameFolders(const std::string& dir, std::initializer_list<const char*> names) {
    for (const char* sub : names) {
        const std::filesystem::path from = std::filesystem::path(QUORBIT_GAME_DIR) / sub;
        if (std::filesystem::exists(from)) std::filesystem::create_directory_symlink(from, dir + sub);
    }
}

}  // namespace qb::test
