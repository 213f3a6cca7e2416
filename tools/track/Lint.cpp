// quorbit-track lint: drives each track's solution with the track checker
// and prints, per track, what a driver would find unfair and how to fix it,
// with the track's difficulty figures.
#include "Lint.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "level/LevelFileReader.h"
#include "shell/KeyScript.h"
#include "shell/TrackLint.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLintUsage =
    "usage: quorbit-track lint --game-dir DIR [--levels FILE.dat] (--solutions DIR | --keys FILE)\n"
    "                          [--track N | --track A-B] [--windows] [--runs N] [--figures OUT.tsv]\n"
    "                          [--report-only]\n";

int LintUsage(const std::string& message) {
    std::cerr << "quorbit-track lint: " << message << "\n" << kLintUsage;
    return 2;
}

// A game folder reading `levels` as its track file; everything else is linked.
std::string Stage(const std::string& gameDir, const std::string& levels, std::string& error) {
    std::string pattern = (fs::temp_directory_path() / "quorbit-lint-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        error = "cannot make a scratch folder";
        return {};
    }
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(gameDir, ec))
        if (entry.path().filename() != "levels.dat")
            fs::create_symlink(fs::absolute(entry.path()), fs::path(pattern) / entry.path().filename(), ec);
    fs::copy_file(levels, fs::path(pattern) / "levels.dat", ec);
    if (ec) error = "cannot copy " + levels + ": " + ec.message();
    return pattern;
}

int32_t CountTracks(const std::string& levels) {
    std::ifstream in(levels, std::ios::binary);
    std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LevelFile file;
    LevelFileError e;
    if (!ReadLevelFile(bytes.data(), bytes.size(), file, e)) return 0;
    return file.LevelCount();
}

std::string FiguresLine(const LintReport& r) {
    const LintFigures& f = r.figures;
    char buf[256];
    std::snprintf(buf, sizeof buf, "%d\t%lld\t%lld\t%lld\t%.0f\t%.2f\t%d\t%d\t%d/%d\t%s\n", r.track,
                  static_cast<long long>(f.keyChanges), static_cast<long long>(f.narrowestWindow),
                  static_cast<long long>(f.narrowestAt), f.length, f.seconds, f.stars, f.hazards,
                  f.jitterWins, f.jitterRuns, r.Passed() ? "ok" : r.findings.front().rule.c_str());
    return buf;
}

}  // namespace

int LintCommand(const std::vector<std::string>& args) {
    std::string gameDir, levels, solutions, keysFile, figuresFile;
    int32_t first = 1, last = -1;
    bool reportOnly = false;
    LintOptions options;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--windows") {
            options.windows = true;
            continue;
        }
        if (a == "--report-only") {
            reportOnly = true;
            continue;
        }
        if (i + 1 >= args.size()) return LintUsage(a + " needs a value");
        const std::string& v = args[++i];
        if (a == "--game-dir") {
            gameDir = v;
        } else if (a == "--levels") {
            levels = v;
        } else if (a == "--solutions") {
            solutions = v;
        } else if (a == "--keys") {
            keysFile = v;
        } else if (a == "--figures") {
            figuresFile = v;
        } else if (a == "--runs") {
            options.jitterRuns = std::atoi(v.c_str());
            if (options.jitterRuns < 1) return LintUsage("--runs needs a number from 1");
            options.jitterWins = (options.jitterRuns * 95 + 99) / 100;
        } else if (a == "--track") {
            const size_t dash = v.find('-');
            first = std::atoi(v.substr(0, dash).c_str());
            last = dash == std::string::npos ? first : std::atoi(v.substr(dash + 1).c_str());
            if (first < 1 || last < first) return LintUsage("--track needs N or A-B with 1 <= A <= B");
        } else {
            return LintUsage("unknown argument \"" + a + "\"");
        }
    }
    if (gameDir.empty()) return LintUsage("--game-dir is missing");
    if (solutions.empty() == keysFile.empty()) return LintUsage("give either --solutions DIR or --keys FILE");

    std::string dir = gameDir, staged, error;
    if (!levels.empty()) {
        staged = dir = Stage(gameDir, levels, error);
        if (!error.empty()) {
            std::cerr << "quorbit-track lint: " << error << "\n";
            return 2;
        }
    }
    const int32_t count = CountTracks((fs::path(dir) / "levels.dat").string());
    if (count < 1) {
        std::cerr << "quorbit-track lint: no readable levels.dat in " << dir << "\n";
        return 1;
    }
    if (last < 0) last = keysFile.empty() ? count : first;
    if (last > count) return LintUsage("the track file holds only " + std::to_string(count) + " tracks");

    std::ofstream figures;
    if (!figuresFile.empty()) {
        figures.open(figuresFile);
        figures << "track\tkey_changes\tnarrowest_window\twindow_at_frame\tlength\tseconds\tstars\thazards\t"
                   "timing_wins\tresult\n";
    }
    bool allPassed = true;
    for (int32_t n = first; n <= last; ++n) {
        std::string keys = keysFile;
        if (keys.empty()) {
            char name[16];
            std::snprintf(name, sizeof name, "%02d.keys", n);
            keys = (fs::path(solutions) /
                    (levels.empty() ? name : "user_" + fs::path(levels).stem().string() + ".keys"))
                       .string();
        }
        const std::string label =
            levels.empty() ? "track " + std::to_string(n) : levels + " track " + std::to_string(n);
        KeyScript script;
        if (!LoadKeyScript(keys, script, error)) {
            std::cout << label << ": finish: no solution to drive (" << keys << ": " << error << ")\n";
            allPassed = false;
            continue;
        }
        const LintReport report = LintTrack(dir, n, script, options);
        std::cout << report.Describe(label);
        const LintFigures& f = report.figures;
        std::cout << label << ": figures: " << f.keyChanges << " key changes, "
                  << (f.narrowestWindow < 0 ? std::string("window not measured")
                                            : "narrowest window " + std::to_string(f.narrowestWindow) +
                                                  " frames at frame " + std::to_string(f.narrowestAt))
                  << ", " << static_cast<long>(f.length) << " units, " << f.seconds << " s, " << f.stars
                  << " stars, " << f.hazards << " hazards, " << f.jitterWins << "/" << f.jitterRuns
                  << " timing replays won\n";
        if (figures) figures << FiguresLine(report);
        allPassed = allPassed && report.Passed();
    }
    if (!staged.empty()) fs::remove_all(staged);
    return allPassed || reportOnly ? 0 : 1;
}

}  // namespace qb
