// Headless play frames per second: the whole frame (keys, collisions,
// platforms, drawing into the recording device) on a 200-object track and
// on a 2000-block track, with the car driving at full speed; and shipped
// track 1 raced again and again after its best run is kept, with the ghost
// of that run beside the car and without it.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "gui/Gui.h"
#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"
#include "persist/Settings.h"
#include "platform/KeyboardDevice.h"
#include "shell/GameState.h"
#include "shell/GhostCar.h"
#include "shell/KeyScript.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"

namespace {

namespace fs = std::filesystem;

std::string Head() {
    return "track 1 bench\n gravity 10\n background \"_default.jpg\"\n texture wall \"wall.bmp\"\n"
           " texture road \"road.bmp\"\n";
}

// 150 road blocks, 20 ramps and 20 platforms beside the road, 10 stars on it.
std::string MixedTrack() {
    std::string t = Head();
    for (int i = 0; i < 150; ++i)
        t += " block -2 0 " + std::to_string(-5 + 4 * i) + " 4 1 4 tex wall wall wall road\n";
    for (int i = 0; i < 20; ++i) t += " ramp 6 0 " + std::to_string(10 + 30 * i) + " 4 2 6 tex road wall\n";
    for (int i = 0; i < 20; ++i)
        t += " platform -9 1 " + std::to_string(12 + 30 * i) +
             " 3 1 4 tex road dir right speed 5 dist 2 loop\n";
    for (int i = 0; i < 10; ++i) t += " star 0 1 " + std::to_string(20 + 55 * i) + "\n";
    return t;
}

// 2000 blocks of one unit along the road.
std::string LongTrack() {
    std::string t = Head();
    for (int i = 0; i < 2000; ++i)
        t += " block -2 0 " + std::to_string(-5 + i) + " 4 1 1 tex wall wall wall road\n";
    return t;
}

struct BenchDir {
    std::string dir;
    explicit BenchDir(const std::string& name, const std::string& source) {
        const fs::path d =
            fs::temp_directory_path() / ("quorbit-bench-" + name + "-" + std::to_string(::getpid()));
        fs::remove_all(d);
        fs::create_directories(d);
        for (const char* sub : {"textures", "backgrounds", "models", "skins", "misc", "sfx", "music", "gui"})
            if (fs::exists(fs::path(QUORBIT_GAME_DIR) / sub))
                fs::create_directory_symlink(fs::path(QUORBIT_GAME_DIR) / sub, d / sub);
        qb::TrackSource src;
        std::vector<qb::SourceError> errors;
        qb::ParseTrackSource(source, name, src, errors);
        const std::vector<uint8_t> bytes = qb::EncodeLevelFile(qb::JoinTrackSources({src}));
        std::ofstream((d / "levels.dat").string(), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        dir = d.string() + "/";
    }
    ~BenchDir() {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
};

void PlayFrames(benchmark::State& state, const std::string& name, const std::string& source) {
    BenchDir dir(name, source);
    qb::SimRun run(dir.dir);
    std::string error;
    if (!run.Start(1, error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    const std::vector<uint8_t> keys{qb::DIK_UP};
    for (auto _ : state) benchmark::DoNotOptimize(run.Step(keys));
    state.counters["frames/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void BM_PlayFrames200Objects(benchmark::State& state) {
    PlayFrames(state, "mixed", MixedTrack());
}
void BM_PlayFrames2000Blocks(benchmark::State& state) {
    PlayFrames(state, "long", LongTrack());
}

// Track 1 driven by its solution, raced again at each finish; the first
// finish keeps the best run that the ghost follows.
void RaceTrack1(benchmark::State& state, bool ghost) {
    qb::SimRun run(QUORBIT_GAME_DIR);
    qb::KeyScript keys;
    std::string error;
    if (!run.Start(1, error) ||
        !qb::LoadKeyScript(std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/01.keys", keys, error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    qb::frmGame& g = run.game();
    g.settings->SetBool(qb::GhostCar::SettingKey, ghost);
    int64_t f = 0;
    auto again = [&] {
        g.GameState = qb::TrackChoice;
        g.gui->SetupScreen(0);
        g.startPlaying();
        g.gui->SetupScreen(0);
        f = 0;
    };
    for (; g.GameState == qb::Playing; ++f) run.Step(*keys.KeysAt(f));
    again();
    if (g.ghost->Frames() == 0 && ghost) {
        state.SkipWithError("no ghost to race");
        return;
    }
    for (auto _ : state) {
        if (g.GameState != qb::Playing || f >= keys.TotalFrames()) again();
        benchmark::DoNotOptimize(run.Step(*keys.KeysAt(f++)));
    }
    state.counters["frames/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void BM_Track1WithGhost(benchmark::State& state) {
    RaceTrack1(state, true);
}
void BM_Track1WithoutGhost(benchmark::State& state) {
    RaceTrack1(state, false);
}

BENCHMARK(BM_PlayFrames200Objects)->Unit(benchmark::kMicrosecond)->MinTime(2.0);
BENCHMARK(BM_PlayFrames2000Blocks)->Unit(benchmark::kMicrosecond)->MinTime(2.0);
BENCHMARK(BM_Track1WithoutGhost)->Unit(benchmark::kMicrosecond)->MinTime(2.0);
BENCHMARK(BM_Track1WithGhost)->Unit(benchmark::kMicrosecond)->MinTime(2.0);

}  // namespace

BENCHMARK_MAIN();
