// quorbit-content: writes every generated asset of the game into a game
// folder. Deterministic: the same program gives the same bytes.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "tools/content/Content.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: quorbit-content GAME_DIR\n");
        return 2;
    }
    std::string dir = argv[1];
    if (dir.back() != '/') dir += '/';
    try {
        std::filesystem::create_directories(dir);
        for (const auto& step : qb::content::AllSteps()) {
            std::printf("quorbit-content: %s\n", step.name);
            std::fflush(stdout);
            step.run(dir);
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "quorbit-content: %s\n", e.what());
        return 1;
    }
    return 0;
}
