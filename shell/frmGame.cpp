#include "shell/frmGame.h"

#include <unistd.h>

#include <algorithm>
#include <exception>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/Settings.h"
#include "persist/Stats.h"
#include "persist/optionsDat.h"
#include "physics/CarDebris.h"
#include "physics/CollisionDetection.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"
#include "physics/clsShadow.h"
#include "platform/D3DMath.h"
#include "platform/DirectInput.h"
#include "platform/DirectX.h"
#include "platform/QuorbitDebug.h"
#include "shell/GhostCar.h"
#include "shell/KeyBindings.h"
#include "shell/KeyboardControls.h"
#include "shell/RaceClock.h"
#include "shell/ReplayStore.h"
#include "shell/RunRecorder.h"
#include "shell/WatchRun.h"
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
    player = std::make_unique<clsPlayer>(p);
    particles = std::make_unique<clsParticles>(p, *debug);
    debris = std::make_unique<CarDebris>();
    shadow = std::make_unique<clsShadow>(p, *debug, *track, *player);
    collision = std::make_unique<CollisionDetection>();
    sound = std::make_unique<DXmusicSFX>(p.audio, *options, *debug, p.paths.gameDir);
    gui = std::make_unique<Gui>(*this);
    controls = std::make_unique<KeyboardControls>(*this);
    recorder = std::make_unique<RunRecorder>();
    replays = std::make_unique<ReplayStore>(*this);
    clock = std::make_unique<RaceClock>(*this);
    ghost = std::make_unique<GhostCar>(*this);
    watch = std::make_unique<WatchRun>(*this);
    bindings = std::make_unique<KeyBindings>();
}

frmGame::~frmGame() {
    if (writeLock >= 0) ::close(writeLock);
}

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
    if (GameState == MadeIt || GameState == WatchEnd) {
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
    // A second game on the same folder would overwrite the first one's
    // times and statistics with its own: it says so and goes.
    if (!LockWriteFolder(platform.paths.writeDir, writeLock)) {
        // Nothing of the first game's is touched (not even its log); the
        // device is made only so the message can be drawn in the window
        // where the desktop shows no box.
        platform.window.show();
        dx->InitialiseGraphics();
        platform.window.messageBox("Quorbit is already running with its files in " + platform.paths.writeDir +
                                   ". Only one copy can run at a time.");
        exitCode = 1;
        return false;
    }
    options->LoadOptions();
    dx->VideoMode = options->Options.VideoMode;
    GameState = Loading;
    debug->Open(platform.paths.writeDir + "Debug.txt", platform.system);
    settings->Load();
    SmoothMotion = settings->GetBool(SmoothMotionKey, true);
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
    if (!platform.paths.problem.empty()) {
        debug->WriteLine(platform.paths.problem);
        platform.window.messageBox(platform.paths.problem);
    }
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
    runMenuPasses();
    runPlayPasses();
    window.processEvents(*this);
    // Without the focus in the menus only window events are processed.
    if (GameRunning && !window.hasFocus() && GameState != Playing)
        clock.sleepUntil(clock.performanceCounter() + PerfFrequency / 100);
}

void frmGame::runMenuPasses() {
    Clock& clock = platform.clock;
    Window& window = platform.window;
    // A still menu is not drawn again: the picture on screen stays right
    // until something on it changes or the window needs it again.
    bool stale = true;
    uint64_t shown = 0;
    constexpr int WaitMs = 250;  // a safety net: nothing in a menu moves by itself
    while (window.hasFocus() && GameState != Playing && GameRunning) {
        uint64_t key = MenuPictureKey();
        if (stale || key != shown) {
            RenderFrame();
            ++MenuDrawings;
            shown = key;
            stale = false;
        }
        HandleKeyboard();
        window.processEvents(*this);
        ReportSaveFailures();
        if (window.takeRedrawRequest()) {
            FitToDisplay();
            stale = true;
        }
        if (GameState == Playing || !GameRunning || !window.hasFocus()) break;
        key = MenuPictureKey();
        if (stale || key != shown) continue;  // answer at once
        // A window that cannot wait for events is looked at again after
        // one refresh, so that a key is still answered in time.
        if (!window.waitForEvent(WaitMs)) clock.sleepUntil(clock.performanceCounter() + PerfFrequency / 60);
    }
}

