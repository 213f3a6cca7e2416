// The physics stands on the platform, the track and its pieces alone: it
// notes what happens and never reaches into the session, the menus, the
// sound or the statistics, so a run can be driven without any of them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

namespace qb {
namespace {

TEST(Layering, PhysicsIncludesOnlyThePlatformTheTrackAndItself) {
    const std::regex include(R"(^\s*#\s*include\s*"([^"/]+)/)");
    int files = 0;
    for (const auto& e : std::filesystem::directory_iterator(std::string(QUORBIT_SOURCE_DIR) + "/physics")) {
        const std::string ext = e.path().extension().string();
        if (ext != ".cpp" && ext != ".h") continue;
        ++files;
        std::ifstream in(e.path());
        std::string line;
        for (int n = 1; std::getline(in, line); ++n) {
            std::smatch m;
            if (std::regex_search(line, m, include)) {
                const std::string dir = m[1];
                EXPECT_TRUE(dir == "physics" || dir == "platform" || dir == "level" || dir == "world")
                    << e.path().filename().string() << ":" << n << " includes from " << dir << "/";
            }
            EXPECT_EQ(line.find("frmGame"), std::string::npos)
                << e.path().filename().string() << ":" << n << " names the game form";
        }
    }
    EXPECT_GE(files, 10);
}

}  // namespace
}  // namespace qb
