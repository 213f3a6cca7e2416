// The game form: owns the game state, the run flag, every subsystem object and
// the main loop. One frmGame is one run of the game on one Platform.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>

#include "physics/PlayEvents.h"
#include "platform/Platform.h"
#include "shell/GameState.h"

namespace qb {

class QuorbitDebug;
class DirectX;
class DirectInput;
class optionsDat;
class Settings;
class Stats;
class LevelStructure;
class TrackObjects;
class AnimatedTextures;
class clsBackground;
class clsPlayer;
class clsParticles;
class CarDebris;
class clsShadow;
class CollisionDetection;
class DXmusicSFX;
class Gui;
class KeyboardControls;
class RunRecorder;
class ReplayStore;
class RaceClock;
class GhostCar;
class WatchRun;
class KeyBindings;
struct PlayWorld;

class frmGame : public WindowEvents {
public:
    explicit frmGame(Platform& platform);
    ~frmGame() override;
    frmGame(const frmGame&) = delete;
    frmGame& operator=(const frmGame&) = delete;

    // --- form events ------------------------------------------------------------------
    // Form_Load: GameState = Starting, then loadgame (start-up, main loop, shutdown).
    // Returns the process exit code.
    int Form_Load();
    void Form_Unload();
    void Form_MouseDown(int button, float x, float y);
    void Form_MouseMove(float x, float y);

    // --- the spine --------------------------------------------------------------------
    int loadgame();
    // Start-up steps 1 to 24; false when the game cannot go on (no graphics).
    bool startup();
    // One pass of the main loop's outer body; tests drive the loop with it.
    void mainLoopPass();
    void runMainLoop();
    // Menu passes: each handles the keyboard and window events and draws the
    // menu only when its picture changed; with nothing to do it waits for
    // the next event.
    void runMenuPasses();
    // Play passes: play frames at their fixed pace, drawn once each, or
    // (smooth) drawings at the display's refresh between them.
    void runPlayPasses();
    // A number that changes whenever anything a menu shows changes.
    uint64_t MenuPictureKey() const;
    // Menu drawings so far (counted for the tests and the bench).
    int64_t MenuDrawings = 0;
    void shutdown();
    // One play frame, in its fixed order.
    void playFrame();
    // What the frame's physics works on.
    PlayWorld PhysicsWorld();
    // Answers what the physics noted so far in this frame (the sounds, the
    // star counter, the statistics, the screens, the finish) in its order,
    // and forgets it.
    void ApplyPlayEffects();
    void RenderFrame();
    void ResetFPSCounter() { RaceFrames = 0; }
    // Recovers a lost device and rebuilds what lives on it; false when the
    // device could not be remade (the next frame tries again).
    bool DeviceReset();
    // Switches between 800x600 (1) and 1024x768 (2) at run time.
    void ChangeVideoMode(int32_t mode);
    // The window went full screen or back, or the display changed size: the
    // back buffer follows it and the current screen is laid out again.
    void FitToDisplay();

    // --- the session (start, death, finish) --------------------------------------------
    void startPlaying();
    void resetgame(bool winLevel);
    void Winlevel();
    // The finish screen's line against the best run kept before this finish.
    void ShowFinishDifference(int32_t field, int32_t frames, int32_t bestFrames);

    // --- one keyboard pass ---------------------------------------------------------------
    void HandleKeyboard();

    // --- drawing pieces -------------------------------------------------------------------
    void DrawWorld(bool showAll);
    void DrawPlayerAndParticles();
    void DrawTextFields();
    void DrawButtons();
    void MovePlatforms();
    void StepAnimatedTextures();
    // The moving parts of a play frame that drawing once did along the way:
    // falling and bouncing blocks, spinning stars, the car with the camera,
    // the sparks, the pieces of a blown-up car. Only while playing; the same whether drawings are smooth.
    void AdvanceMotion();
    // Everything now in place becomes where drawings start from until the
    // next play frame has moved it.
    void KeepDrawnState();
    // How far the next drawing is between the last two play frames (0..1),
    // from the time since the last one started.
    float BlendAt(int64_t counter) const;
    void UpdateFPSCounter() { RaceFrames += 1; }
    // Tells the player, once per kind, that a save failed and why.
    void ReportSaveFailures();

