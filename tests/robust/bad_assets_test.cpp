// A game folder with a file missing or damaged: the game explains and goes on
// where it can (silence, a default texture, no picture), or explains and
// stops where it cannot (a menu picture). It never crashes.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "level/LevelStructure.h"
#include "persist/Settings.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "platform/DirectX.h"
#include "platform/KeyboardDevice.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

// A game folder whose asset folders link to the built game's, except those a
// test takes a copy of to damage.
class DamagedFolder {
public:
    explicit DamagedFolder(const std::string& name) {
        dir_ = test::FreshDir("bad-" + name);
        for (const auto& e : fs::directory_iterator(QUORBIT_GAME_DIR)) {
            if (!e.is_directory()) continue;
            fs::create_directory_symlink(e.path(), dir_ + e.path().filename().string());
        }
        fs::copy_file(std::string(QUORBIT_GAME_DIR) + "/levels.dat", dir_ + "levels.dat");
    }
    ~DamagedFolder() { fs::remove_all(dir_); }

    // A private copy of one asset folder, to damage.
    void own(const std::string& folder) {
        const std::string path = dir_ + folder;
        if (!fs::is_symlink(path)) return;
        const fs::path target = fs::read_symlink(path);
        fs::remove(path);
        fs::copy(target, path, fs::copy_options::recursive);
    }
    void remove(const std::string& file) {
        own(file.substr(0, file.find('/')));
        ASSERT_TRUE(fs::remove(dir_ + file)) << file;
    }
    void garble(const std::string& file, const std::string& bytes) {
        if (file.find('/') != std::string::npos) own(file.substr(0, file.find('/')));
        test::WriteFile(dir_ + file, bytes);
    }
    const std::string& dir() const { return dir_; }

private:
    std::string dir_;
};

// Drives track 1 for a few seconds with Up held; the run must stay healthy.
void ExpectPlayable(const std::string& dir, const std::function<void(SimRun&)>& check = {}) {
    SimRun run(dir);
    std::string error;
    ASSERT_TRUE(run.Start(1, error)) << error;
    for (int f = 0; f < 150 && !run.Finished(); ++f) run.Step({DIK_UP});
    EXPECT_TRUE(run.GameRunning());
    EXPECT_GT(run.game().player != nullptr ? 1 : 0, 0);
    if (check) check(run);
}

TEST(MissingAssets, TheGameGoesOnWithoutWhatIsOnlyDressing) {
    const char* files[] = {
        "textures/road.bmp",      // a face texture: the default texture stands in
        "textures/_default.bmp",  // even the default: the face is drawn plain
        "textures/AnimationTest_1.bmp",
        "backgrounds/_default.jpg",
        "backgrounds/bk001.jpg",
        "backgrounds/bk002.jpg",
        "backgrounds/load.jpg",
        "models/player.x",  // the car is not drawn, but it drives
        "models/orb.x",     // stars are invisible but can be taken
        "skins/player.bmp",
        "misc/explode1.bmp",
        "misc/starParticle.bmp",
        "misc/shadowimage.bmp",
        "music/track01.ogg",
        "music/winlevel.ogg",
    };
    for (const char* file : files) {
        SCOPED_TRACE(file);
        DamagedFolder folder("missing");
        folder.remove(file);
        ExpectPlayable(folder.dir());
    }
}

TEST(MissingAssets, AMissingSoundEffectMeansASilentGame) {
    DamagedFolder folder("nosfx");
    folder.remove("sfx/Jump.wav");
    ExpectPlayable(folder.dir(), [](SimRun& run) {
        EXPECT_EQ(run.platform().audio.log.size(), 0u) << "nothing may sound";
    });
}

TEST(DamagedAssets, UnreadablePicturesAndModelsAreSkipped) {
    // The headless device reads no pixels; the folder still must not upset
    // the code that looks at files itself (bitmap headers, model lists).
    DamagedFolder folder("garbled");
    folder.garble("textures/road.bmp", "BM this is not a bitmap");
    folder.garble("models/player.x", "xof 0303txt 0032\n{{{{ broken");
    folder.garble("backgrounds/_default.jpg", std::string(100, '\xff'));
    ExpectPlayable(folder.dir());
}

TEST(MissingAssets, AMissingMenuPictureIsExplainedAndTheRunEnds) {
    for (const std::string damage : {"missing", "short"}) {
        SCOPED_TRACE(damage);
        DamagedFolder folder("nogui-" + damage);
        if (damage == "missing")
            folder.remove("gui/title.bmp");
        else
            folder.garble("gui/title.bmp", "BM12");
        const std::string writeDir = folder.dir() + "out/";
        fs::create_directories(writeDir);
        HeadlessPlatform hp(folder.dir(), writeDir);
        frmGame game(hp.platform);
        EXPECT_EQ(game.Form_Load(), 1);
        ASSERT_FALSE(hp.window.messages.empty());
        EXPECT_NE(hp.window.messages.back().find("title.bmp"), std::string::npos)
            << hp.window.messages.back();
        EXPECT_NE(test::ReadFile(writeDir + "Debug.txt").find("Quorbit cannot go on"), std::string::npos);
    }
}

TEST(DamagedSettings, GarbageOptionsAndStatisticsStillStartAndPlay) {
    DamagedFolder folder("settings");
    // Video mode 77, music 5000, effects far past silence.
    const unsigned char options[12] = {0x88, 0x13, 0, 0, 0x00, 0x00, 0x00, 0x80, 77, 0, 0, 0};
    folder.garble("options.dat", std::string(reinterpret_cast<const char*>(options), 12));
    std::string stats(4 + 16 * 70, '\0');
    for (size_t i = 0; i < stats.size(); ++i) stats[i] = static_cast<char>((i * 97 + 13) & 0xFF);
    folder.garble("stats.dat", stats);

    const std::string writeDir = folder.dir();
    HeadlessPlatform hp(folder.dir(), writeDir);
    frmGame game(hp.platform);
    int passes = 0;
    hp.window.onProcess = [&](WindowEvents& w) {
        if (++passes == 3) {
            // The track choice shows every statistic as text: garbage included.
            game.GameState = TrackChoice;
            game.levels->CurrentLevel = 1;
        }
        if (passes == 10) w.onClose();
    };
    EXPECT_EQ(game.Form_Load(), 0);
    EXPECT_EQ(hp.graphics.created.width, 800);  // an unknown mode plays at 800x600
    EXPECT_EQ(FormatPlayTime(-65000), "0:00");  // a damaged time shows as nothing played
}

TEST(DamagedSettings, AGarbledSettingsFileIsLoggedAndTheGameStartsWithDefaults) {
    DamagedFolder folder("cfg");
    static const char junk[] = "\x00\x01\xFF binary junk\nx = 1\n";
    folder.garble("settings.cfg", std::string(junk, sizeof junk - 1));
    HeadlessPlatform hp(folder.dir(), folder.dir());
    frmGame game(hp.platform);
    hp.window.onProcess = [](WindowEvents& w) { w.onClose(); };
    EXPECT_EQ(game.Form_Load(), 0);
    EXPECT_EQ(game.settings->GetInt("x", 0), 1);
    const std::string text = test::ReadFile(folder.dir() + "Debug.txt");
    EXPECT_NE(text.find("settings.cfg line 1 is not"), std::string::npos) << text;
    EXPECT_NE(text.find("Initalise DirectX and DX3D = True"), std::string::npos);
}

}  // namespace
}  // namespace qb
