// quorbit-track: builds levels.dat from track sources, writes sources back
// from a levels.dat, and checks either.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "Lint.h"
#include "level/LevelFileReader.h"
#include "level/LevelFileWriter.h"
#include "level/TrackLimits.h"
#include "level/TrackSource.h"
#include "persist/AtomicFile.h"

namespace {

using namespace qb;
namespace fs = std::filesystem;

constexpr const char* kUsage =
    "usage: quorbit-track build -o OUT.dat FILE.trk...\n"
    "       quorbit-track dump IN.dat [-o DIR]\n"
    "       quorbit-track check FILE...\n"
    "       quorbit-track lint --game-dir DIR [--levels FILE.dat] (--solutions DIR | --keys FILE) ...\n";

int usage(const std::string& message) {
    std::cerr << "quorbit-track: " << message << "\n" << kUsage;
    return 2;
}

bool readFile(const std::string& path, std::vector<unsigned char>& bytes) {
    // A source far larger than any track file is not read at all.
    std::error_code ec;
    const uintmax_t size = fs::file_size(path, ec);
    if (!ec && size > static_cast<uintmax_t>(limits::kTrackFileBytes)) return false;
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

bool isSource(const std::string& path) {
    return fs::path(path).extension() != ".dat";
}

// Parses the sources in order; prints errors, false when there were any.
bool parseSources(const std::vector<std::string>& files, std::vector<TrackSource>& out) {
    bool ok = true;
    for (const auto& f : files) {
        std::vector<unsigned char> bytes;
        if (!readFile(f, bytes)) {
            std::cerr << f << ": cannot be read\n";
            ok = false;
            continue;
        }
        std::vector<SourceError> errors;
        TrackSource src;
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        if (!ParseTrackSource(text, f, src, errors)) ok = false;
        for (const auto& e : errors) std::cerr << e.Describe() << "\n";
        out.push_back(std::move(src));
    }
    return ok;
}

bool readDat(const std::string& path, LevelFile& file) {
    LevelFileError e;
    if (!ReadLevelFileAt(path, file, e)) {
        std::cerr << path << ":" << e.Describe() << "\n";
        return false;
    }
    return true;
}

int build(const std::vector<std::string>& args) {
    std::string out;
    std::vector<std::string> inputs;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "-o") {
            if (++i >= args.size()) return usage("-o needs a file name");
            out = args[i];
        } else {
            inputs.push_back(args[i]);
        }
    }
    if (out.empty()) return usage("build needs -o OUT.dat");
    if (inputs.empty()) return usage("build needs at least one source file");
    std::vector<TrackSource> sources;
    if (!parseSources(inputs, sources)) return 1;
    const LevelFile file = JoinTrackSources(sources);
    if (file.Levels.empty()) {
        std::cerr << inputs.front() << ":1: the sources hold no track\n";
        return 1;
    }
    const std::vector<uint8_t> bytes = EncodeLevelFile(file);
    // The game's own reader must accept what was written.
    LevelFile again;
    LevelFileError e;
    if (!ReadLevelFile(bytes.data(), bytes.size(), again, e)) {
        std::cerr << out << ":" << e.Describe() << "\n";
        return 1;
    }
    if (!WriteFileAtomically(out, bytes)) {
        std::cerr << out << ": cannot be written\n";
        return 1;
    }
    for (int32_t n = 1; n <= file.LevelCount(); ++n)
        std::cout << DescribeTrack(file.Levels[static_cast<size_t>(n - 1)], n) << "\n";
    std::cout << out << ": " << file.LevelCount() << (file.LevelCount() == 1 ? " track, " : " tracks, ")
              << bytes.size() << " bytes\n";
    return 0;
}

int dump(const std::vector<std::string>& args) {
    std::string in, outDir;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "-o") {
            if (++i >= args.size()) return usage("-o needs a folder");
            outDir = args[i];
        } else if (in.empty()) {
            in = args[i];
        } else {
            return usage("dump takes one track file");
        }
    }
    if (in.empty()) return usage("dump needs a track file");
    LevelFile file;
    if (!readDat(in, file)) return 1;
    if (outDir.empty()) {
        std::cout << PrintTrackSource(file, 0, file.Levels.size(), true);
        return 0;
    }
    std::error_code ec;
    fs::create_directories(outDir, ec);
    // Ten tracks to a file, as the zones group them; the names sort in
    // track order so `build` over the folder gives the same file back.
    for (size_t first = 0; first < file.Levels.size(); first += 10) {
        char name[32];
        std::snprintf(name, sizeof name, "zone%02zu.trk", first / 10 + 1);
        const std::string path = (fs::path(outDir) / name).string();
        const std::string text = PrintTrackSource(file, first, 10, first == 0);
        if (!WriteFileAtomically(path, std::vector<unsigned char>(text.begin(), text.end()))) {
            std::cerr << path << ": cannot be written\n";
            return 1;
        }
        std::cout << path << "\n";
    }
    return 0;
}

int check(const std::vector<std::string>& args) {
    if (args.empty()) return usage("check needs at least one file");
    bool ok = true;
    for (const auto& f : args) {
        if (isSource(f)) {
            std::vector<TrackSource> sources;
            if (!parseSources({f}, sources)) {
                ok = false;
                continue;
            }
            if (sources[0].Tracks.Levels.empty()) {
                std::cerr << f << ":1: the file holds no track\n";
                ok = false;
                continue;
            }
            const size_t n = sources[0].Tracks.Levels.size();
            std::cout << f << ": " << n << (n == 1 ? " track" : " tracks") << ", no errors\n";
        } else {
            LevelFile file;
            if (!readDat(f, file)) {
                ok = false;
                continue;
            }
            std::cout << f << ": " << file.LevelCount() << (file.LevelCount() == 1 ? " track" : " tracks")
                      << ", no errors";
            if (!file.Trailing.empty())
                std::cout << " (" << file.Trailing.size() << " bytes after the last track)";
            std::cout << "\n";
        }
    }
    return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage("no command given");
    const std::string verb = argv[1];
    const std::vector<std::string> args(argv + 2, argv + argc);
    if (verb == "-h" || verb == "--help" || verb == "help") {
        std::cout << kUsage;
        return 0;
    }
    if (verb == "build") return build(args);
    if (verb == "dump") return dump(args);
    if (verb == "check") return check(args);
    if (verb == "lint") return LintCommand(args);
    return usage("unknown command '" + verb + "'");
}
