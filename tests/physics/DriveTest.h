// Helpers for the driving tests: a scratch game folder whose levels.dat is
// compiled from track source text (the real assets linked in), and a run on
// it through the simulator's driver, so every frame is the game's own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"
#include "persist/Stats.h"
#include "physics/CollisionDetection.h"
#include "physics/PlayEvents.h"
#include "physics/clsPlayer.h"
#include "platform/KeyboardDevice.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb::test {

// The common head of a test track: textures 1 wall, 2 road, 3 flag.
inline std::string TrackHead(const std::string& gravity = "10") {
    return "track 1 test\n gravity " + gravity +
           "\n background \"_default.jpg\"\n texture wall \"wall.bmp\"\n texture road \"road.bmp\"\n"
           " texture flag \"finish.bmp\"\n";
}

// A game folder in /tmp with levels.dat built from `source`.
inline std::string MakeGameDir(const std::string& name, const std::string& source) {
    const std::string dir = FreshDir("drive-" + name);
    LinkGameFolders(dir, {"textures", "backgrounds", "models", "skins", "misc", "sfx", "music", "gui"});
    TrackSource src;
    std::vector<SourceError> errors;
    const bool ok = ParseTrackSource(source, name + ".trk", src, errors);
    for (const SourceError& e : errors) ADD_FAILURE() << e.Describe();
    EXPECT_TRUE(ok);
    const std::vector<uint8_t> bytes = EncodeLevelFile(JoinTrackSources({src}));
    WriteFile(dir + "levels.dat", std::string(bytes.begin(), bytes.end()));
    return dir;
}

// A run on track `number` of a track source.
struct Drive {
    std::string dir;
    std::unique_ptr<SimRun> run;
    std::vector<SimRow> rows;

    Drive(const std::string& name, const std::string& source, int32_t number = 1)
        : dir(MakeGameDir(name, source)), run(std::make_unique<SimRun>(dir)) {
        std::string error;
        EXPECT_TRUE(run->Start(number, error)) << error;
    }
    ~Drive() {
        run.reset();
        std::error_code ec;
        std::filesystem::remove_all(dir, ec);
    }

    frmGame& game() { return run->game(); }
    clsPlayer& car() { return *run->game().player; }
    HeadlessPlatform& hp() { return run->platform(); }

    const SimRow& frame(std::initializer_list<uint8_t> keys = {}) {
        rows.push_back(run->Step(std::vector<uint8_t>(keys)));
        return rows.back();
    }
    const SimRow& frames(int n, std::initializer_list<uint8_t> keys = {}) {
        return frames(n, std::vector<uint8_t>(keys));
    }
    const SimRow& frames(int n, const std::vector<uint8_t>& keys) {
        for (int i = 0; i < n; ++i) rows.push_back(run->Step(keys));
        return rows.back();
    }
    // Frames with no keys until the car stands on something (at most n).
    bool settle(int n = 100) {
        for (int i = 0; i < n; ++i)
            if (frame().onGround) return true;
        return false;
    }
};

}  // namespace qb::test
