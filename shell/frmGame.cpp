#include "shell/frmGame.h"

#include <exception>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/Settings.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "physics/CollisionDetection.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"
#include "physics/clsShadow.h"
#include "platform/DirectInput.h"
#include "platform/DirectX.h"
#include "platform/QuorbitDebug.h"
#include "shell/KeyBindings.h"
#include "shell/KeyboardControls.h"
#include "shell/ReplayStore.h"
#include "shell/RunRecorder.h"
#include "world/AnimatedTextures.h"
#include "world/clsBackground.h"

namespace qb {

frmGame::frmGame(Platform& p) : platform(p) {
    debug = std::make_unique<QuorbitDebug>();
    options = std::make_unique<optionsDat>(p.paths.writeDir + "options.dat");
    settings = std::make_unique<Settings>(p.paths.writeDir + "settings.cfg",
                                          [this](const std::string& what) { debug->WriteLine(what); });
    dx = std::make_unique<DirectX>(p.graphics, *debug, p.window);
    input = std::make_unique<DirectInput>(p.keyboard, *debug, p.window);
    stats = std::make_unique<Stats>(p.paths.writeDir + "stats.dat");
    levels = std::make_unique<LevelStructure>(p.paths.levelsFile());
    track = std::make_unique<TrackObjects>(*this);
    animated = std::make_unique<AnimatedTextures>();
    background = std::make_unique<clsBackground>(p.graphics, dx->ScreenWidth, dx->ScreenHeight);
    player = std::make_unique<clsPlayer>(*this);
    particles = std::make_unique<clsParticles>(*this);
    shadow = std::make_unique<clsShadow>(*this);
    collision = std::make_unique<CollisionDetection>();
    sound = std::make_unique<DXmusicSFX>(p.audio, *options, *debug, p.paths.gameDir);
    gui = std::make_unique<Gui>(*this);
    controls = std::make_unique<KeyboardControls>(*this);
    recorder = std::make_unique<RunRecorder>();
    replays = std::make_unique<ReplayStore>(*this);
    bindings = std::make_unique<KeyBindings>();
}

frmGame::~frmGame() = default;

int frmGame::Form_Load() {
    GameState = Starting;
    return loadgame();
}

void frmGame::Form_Unload() {
    GameState = Closing;
    GameRunning = false;
}

void frmGame::Form_MouseDown(int, float x, float y) {
    if (GameState != Playing) gui->GuiMouseClick(x, y);
    if (GameState == MadeIt) {
        GameState = TrackChoice;
        gui->SetupScreen(3);
    }
}

void frmGame::Form_MouseMove(float x, float y) {
    if (GameRunning && GameState != Playing) gui->GuiMouseMove(x, y);
}

int frmGame::loadgame() {
    // Something the game cannot do without (a menu picture, say) is explained
    // in a message box and in Debug.txt, and the run ends: never a crash.
    try {
        if (startup()) runMainLoop();
    } catch (const std::exception& e) {
        const std::string why = std::string("Quorbit cannot go on: ") + e.what();
        debug->WriteLine(why);
        platform.window.messageBox(why);
        GameRunning = false;
        exitCode = 1;
    }
    shutdown();
    return exitCode;
}

bool frmGame::startup() {
    LastAnimatedTextureTick = 0;
    options->LoadOptions();
    dx->VideoMode = options->Options.VideoMode;
    GameState = Loading;
    debug->Open(platform.paths.writeDir + "Debug.txt", platform.system);
    settings->Load();
    std::string keysProblem;
    bindings->Load(*settings, keysProblem);
    if (!keysProblem.empty()) debug->WriteLine(keysProblem);
    platform.window.show();
    TexturesPath = platform.paths.gameDir + "textures/";
    BackgroundsPath = platform.paths.gameDir + "backgrounds/";

    bool ok = dx->InitialiseGraphics();
    graphicsReady = ok;
    debug->WriteLine("Initalise DirectX and DX3D = " + QuorbitDebug::BoolText(ok));
    if (ok) {
        background->create(BackgroundsPath + "load.jpg");
        RenderFrame();
    }
    if (ok) ok = input->InitialiseKeyboard();
    debug->WriteLine("Initalise DirectInput = " + QuorbitDebug::BoolText(ok));
    if (ok) ok = sound->InitSound();
    debug->WriteLine("Initalise DirectSound = " + QuorbitDebug::BoolText(ok));
    animated->InitAnimatedTextures();
    debug->WriteLine("Initalise Animated Textures = True");
    if (ok) {
        particles->create();
        shadow->create();
    }
    if (ok) {
        background->create(BackgroundsPath + "load.jpg");
        RenderFrame();
    }
    if (!graphicsReady) {
        // Nothing can be shown without a device: the message box has told the
        // player why, and the run ends here.
        exitCode = 1;
        return false;
    }
    GameState = MainMenu;
    std::string levelError;
    if (!levels->LoadLevels(levelError)) {
        debug->WriteLine(levelError);
        platform.window.messageBox(levelError);
    }
    gui->LoadGuiBitmaps();
    stats->LoadStats(levels->LevelCount());
    GameRunning = true;
    levels->LoadLevelIndex();
    PerfFrequency = platform.clock.performanceFrequency();
    gui->SetupScreen(0);
    return true;
}

void frmGame::runMainLoop() {
    while (GameRunning) mainLoopPass();
}

void frmGame::mainLoopPass() {
    Clock& clock = platform.clock;
    Window& window = platform.window;
    FrameStartCount = clock.performanceCounter();

    // Menu passes, paced to the display refresh (or 60 a second without one).
    int64_t nextMenuPass = clock.performanceCounter();
    while (window.hasFocus() && GameState != Playing && GameRunning) {
        RenderFrame();
        HandleKeyboard();
        window.processEvents(*this);
        if (!window.waitForRefresh()) {
            nextMenuPass += PerfFrequency / 60;
            const int64_t now = clock.performanceCounter();
            if (nextMenuPass < now) nextMenuPass = now;
            clock.sleepUntil(nextMenuPass);
        }
    }

    // Play passes: frames start more than FrameInterval apart; between them we sleep.
    const int64_t interval =
        static_cast<int64_t>(FrameInterval * static_cast<double>(PerfFrequency) / 1000.0);
    bool musicPausedForFocus = false;
    while (GameState == Playing && GameRunning) {
        if (window.hasFocus()) {
            // A GL device is never lost, so no device reset comes to resume
            // the music after the focus returns: resume it here.
            if (musicPausedForFocus) {
                musicPausedForFocus = false;
                sound->ResumeMusic();
            }
            while (static_cast<double>(NowCount - FrameStartCount) / static_cast<double>(PerfFrequency) *
                       1000.0 >
                   FrameInterval) {
                playFrame();
                NowCount = clock.performanceCounter();
            }
            NowCount = clock.performanceCounter();
        } else {
            sound->PauseMusic();
            musicPausedForFocus = true;
        }
        window.processEvents(*this);
        if (GameState != Playing || !GameRunning) break;
        if (window.hasFocus()) {
            // Sleep until just past the next frame's start, then measure again.
            clock.sleepUntil(FrameStartCount + interval + 1);
            NowCount = clock.performanceCounter();
        } else {
            clock.sleepUntil(clock.performanceCounter() + PerfFrequency / 100);
        }
    }
    window.processEvents(*this);
    // Without the focus in the menus only window events are processed.
    if (GameRunning && !window.hasFocus() && GameState != Playing)
        clock.sleepUntil(clock.performanceCounter() + PerfFrequency / 100);
}

void frmGame::playFrame() {
    FrameStartCount = platform.clock.performanceCounter();
    if (player->DeathStatus()) resetgame(false);
    DriveActed = false;
    const uint32_t runs = recorder->Runs();
    HandleKeyboard();
    if (recorder->Runs() != runs)
        recorder->Record(0);  // restarted by a key: the new run's first frame drove nothing
    else if (DriveActed)
        recorder->Record(DriveBits);
    else
        recorder->Spoil();
    collision->CheckCollisions(*this);
    MovePlatforms();
    RenderFrame();
    platform.window.processEvents(*this);
    const uint32_t now = platform.clock.tickCount();
    if (now - LastAnimatedTextureTick > AnimatedTextureInterval) {
        StepAnimatedTextures();
        LastAnimatedTextureTick = now;
    }
    UpdateFPSCounter();
}

void frmGame::RenderFrame() {
    GraphicsDevice& device = platform.graphics;
    if (!device.isUsable()) {
        DeviceReset();
        return;
    }
    device.clear(0xFF000000u, 1.0f);
    device.beginScene();
    switch (GameState) {
        case MainMenu:
            background->draw();
            DrawButtons();
            break;
        case Playing:
            DrawWorld(false);
            DrawPlayerAndParticles();
            DrawTextFields();
            break;
        case TrackChoice:
        case UserTrackChoice:
            DrawWorld(true);
            DrawButtons();
            DrawTextFields();
            break;
        case PauseMenu:
            DrawWorld(false);
            DrawButtons();
            break;
        case NameEntry:
        case MadeIt:
        case Options:
        case ControlsMenu:
        case InstructionsPage1:
        case InstructionsPage2:
        case InstructionsPage3:
            background->draw();
            DrawButtons();
            DrawTextFields();
            break;
        case ZoneChoice:
            background->draw();
            DrawButtons();
            break;
        case Loading:
            background->draw();
            break;
        default:
            break;
    }
    device.endScene();
    device.present();
}

void frmGame::HandleKeyboard() {
    controls->HandleKeyboard();
}

void frmGame::shutdown() {
    debug->Close();
    // From here on errors are ignored: shutdown always reaches its end.
    try {
        sound.reset();
    } catch (...) {
    }
}

}  // namespace qb
