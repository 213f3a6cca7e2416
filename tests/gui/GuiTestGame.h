// A game started on the headless platform in a scratch game folder of its
// own: the generated pictures, skies and sounds linked in from the built
// game, a levels.dat made for the test, and room for user tracks.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelFileWriter.h"
#include "level/LevelStructure.h"
#include "platform/DirectX.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb::test {

namespace fs = std::filesystem;

// A small track: one road block, `stars` stars, three fastest-time places.
inline LevelRecord SmallTrack(int stars = 0) {
    LevelRecord r;
    r.Settings.Gravity = 0.025f;
    r.Settings.FileGravity = 10;
    BlockRecord b;
    b.X = -2;
    b.Z = -5;
    b.scaleX = 4;
    b.scalez = 40;
    r.Blocks.push_back(b);
    r.BlockUpper = 0;
    for (int i = 0; i < stars; ++i) r.Stars.push_back(StarRecord{0, 1, 5.0f + static_cast<float>(i)});
    r.StarUpper = stars - 1;
    r.TextureNames = {"", "road.bmp"};
    r.TextureCount.Value = 1;
    r.Background.replace(0, 12, "_default.jpg");
    return r;
}

// Writes a track file of `count` small tracks; track n has n % 4 stars.
inline void WriteTrackFile(const std::string& path, int count, std::array<int16_t, 6> zones = {},
                           const std::vector<FastestTimes>& times = {}) {
    LevelFile f;
    f.ZoneComplete = zones;
    for (int n = 1; n <= count; ++n) {
        f.Levels.push_back(SmallTrack(n % 4));
        if (static_cast<size_t>(n - 1) < times.size())
            f.Levels.back().Times = times[static_cast<size_t>(n - 1)];
        f.AllStars.push_back(0);
    }
    const std::vector<uint8_t> bytes = EncodeLevelFile(f);
    WriteFile(path, std::string(bytes.begin(), bytes.end()));
}

inline FastestTimes Times(const std::string& a, int32_t s1, int32_t h1) {
    FastestTimes t;
    t.Names[0] = (a + std::string(15, ' ')).substr(0, 15);
    t.Seconds[0] = s1;
    t.Hundredths[0] = h1;
    return t;
}

inline std::string GameFolder(const std::string& name, int tracks, std::array<int16_t, 6> zones = {}) {
    const std::string dir = FreshDir("gui-" + name);
    LinkGameFolders(dir,
                    {"gui", "backgrounds", "textures", "models", "skins", "misc", "sfx", "music", "web"});
    if (tracks > 0) WriteTrackFile(dir + "levels.dat", tracks, zones);
    return dir;
}

struct GuiGame {
    std::string dir;
    HeadlessPlatform hp;
    std::unique_ptr<frmGame> game;

    explicit GuiGame(const std::string& name, int tracks = 10, std::array<int16_t, 6> zones = {})
        : dir(GameFolder(name, tracks, zones)), hp(dir) {
        game = std::make_unique<frmGame>(hp.platform);
    }
    ~GuiGame() {
        game.reset();
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    // Start-up up to the main menu.
    bool start() { return game->startup(); }

    Gui& gui() { return *game->gui; }
    GUI_Button& button(int slot) { return game->gui->Button(slot); }
    std::string field(int i) { return game->gui->HasField(i) ? game->gui->Field(i).Get_String() : "<none>"; }
    // The slots that are enabled, in order.
    std::vector<int> enabled() {
        std::vector<int> on;
        for (int s = 1; s <= Gui::SlotCount; ++s)
            if (game->gui->Buttons[static_cast<size_t>(s)] && button(s).enabled()) on.push_back(s);
        return on;
    }
    // The highlighted slots that show (a hidden slot may keep its flag).
    std::vector<int> highlighted() {
        std::vector<int> on;
        for (int s = 1; s <= Gui::SlotCount; ++s)
            if (game->gui->Buttons[static_cast<size_t>(s)] && button(s).enabled() && button(s).IsMouseOver())
                on.push_back(s);
        return on;
    }
    // Points at / clicks the middle of a slot.
    void pointAt(int slot) {
        GUI_Button& b = button(slot);
        game->Form_MouseMove(b.X() + b.width() / 2.0f, b.Y() + b.height() / 2.0f);
    }
    void click(int slot) {
        GUI_Button& b = button(slot);
        game->Form_MouseDown(1, b.X() + b.width() / 2.0f, b.Y() + b.height() / 2.0f);
    }
    int effectsPlayed(int n) {
        int c = 0;
        for (const std::string& l : hp.audio.log)
            if (l == "play " + std::to_string(n)) ++c;
        return c;
    }
    // Sets a screen up as the game does.
    void show(int16_t state, int direction = 0) {
        game->GameState = state;
        game->gui->SetupScreen(direction);
    }
};

}  // namespace qb::test
