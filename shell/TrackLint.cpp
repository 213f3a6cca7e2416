#include "shell/TrackLint.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <map>
#include <sstream>

#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "platform/DirectX.h"
#include "shell/CameraPicture.h"
#include "shell/KeyTimeline.h"
#include "shell/LintSight.h"
#include "shell/SimDriver.h"
#include "shell/TrackReplay.h"
#include "shell/frmGame.h"

namespace qb {

namespace {

std::string Fixed(double v, int digits = 1) {
    std::ostringstream s;
    s.setf(std::ios::fixed);
    s.precision(digits);
    s << v;
    return s.str();
}

std::string KeyName(uint8_t code) {
    for (const auto& [name, k] : KeyScriptNames())
        if (k == code) return name;
    return std::to_string(code);
}

// Units from the first block to the far end of the furthest finish block.
double TrackLength(const LevelRecord& r) {
    double first = 1e30, last = -1e30;
    for (int32_t i = 0; i <= r.BlockUpper; ++i) {
        const BlockRecord& b = r.Blocks[static_cast<size_t>(i)];
        first = std::min(first, static_cast<double>(b.Z));
        if (b.ActionCode == 1) last = std::max(last, static_cast<double>(b.Z) + b.scalez);
    }
    return last > first ? last - first : 0;
}

void HoldRule(const KeyTimeline& keys, const LintOptions& o, LintReport& report) {
    int shortHolds = 0;
    const KeyHold* first = nullptr;
    for (const KeyHold& h : keys.holds()) {
        if (h.open || h.to - h.from >= o.shortestHold) continue;
        if (!first) first = &h;
        ++shortHolds;
    }
    if (!first) return;
    report.findings.push_back(
        {"held", first->from + 1,
         KeyName(first->key) + " is held for " + std::to_string(first->to - first->from) + " frame(s)" +
             (shortHolds > 1 ? " (and " + std::to_string(shortHolds - 1) + " more short holds)" : "") +
             "; hands hold a key at least " + std::to_string(o.shortestHold) +
             " frames: give the move more room so the solution can hold it longer"});
}

void OneKeyRule(const std::string& gameDir, int32_t track, int64_t frames, LintReport& report) {
    KeyScript upOnly;
    upOnly.steps.push_back({frames + 250, {KeyScriptNames()[0].second}});
    const ReplayOutcome o = ReplayKeys(gameDir, track, upOnly);
    if (o.Won())
        report.findings.push_back(
            {"one key", 0,
             "holding Up alone wins with every star: put something on the straight line "
             "that needs a jump, a turn or a stop"});
}

void TimingRule(const std::string& gameDir, int32_t track, const KeyTimeline& keys, const LintOptions& o,
                LintReport& report) {
    std::mt19937 random(o.seed);
    std::map<std::string, int> losses;
    int wins = 0;
    for (int run = 0; run < o.jitterRuns; ++run) {
        const KeyTimeline moved = keys.Jittered(random, o.jitterFrames);
        const ReplayOutcome r = ReplayKeys(gameDir, track, moved.ToScript(150));
        if (r.Won()) {
            ++wins;
        } else {
            // Losses are grouped by ten units of track so that a maker sees where.
            std::string where = r.Describe();
            if (r.died || !r.finished)
                where = (r.died ? "died near z " : "stopped near z ") +
                        std::to_string(static_cast<int>(std::floor(r.lostZ / 10) * 10));
            losses[where] += 1;
        }
    }
    report.figures.jitterWins = wins;
    report.figures.jitterRuns = o.jitterRuns;
    if (wins >= o.jitterWins) return;
    std::vector<std::pair<int, std::string>> sorted;
    for (const auto& [where, n] : losses) sorted.push_back({n, where});
    std::sort(sorted.rbegin(), sorted.rend());
    std::string list;
    for (size_t i = 0; i < sorted.size() && i < 3; ++i)
        list += (i ? ", " : "") + sorted[i].second + " (" + std::to_string(sorted[i].first) + ")";
    report.findings.push_back(
        {"timing", 0,
         "wins only " + std::to_string(wins) + " of " + std::to_string(o.jitterRuns) +
             " replays with each press and release up to " + std::to_string(o.jitterFrames) +
             " frames early or late (needs " + std::to_string(o.jitterWins) + "): " + list +
             "; make those places forgiving (longer take-off run, wider landing, slower platform)"});
}

// For every press and release, how many frames it can move with the run
// still winning; the narrowest is the track's hardest moment.
void MeasureWindows(const std::string& gameDir, int32_t track, const KeyTimeline& keys, const LintOptions& o,
                    LintReport& report) {
    int64_t narrowest = INT64_MAX, at = 0;
    for (int edge : keys.MovableEdges()) {
        int64_t span = 1;
        for (int dir : {-1, 1}) {
            for (int d = 1; d <= o.windowReach; ++d) {
                if (!ReplayKeys(gameDir, track, keys.Shifted(edge, dir * d).ToScript(150)).Won()) break;
                ++span;
            }
        }
        if (span < narrowest) {
            narrowest = span;
            at = keys.EdgeFrame(edge) + 1;
        }
    }
    report.figures.narrowestWindow = narrowest;
    report.figures.narrowestAt = at;
}

}  // namespace

std::string LintReport::Describe(const std::string& label) const {
    if (findings.empty()) return label + ": ok\n";
    std::string out;
    for (const LintFinding& f : findings)
        out += label + ": " + f.rule + ": " + (f.frame > 0 ? "frame " + std::to_string(f.frame) + ": " : "") +
               f.message + "\n";
    return out;
}

LintReport LintTrack(const std::string& gameDir, int32_t track, const KeyScript& solution,
                     const LintOptions& options) {
    LintReport report;
    report.track = track;
    const KeyTimeline keys(solution);
    report.figures.keyChanges = keys.KeyChanges();

    SightCheck sight(options);
    {
        SimRun run(gameDir, ReplayScratchParent());
        std::string error;
        if (!run.Start(track, error)) {
            report.findings.push_back({"finish", 0, error});
            return report;
        }
        frmGame& game = run.game();
        report.figures.length = TrackLength(game.levels->Level(track));
        const int64_t total = solution.TotalFrames();
        bool lost = false;
        for (int64_t f = 0; f < total && !run.Finished(); ++f) {
            const SimRow row = run.Step(*solution.KeysAt(f));
            if (row.dead || row.exploding) {
                report.findings.push_back(
                    {"finish", row.frame,
                     "the solution loses the car at z " + Fixed(row.position.z) +
                         ": it must win with every star before anything else is judged"});
                lost = true;
                break;
            }
            if (!run.Finished()) sight.Observe(game, row);
        }
        if (!lost) {
            const ReplayOutcome o = ReplayKeys(gameDir, track, solution);
            report.figures.stars = o.starCount;
            report.figures.seconds = static_cast<double>(o.finishFrames) / 25.0;
            if (!o.Won()) {
                report.findings.push_back({"finish", o.lostFrame,
                                           "the solution " + o.Describe() + ": it must win with every star"});
                lost = true;
            }
        }
        if (lost) return report;
    }
    sight.Judge(report);
    HoldRule(keys, options, report);
    OneKeyRule(gameDir, track, solution.TotalFrames(), report);
    TimingRule(gameDir, track, keys, options, report);
    if (options.windows) MeasureWindows(gameDir, track, keys, options, report);
    return report;
}

}  // namespace qb
