#include "shell/TrackReplay.h"

#include <unistd.h>

#include <cmath>
#include <filesystem>

#include "level/TrackObjects.h"
#include "physics/PlayEvents.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"

namespace qb {

std::string ReplayOutcome::Describe() const {
    if (!started) return error;
    const std::string z = std::to_string(static_cast<int>(std::lround(lostZ)));
    if (died) return "died at z " + z;
    if (!finished) return "did not reach the finish (stopped at z " + z + ")";
    if (stars != starCount)
        return "missed " + std::to_string(starCount - stars) + " of " + std::to_string(starCount) + " stars";
    return "won";
}

const std::string& ReplayScratchParent() {
    static const std::string parent = [] {
        std::error_code ec;
        const bool memory = std::filesystem::is_directory("/dev/shm", ec) && ::access("/dev/shm", W_OK) == 0;
        return memory ? std::string("/dev/shm") : std::string();
    }();
    return parent;
}

ReplayOutcome ReplayKeys(const std::string& gameDir, int32_t track, const KeyScript& script) {
    ReplayOutcome o;
    SimRun run(gameDir, ReplayScratchParent());
    if (!run.Start(track, o.error)) return o;
    o.started = true;
    const int64_t total = script.TotalFrames();
    for (int64_t f = 0; f < total && !run.Finished(); ++f) {
        const SimRow row = run.Step(*script.KeysAt(f));
        o.lostFrame = row.frame;
        o.lostZ = row.position.z;
        if (row.dead || row.exploding || (row.events & EventDeath)) {
            o.died = true;
            break;
        }
        o.stars = row.stars;
    }
    o.finished = run.Finished();
    const std::string result = run.Result();
    if (o.finished) {
        // "result: finished S:HH stars N/M"
        const size_t at = result.find("stars ");
        o.stars = std::stoi(result.substr(at + 6));
        o.starCount = std::stoi(result.substr(result.find('/', at) + 1));
        const std::string clock = result.substr(17);
        o.finishFrames = std::stoll(clock) * 25 + std::stoll(clock.substr(clock.find(':') + 1)) / 4;
    } else {
        o.starCount = run.game().track->StarUpper + 1;
    }
    return o;
}

}  // namespace qb
