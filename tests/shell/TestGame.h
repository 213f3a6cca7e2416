// A game run on the headless platform in a scratch folder of its own.
#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/headless/HeadlessPlatform.h"
#include "shell/frmGame.h"

namespace qb::test {

inline std::string ScratchDir(const std::string& name) {
    const auto dir =
        std::filesystem::temp_directory_path() / ("quorbit-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir.string() + "/";
}

// Reads a text file as lines split at CRLF (the log's line end).
inline std::vector<std::string> ReadCrlfLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    const std::string all = ss.str();
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < all.size()) {
        const size_t end = all.find("\r\n", start);
        if (end == std::string::npos) {
            lines.push_back(all.substr(start));
            break;
        }
        lines.push_back(all.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

struct TestGame {
    std::string writeDir;
    HeadlessPlatform hp;
    std::unique_ptr<frmGame> game;
    explicit TestGame(const std::string& name, const std::string& gameDir = QUORBIT_GAME_DIR)
        : writeDir(ScratchDir(name)), hp(gameDir, writeDir) {
        game = std::make_unique<frmGame>(hp.platform);
    }
    std::vector<std::string> log() const { return ReadCrlfLines(writeDir + "Debug.txt"); }
};

}  // namespace qb::test
