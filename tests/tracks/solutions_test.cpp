// Every shipped track, and every example user track, driven from start to
// finish by its key script in content/solutions/: the proof that each can be
// won with all its stars, run on the same game code quorbit-sim uses.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "level/LevelStructure.h"
#include "shell/KeyScript.h"
#include "shell/SimDriver.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

const std::string GameDir = QUORBIT_GAME_DIR;
const std::string Solutions = std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/";

struct Replay {
    bool finished = false, died = false;
    int stars = 0, starCount = 0;
    double seconds = 0;  // the race clock at the finish
    std::string result;
};

Replay Play(const std::string& gameDir, int32_t track, const KeyScript& script) {
    Replay r;
    SimRun run(gameDir);
    std::string error;
    if (!run.Start(track, error)) {
        r.result = error;
        return r;
    }
    for (int64_t f = 0; f < script.TotalFrames() && !run.Finished(); ++f) {
        const SimRow row = run.Step(*script.KeysAt(f));
        r.died = r.died || row.dead || row.exploding;
    }
    r.finished = run.Finished();
    r.result = run.Result();
    const std::string head = "result: finished ";
    if (r.result.rfind(head, 0) == 0) {
        const std::string clock = r.result.substr(head.size());
        r.seconds = std::stoi(clock) + std::stoi(clock.substr(clock.find(':') + 1)) / 100.0;
    }
    const size_t at = r.result.find("stars ");
    if (at != std::string::npos) {
        r.stars = std::stoi(r.result.substr(at + 6));
        r.starCount = std::stoi(r.result.substr(r.result.find('/', at) + 1));
    }
    return r;
}

KeyScript Load(const std::string& file) {
    KeyScript script;
    std::string error;
    EXPECT_TRUE(LoadKeyScript(file, script, error)) << file << ": " << error;
    return script;
}

std::string Name(int n) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%02d", n);
    return buf;
}

// A game folder whose track file is `levels`; everything else is linked.
class StagedGame {
public:
    explicit StagedGame(const std::string& levels) {
        std::string pattern = (fs::temp_directory_path() / "quorbit-tracks-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) return;
        dir_ = pattern;
        for (const auto& e : fs::directory_iterator(GameDir)) {
            if (e.path().filename() != "levels.dat")
                fs::create_symlink(fs::absolute(e.path()), fs::path(dir_) / e.path().filename());
        }
        fs::copy_file(levels, fs::path(dir_) / "levels.dat");
    }
    ~StagedGame() {
        std::error_code ec;
        if (!dir_.empty()) fs::remove_all(dir_, ec);
    }
    const std::string& dir() const { return dir_; }

private:
    std::string dir_;
};

TEST(ShippedTracks, SixtyTracksInSixZonesEachWithItsSkyAndStars) {
    LevelStructure levels(GameDir + "/levels.dat");
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    ASSERT_EQ(levels.LevelCount(), 60);
    for (int32_t n = 1; n <= 60; ++n) {
        const LevelRecord& r = levels.Level(n);
        const std::string sky = "bk00" + std::to_string((n - 1) / 10 + 1) + ".jpg";
        EXPECT_EQ(r.Background.substr(0, sky.size()), sky) << "track " << n;
        EXPECT_GE(r.StarUpper, 0) << "track " << n << " has no stars";
    }
}

TEST(ShippedTracks, EverySolutionFinishesWithEveryStarInTenToNinetySeconds) {
    for (int n = 1; n <= 60; ++n) {
        const Replay r = Play(GameDir, n, Load(Solutions + Name(n) + ".keys"));
        EXPECT_TRUE(r.finished && !r.died && r.stars == r.starCount && r.starCount > 0)
            << "track " << n << ": " << r.result << (r.died ? " after a death" : "");
        EXPECT_TRUE(!r.finished || (r.seconds >= 10 && r.seconds <= 90))
            << "track " << n << " takes " << r.seconds << " s";
    }
}

TEST(ShippedTracks, AScriptWithoutItsJumpsDoesNotWin) {
    // The replay must catch a solution that no longer works: track 10 has
    // gaps, and without the jump key the car falls into the first.
    KeyScript script = Load(Solutions + "10.keys");
    for (KeyStep& step : script.steps) std::erase(step.keys, uint8_t{57});
    const Replay r = Play(GameDir, 10, script);
    EXPECT_FALSE(r.finished && r.stars == r.starCount) << r.result;
    EXPECT_TRUE(r.died);
}

TEST(UserTracks, EachExampleIsWonWithEveryStar) {
    int count = 0;
    for (const auto& e : fs::directory_iterator(std::string(QUORBIT_SOURCE_DIR) + "/content/usertracks")) {
        const std::string stem = e.path().stem().string();
        const std::string keys = Solutions + "user_" + stem + ".keys";
        if (e.path().extension() != ".trk" || !fs::exists(keys)) continue;
        ++count;
        StagedGame game(GameDir + "/usertracks/" + stem + ".dat");
        ASSERT_FALSE(game.dir().empty());
        const Replay r = Play(game.dir(), 1, Load(keys));
        EXPECT_TRUE(r.finished && !r.died && r.stars == r.starCount) << stem << ": " << r.result;
    }
    EXPECT_GE(count, 3);
}

}  // namespace
}  // namespace qb
