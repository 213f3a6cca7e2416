#include "shell/SimDriver.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

#include "gui/Gui.h"
#include "level/LevelFileReader.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "physics/CollisionDetection.h"
#include "physics/PlayEvents.h"
#include "physics/clsPlayer.h"
#include "platform/headless/HeadlessPlatform.h"
#include "shell/KeyScript.h"
#include "shell/KeyboardControls.h"
#include "shell/RaceTime.h"
#include "shell/ReplayStore.h"
#include "shell/TrackReplay.h"
#include "shell/frmGame.h"

namespace qb {

namespace fs = std::filesystem;

const char* const SimCsvHeader =
    "frame,x,y,z,vx,vy,vz,on_ground,on_ice,exploding,dead,stars,race_frames,state,events";

std::string FormatSimRow(const SimRow& r) {
    char buf[512];
    std::snprintf(buf, sizeof buf, "%lld,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f,%d,%d,%d,%d,%d,%d,%d,",
                  static_cast<long long>(r.frame), r.position.x, r.position.y, r.position.z, r.velocity.x,
                  r.velocity.y, r.velocity.z, r.onGround ? 1 : 0, r.onIce ? 1 : 0, r.exploding ? 1 : 0,
                  r.dead ? 1 : 0, r.stars, r.raceFrames, r.state);
    return buf + DescribePlayEvents(r.events);
}

namespace {
std::string MakeScratch(const std::string& parent) {
    std::error_code ec;
    const fs::path base = parent.empty() ? fs::temp_directory_path(ec) : fs::path(parent);
    std::string pattern = (base / "quorbit-sim-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) return {};
    return pattern + "/";
}

std::string WithSlash(std::string dir) {
    if (!dir.empty() && dir.back() != '/') dir += '/';
    return dir;
}
}  // namespace

SimRun::SimRun(const std::string& gameDir, const std::string& scratchParent)
    : gameDir_(WithSlash(gameDir)), scratch_(MakeScratch(scratchParent)) {
    hp_ = std::make_unique<HeadlessPlatform>(gameDir_, scratch_.empty() ? gameDir_ : scratch_);
    game_ = std::make_unique<frmGame>(hp_->platform);
}

SimRun::~SimRun() {
    game_.reset();
    hp_.reset();
    if (!scratch_.empty()) {
        std::error_code ec;
        fs::remove_all(scratch_, ec);
    }
}

bool SimRun::GameRunning() const {
    return game_->GameRunning;
}

bool SimRun::Start(int32_t track, std::string& error) {
    return Start(track, gameDir_ + "levels.dat", error);
}

bool SimRun::Start(int32_t track, const std::string& levels, std::string& error) {
    std::error_code ec;
    if (scratch_.empty()) {
        error = "cannot make a scratch folder in " + fs::temp_directory_path().string();
        return false;
    }
    if (!fs::is_regular_file(levels, ec)) {
        error =
            "no " + fs::path(levels).filename().string() + " in " + fs::path(levels).parent_path().string();
        return false;
    }
    // A file the game would refuse is refused here before it is copied:
    // the scratch folder may live in memory.
    int32_t count = 0;
    LevelFileError refused;
    if (!ReadLevelCountAt(levels, count, refused)) {
        error = levels + ": " + refused.Describe();
        return false;
    }
    fs::copy_file(levels, scratch_ + "levels.dat", fs::copy_options::overwrite_existing, ec);
    if (ec) {
        error = "cannot copy " + levels + ": " + ec.message();
        return false;
    }
    frmGame& g = *game_;
    try {
        if (!g.startup()) {
            error = "the game did not start";
            return false;
        }
    } catch (const std::exception& e) {
        error = std::string("the game did not start: ") + e.what();
        return false;
    }
    // One drawing per frame: what a frame drew stays there to be looked at.
    g.SmoothMotion = false;
    if (!g.levels->HasLevel(track)) {
        error = "track " + std::to_string(track) + " is not in " + levels + " (it holds " +
                std::to_string(g.levels->LevelCount()) + " tracks)";
        return false;
    }
    // As the track choice leaves things: the zone of the track, the track
    // built, then the start.
    LevelStructure& l = *g.levels;
    l.CurrentZone = static_cast<int32_t>((track - 1) / 10 + 1);
    l.ZoneFirstLevel = (l.CurrentZone - 1) * 10 + 1;
    l.ZoneLastLevel = l.CurrentZone * 10;
    l.CurrentLevel = track;
    g.GameState = TrackChoice;
    g.track->BuildLevel(track, false);
    g.startPlaying();
    g.gui->SetupScreen(0);
    // A script's keys are pressed in play from its first frame on.
    g.controls->ScreenSeen();
    starCount_ = l.Level(track).StarUpper + 1;
    return true;
}

SimRow SimRun::Step(const std::vector<uint8_t>& keys) {
    frmGame& g = *game_;
    HeadlessPlatform& hp = *hp_;
    g.Events.Flags = 0;
    // The key bytes are set directly: a script changing many keys at once
    // must not overflow the device's event queue.
    std::fill(std::begin(hp.keyboard.keys), std::end(hp.keyboard.keys), uint8_t{0});
    for (uint8_t k : keys) hp.keyboard.keys[k] = 128;
    hp.clock.advanceMs(frmGame::FrameInterval);
    if (g.GameState == Playing) {
        g.playFrame();
    } else if (g.GameRunning) {
        g.RenderFrame();
        g.HandleKeyboard();
        hp.window.processEvents(g);
    }
    const clsPlayer& pl = *g.player;
    SimRow row;
    row.frame = ++frame_;
    row.position = pl.GetPosition();
    row.velocity = pl.GetVelocity();
    row.onGround = g.OnGround;
    row.onIce = pl.ISPlayerOnAnIceBlock();
    row.exploding = pl.getexplodeStatus();
    row.dead = pl.DeathStatus();
    row.stars = g.StarsCollected;
    row.raceFrames = g.RaceFrames;
    row.state = g.GameState;
    row.events = g.Events.Flags;
    if (row.events & EventDeath) died_ = true;
    if ((row.events & EventFinish) && !finished_) {
        finished_ = true;
        finishFrames_ = g.Events.FinishFrames;
        finishStars_ = g.Events.FinishStars;
    }
    return row;
}

std::string SimRun::Result() const {
    if (finished_)
        return "result: finished " + RaceTime::FromFrames(finishFrames_).Clock() + " stars " +
               std::to_string(finishStars_) + "/" + std::to_string(starCount_);
    return died_ ? "result: died" : "result: running";
}

namespace {
const char* const Usage =
    "usage: quorbit-sim --game-dir DIR --track N [--keys FILE] [--frames N] [--save-replay FILE]\n"
    "       quorbit-sim --game-dir DIR --replay FILE\n";

bool WholeNumber(const std::string& s, int64_t& v) {
    if (s.empty() || s.size() > 12) return false;
    v = 0;
    for (char c : s) {
        if (c < '0' || c > '9') return false;
        v = v * 10 + (c - '0');
    }
    return true;
}
}  // namespace

int RunSimulator(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string gameDir, keysFile, replayFile, saveReplay;
    int64_t track = -1, frames = -1;
    auto fail = [&](const std::string& message) {
        err << "quorbit-sim: " << message << "\n" << Usage;
        return 2;
    };
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--help" || a == "-h") {
            out << Usage;
            return 0;
        }
        if (a != "--game-dir" && a != "--track" && a != "--keys" && a != "--frames" && a != "--replay" &&
            a != "--save-replay")
            return fail("unknown argument \"" + a + "\"");
        if (i + 1 >= args.size()) return fail(a + " needs a value");
        const std::string& v = args[++i];
        if (a == "--game-dir") {
            gameDir = v;
        } else if (a == "--keys") {
            keysFile = v;
        } else if (a == "--replay") {
            replayFile = v;
        } else if (a == "--save-replay") {
            saveReplay = v;
        } else if (a == "--track") {
            if (!WholeNumber(v, track) || track < 1 || track > 2147483647)
                return fail("--track needs a track number from 1, not \"" + v + "\"");
        } else if (!WholeNumber(v, frames)) {
            return fail("--frames needs a whole number, not \"" + v + "\"");
        }
    }
    if (gameDir.empty()) return fail("--game-dir is missing");
    if (!replayFile.empty()) {
        if (track >= 0 || !keysFile.empty() || frames >= 0 || !saveReplay.empty())
            return fail("--replay brings its own track and keys");
        return RunReplayCheck(gameDir, replayFile, out, err);
    }
    if (track < 0) return fail("--track is missing");

