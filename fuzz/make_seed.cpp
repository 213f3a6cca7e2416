// Builds a levels.dat seed from track sources, without the whole game (the
// fuzz build compiles only the file code).
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "level/LevelFileWriter.h"
#include "level/TrackSource.h"

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: fuzz_make_seed OUT.dat FILE.trk...\n";
        return 2;
    }
    std::vector<qb::TrackSource> sources;
    for (int i = 2; i < argc; ++i) {
        std::ifstream in(argv[i], std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::vector<qb::SourceError> errors;
        sources.emplace_back();
        if (!qb::ParseTrackSource(text, argv[i], sources.back(), errors)) {
            for (const auto& e : errors) std::cerr << e.Describe() << "\n";
            return 1;
        }
    }
    const std::vector<uint8_t> bytes = qb::EncodeLevelFile(qb::JoinTrackSources(sources));
    std::ofstream(argv[1], std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return 0;
}
