// A game run on the headless platform in a scratch folder of its own.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gui/Gui.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb::test {

// Reads a text file as lines split at CRLF (the log's line end).
inline std::vector<std::string> ReadCrlfLines(const std::string& path) {
    const std::string all = ReadFile(path);
    std::vector<std::string> lines;
    for (size_t start = 0; start < all.size();) {
        const size_t end = std::min(all.find("\r\n", start), all.size());
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
        : writeDir(FreshDir(name)), hp(gameDir, writeDir) {
        game = std::make_unique<frmGame>(hp.platform);
    }
    std::vector<std::string> log() const { return ReadCrlfLines(writeDir + "Debug.txt"); }
};

// The game on the shipped tracks, started to its main menu, a person's hands
// on its keyboard.
struct ShippedGame {
    TestGame t;
    frmGame& g;
    std::vector<int16_t> screens;  // every screen the last run showed, in order

    explicit ShippedGame(const char* name) : t(name), g(*t.game) {
        std::filesystem::copy_file(std::string(QUORBIT_GAME_DIR) + "/levels.dat", t.writeDir + "levels.dat");
        EXPECT_TRUE(g.startup());
    }
    void show(int16_t state) {
        g.GameState = state;
        g.gui->SetupScreen(0);
    }
    // One tap: down in one pass, up in the next.
    void tap(uint8_t key) {
        t.hp.keyboard.press(key);
        g.HandleKeyboard();
        t.hp.keyboard.release(key);
        g.HandleKeyboard();
    }
    // Runs the real main loop for `ms` of fake time; before every pass
    // `hands` gets the milliseconds since the start and works the keys.
    void run(double ms, const std::function<void(double)>& hands) {
        const int64_t start = t.hp.clock.now;
        screens = {g.GameState};
        t.hp.window.onProcess = [&, ms, start](WindowEvents&) {
            const double now = static_cast<double>(t.hp.clock.now - start) / 1000.0;
            hands(now);
            if (g.GameState != screens.back()) screens.push_back(g.GameState);
            if (now >= ms) g.GameRunning = false;
        };
        g.GameRunning = true;
        g.runMainLoop();
        t.hp.window.onProcess = nullptr;
    }
};

}  // namespace qb::test
