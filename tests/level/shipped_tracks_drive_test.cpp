// The starter tracks driven by the real game: each can be finished with
// plain driving, so a new build always has something playable.
#include <gtest/gtest.h>

#include "platform/KeyboardDevice.h"
#include "shell/SimDriver.h"

namespace qb {
namespace {

// Holds Up, adding Space for frames [jumpFrom, jumpFrom + 2).
std::string Drive(int32_t track, int jumpFrom = -1) {
    SimRun run(QUORBIT_GAME_DIR);
    std::string error;
    if (!run.Start(track, error)) return error;
    for (int f = 0; f < 600 && !run.Finished(); ++f) {
        std::vector<uint8_t> keys{DIK_UP};
        if (f >= jumpFrom && f < jumpFrom + 2) keys.push_back(DIK_SPACE);
        run.Step(keys);
    }
    return run.Result();
}

TEST(ShippedTracks, EachCanBeDrivenToTheFinish) {
    EXPECT_EQ(Drive(1).rfind("result: finished", 0), 0u) << Drive(1);
    // The gap needs a jump just before its edge; all three stars lie on
    // that line.
    EXPECT_EQ(Drive(2, 58).substr(0, 16), "result: finished");
    EXPECT_NE(Drive(2, 58).find("stars 3/3"), std::string::npos) << Drive(2, 58);
    EXPECT_EQ(Drive(2), "result: died");
    EXPECT_EQ(Drive(3).substr(0, 16), "result: finished");
}

}  // namespace
}  // namespace qb