void frmGame::runPlayPasses() {
    Clock& clock = platform.clock;
    Window& window = platform.window;
    // Play passes: frames start more than FrameInterval apart; between them we sleep.
    const int64_t interval =
        static_cast<int64_t>(FrameInterval * static_cast<double>(PerfFrequency) / 1000.0);
    const int64_t refresh = PerfFrequency / 60;
    const int64_t onTime = PerfFrequency / 1000;
    bool musicPausedForFocus = false;
    NextFrameDue = FrameStartCount + interval;
    int64_t nextDrawing = clock.performanceCounter();
    while (GameState == Playing && GameRunning) {
        if (window.hasFocus()) {
            // A GL device is never lost, so no device reset comes to resume
            // the music after the focus returns: resume it here.
            if (musicPausedForFocus) {
                musicPausedForFocus = false;
                sound->ResumeMusic();
            }
            if (SmoothMotion) {
                NowCount = clock.performanceCounter();
                while (NowCount > NextFrameDue) {
                    const int64_t late = NowCount - NextFrameDue;
                    playFrame();
                    // A frame started on time sets the next one an interval
                    // after its own start, as always. One the display's
                    // refresh held back keeps the steady beat instead, so
                    // that play still runs 25 frames a second; after a
                    // stall the beat starts afresh (no debt).
                    if (late <= onTime || late > interval)
                        NextFrameDue = FrameStartCount + interval;
                    else
                        NextFrameDue += interval;
                    NowCount = clock.performanceCounter();
                }
                if (GameState == Playing) {
                    DrawBlend = BlendAt(NowCount);
                    RenderFrame();
                    DrawBlend = 1.0f;
                }
            } else {
                while (static_cast<double>(NowCount - FrameStartCount) / static_cast<double>(PerfFrequency) *
                           1000.0 >
                       FrameInterval) {
                    playFrame();
                    NowCount = clock.performanceCounter();
                }
                NowCount = clock.performanceCounter();
            }
        } else {
            sound->PauseMusic();
            musicPausedForFocus = true;
        }
        window.processEvents(*this);
        if (window.takeRedrawRequest()) FitToDisplay();
        if (GameState != Playing || !GameRunning) break;
        if (!window.hasFocus()) {
            clock.sleepUntil(clock.performanceCounter() + PerfFrequency / 100);
        } else if (!SmoothMotion) {
            // Sleep until just past the next frame's start, then measure again.
            clock.sleepUntil(FrameStartCount + interval + 1);
            NowCount = clock.performanceCounter();
        } else if (!window.waitForRefresh()) {
            // No display pacing: draw at most 60 times a second, and wake
            // for a play frame exactly when it falls due.
            nextDrawing += refresh;
            const int64_t now = clock.performanceCounter();
            if (nextDrawing < now) nextDrawing = now;
            clock.sleepUntil(std::min(nextDrawing, NextFrameDue + 1));
        }
    }
}

void frmGame::playFrame() {
    FrameStartCount = platform.clock.performanceCounter();
    if (player->DeathStatus()) resetgame(false);
    DriveActed = false;
    const uint32_t runs = recorder->Runs();
    KeepDrawnState();
    HandleKeyboard();
    if (recorder->Runs() != runs)
        recorder->Record(0);  // restarted by a key: the new run's first frame drove nothing
    else if (DriveActed)
        recorder->Record(DriveBits);
    else
        recorder->Spoil();
    collision->CheckCollisions(PhysicsWorld());
    ApplyPlayEffects();
    MovePlatforms();
    AdvanceMotion();
    ApplyPlayEffects();
    if (!SmoothMotion) RenderFrame();
    platform.window.processEvents(*this);
    const uint32_t now = platform.clock.tickCount();
    if (now - LastAnimatedTextureTick > AnimatedTextureInterval) {
        StepAnimatedTextures();
        LastAnimatedTextureTick = now;
    }
    UpdateFPSCounter();
    if (GameState == Playing) clock->Update();
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
            // The camera too is drawn between the last two play frames.
            device.setTransform(
                TransformKind::View,
                MatrixLookAtLH(Lerp(DrawnEyeFrom, dx->CameraEye, DrawBlend),
                               Lerp(DrawnLookAtFrom, dx->CameraLookAt, DrawBlend), Vector3{0, 1, 0}));
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
        case WatchEnd:
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

void frmGame::ReportSaveFailures() {
    auto report = [&](std::string& error, const std::string& what) {
        if (error.empty()) return;
        const std::string text = "Quorbit could not save " + what + " (" + error +
                                 "). The game goes on; what was not saved is lost when it ends.";
        error.clear();
        debug->WriteLine(text);
        if (reportedSaves.insert(what).second) platform.window.messageBox(text);
    };
    report(levels->SaveError, "the fastest times and all-stars flags");
    report(stats->SaveError, "the statistics");
    report(options->SaveError, "the options");
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