    // --- WindowEvents -----------------------------------------------------------------
    void onMouseMove(float x, float y) override { Form_MouseMove(x, y); }
    void onMouseDown(int button, float x, float y) override { Form_MouseDown(button, x, y); }
    void onClose() override { Form_Unload(); }

    // --- state owned by the form -----------------------------------------------------
    Platform& platform;
    GameStateValue GameState = Starting;
    bool GameRunning = false;
    std::string TexturesPath;     // gameDir + "textures/"
    std::string BackgroundsPath;  // gameDir + "backgrounds/"
    int64_t PerfFrequency = 1;
    int64_t FrameStartCount = 0;
    int64_t NowCount = 0;
    uint32_t LastAnimatedTextureTick = 0;
    static constexpr double FrameInterval = 40.0;             // ms between play frames
    static constexpr uint32_t AnimatedTextureInterval = 300;  // ms
    bool graphicsReady = false;                               // start-up step 7 succeeded
    // Drawings at the display's refresh, placing what moves between the last
    // two play frames; off: one drawing per play frame.
    bool SmoothMotion = true;
    static constexpr const char* SmoothMotionKey = "smooth_motion";  // in settings.cfg
    float DrawBlend = 1.0f;                                          // what the drawing in progress uses
    int64_t NextFrameDue = 0;  // counter value after which the next play frame runs (smooth)
    Vector3 DrawnEyeFrom{0, 25, -18}, DrawnLookAtFrom{0, 8, 0};
    int exitCode = 0;
    int writeLock = -1;  // held while this game writes into its folder
    std::set<std::string> reportedSaves;

    // Run values (the race clock and the current run).
    int32_t RaceFrames = 0;
    uint32_t RunStartTicks = 0;
    int32_t StarsCollected = 0;
    bool OnGround = false;
    int32_t LastFinishSeconds = 0;
    int32_t LastFinishHundredths = 0;
    // What happened in play: the physics notes it, ApplyPlayEffects answers it.
    PlayEvents Events;
    // The driving controls the keyboard acted on in this play frame.
    uint8_t DriveBits = 0;
    bool DriveActed = false;

    // --- subsystems -------------------------------------------------------------------
    std::unique_ptr<QuorbitDebug> debug;
    std::unique_ptr<optionsDat> options;
    std::unique_ptr<Settings> settings;  // settings.cfg beside options.dat
    std::unique_ptr<DirectX> dx;
    std::unique_ptr<DirectInput> input;
    std::unique_ptr<Stats> stats;
    std::unique_ptr<LevelStructure> levels;
    std::unique_ptr<TrackObjects> track;
    std::unique_ptr<AnimatedTextures> animated;
    std::unique_ptr<clsBackground> background;
    std::unique_ptr<clsPlayer> player;
    std::unique_ptr<clsParticles> particles;
    std::unique_ptr<CarDebris> debris;  // the car's pieces while it blows up
    std::unique_ptr<clsShadow> shadow;
    std::unique_ptr<CollisionDetection> collision;
    std::unique_ptr<DXmusicSFX> sound;
    std::unique_ptr<Gui> gui;
    std::unique_ptr<KeyboardControls> controls;
    std::unique_ptr<RunRecorder> recorder;
    std::unique_ptr<ReplayStore> replays;
    std::unique_ptr<RaceClock> clock;
    std::unique_ptr<GhostCar> ghost;
    std::unique_ptr<WatchRun> watch;        // the best run driving itself
    std::unique_ptr<KeyBindings> bindings;  // the player's keys, kept in settings.cfg
};

}  // namespace qb