    KeyScript script;
    const bool scripted = !keysFile.empty() && keysFile != "-";
    if (scripted) {
        std::string error;
        if (!LoadKeyScript(keysFile, script, error)) return fail(error);
    } else if (frames < 0) {
        return fail("without a key script, --frames says how long to run");
    }

    SimRun run(gameDir, ReplayScratchParent());
    std::string error;
    if (!run.Start(static_cast<int32_t>(track), error)) return fail(error);

    out << SimCsvHeader << "\n";
    static const std::vector<uint8_t> noKeys;
    size_t step = 0;
    int64_t inStep = 0;
    for (int64_t frame = 0; frames < 0 || frame < frames; ++frame) {
        const std::vector<uint8_t>* keys = &noKeys;
        if (scripted) {
            while (step < script.steps.size() && inStep >= script.steps[step].count) {
                ++step;
                inStep = 0;
            }
            if (step >= script.steps.size()) break;
            keys = &script.steps[step].keys;
            ++inStep;
        }
        if (!run.GameRunning()) break;
        out << FormatSimRow(run.Step(*keys)) << "\n";
        if (run.Finished()) break;
    }
    out << run.Result() << "\n";
    out.flush();
    if (saveReplay.empty()) return 0;
    // The finished run as the game keeps it, to watch, race as a ghost or share.
    std::error_code ec;
    if (run.Finished())
        fs::copy_file(run.game().replays->LastPath(), saveReplay, fs::copy_options::overwrite_existing, ec);
    if (run.Finished() && !ec) return 0;
    err << "quorbit-sim: no replay written to " << saveReplay
        << (run.Finished() ? ": " + ec.message() : std::string(": the run did not finish")) << "\n";
    return 1;
}

}  // namespace qb
