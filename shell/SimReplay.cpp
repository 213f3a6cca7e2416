// quorbit-sim --replay: a replay file driven headless on its own track, and
// the verdict whether it finishes exactly as recorded.
#include <ostream>

#include "level/LevelStructure.h"
#include "level/TrackIdentity.h"
#include "shell/DriveControls.h"
#include "shell/RaceTime.h"
#include "shell/ReplayFile.h"
#include "shell/SimDriver.h"
#include "shell/TrackReplay.h"

namespace qb {

int RunReplayCheck(const std::string& gameDir, const std::string& file, std::ostream& out,
                   std::ostream& err) {
    Replay replay;
    std::string error;
    if (!LoadReplay(file, replay, error)) {
        err << "quorbit-sim: " << error << "\n";
        return 2;
    }
    const std::string dir = gameDir.empty() || gameDir.back() == '/' ? gameDir : gameDir + "/";
    const std::string trackFile = dir + replay.trackFile;
    LevelStructure levels(trackFile);
    if (!levels.LoadLevels(error)) {
        err << "quorbit-sim: " << error << "\n";
        return 1;
    }
    if (!levels.HasLevel(replay.track) || TrackHash(levels.Level(replay.track)) != replay.trackHash) {
        err << "quorbit-sim: " << file << ": track " << replay.track << " of " << replay.trackFile
            << " is not the track this run was driven on (it has changed or is missing)\n";
        return 1;
    }

    SimRun run(dir, ReplayScratchParent());
    if (!run.Start(replay.track, trackFile, error)) {
        err << "quorbit-sim: " << error << "\n";
        return 1;
    }
    int64_t frame = 0;
    for (const KeyStep& step : replay.keys.steps)
        for (int64_t i = 0; i < step.count && !run.Finished() && run.GameRunning(); ++i, ++frame)
            run.Step(step.keys);
    out << run.Result() << "\n";
    const std::string recorded = "finished " + RaceTime::FromFrames(replay.frames).Clock() + " stars " +
                                 std::to_string(replay.stars) + "/" + std::to_string(replay.starCount);
    const bool same = run.Finished() && frame == replay.PlayFrames() && run.FinishFrames() == replay.frames &&
                      run.FinishStars() == replay.stars;
    out << (same ? "replay: reproduced " : "replay: does not reproduce the recorded ") << recorded << "\n";
    out.flush();
    return same ? 0 : 1;
}

}  // namespace qb
