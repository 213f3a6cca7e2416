#include "persist/InstalledCopy.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>

#include "level/LevelFileWriter.h"
#include "level/TrackIdentity.h"
#include "level/TrackResults.h"
#include "persist/AtomicFile.h"

namespace qb {

namespace fs = std::filesystem;

namespace {

const char* const StampName = "installed.txt";

// Size and FNV-1a hash: which installed file a copy was made from.
std::string Signature(const std::vector<uint8_t>& bytes) {
    uint64_t h = 0xcbf29ce484222325ull;
    for (uint8_t b : bytes) h = (h ^ b) * 0x100000001b3ull;
    return std::to_string(bytes.size()) + " " + TrackHashText(h);
}

// installed.txt: one line "SIZE HASH NAME" per file brought over.
std::map<std::string, std::string> ReadStamp(const std::string& path) {
    std::map<std::string, std::string> entries;
    const std::vector<unsigned char> bytes = ReadWholeFile(path);
    std::istringstream in(std::string(bytes.begin(), bytes.end()));
    std::string size, hash, name;
    while (in >> size >> hash && std::getline(in >> std::ws, name))
        if (!name.empty()) entries[name] = size + " " + hash;
    return entries;
}

std::vector<unsigned char> StampBytes(const std::map<std::string, std::string>& entries) {
    std::string text = "# The installed track files the copies here were made from.\n";
    for (const auto& [name, signature] : entries) text += signature + " " + name + "\n";
    return {text.begin(), text.end()};
}

// Makes `to` from the installed `from`, carrying the player's results from
// the copy already there. False with `why` set when it could not.
bool BringOver(const std::vector<uint8_t>& shipped, const std::string& to, std::string& why) {
    std::vector<uint8_t> out = shipped;
    LevelFile newer;
    LevelFileError e;
    if (ReadLevelFile(shipped.data(), shipped.size(), newer, e)) {
        LevelFile old;
        std::error_code ec;
        if (ReadLevelFileAt(to, old, e)) {
            CarryResults(old, newer);
            out = EncodeLevelFile(newer);
        } else if (fs::file_size(to, ec) > 0 && !ec) {
            // A copy the game cannot read holds nothing it could use, but
            // it is the player's: kept beside the new one.
            fs::rename(to, to + ".broken", ec);
        }
    }
    if (!WriteFileAtomically(to, out, &why)) return false;
    const std::vector<unsigned char> back = ReadWholeFile(to);
    if (back.size() != out.size() || !std::equal(back.begin(), back.end(), out.begin())) {
        why = to + ": what was read back differs from what was written";
        return false;
    }
    return true;
}

}  // namespace

InstallOutcome InstallTrackFiles(const std::string& gameDir, const std::string& writeDir) {
    InstallOutcome outcome;
    std::error_code ec;
    std::vector<std::string> names{"levels.dat"};
    for (fs::directory_iterator it(gameDir + "usertracks", ec), end; !ec && it != end; it.increment(ec))
        if (it->path().extension() == ".dat") names.push_back("usertracks/" + it->path().filename().string());
    const std::map<std::string, std::string> stamp = ReadStamp(writeDir + StampName);
    std::map<std::string, std::string> done = stamp;
    std::string failures;
    for (const std::string& name : names) {
        const std::vector<unsigned char> shipped = ReadWholeFile(gameDir + name);
        if (shipped.empty()) continue;
        const std::string signature = Signature(shipped);
        const std::string to = writeDir + name;
        const auto entry = stamp.find(name);
        const bool there = fs::exists(to, ec);
        if (entry != stamp.end() && (entry->second == signature || !there) &&
            (there || name != "levels.dat")) {
            // Made from this very file, or an example the player removed.
            done[name] = signature;
            continue;
        }
        fs::create_directories(fs::path(to).parent_path(), ec);
        std::string why;
        if (BringOver(shipped, to, why)) {
            done[name] = signature;
            outcome.copied.push_back(name);
        } else {
            done.erase(name);
            failures += (failures.empty() ? "" : "; ") + why;
        }
    }
    std::string why;
    if (done != stamp && !WriteFileAtomically(writeDir + StampName, StampBytes(done), &why))
        failures += (failures.empty() ? "" : "; ") + why;
    int32_t count = 0;
    LevelFileError e;
    outcome.levelsUsable = ReadLevelCountAt(writeDir + "levels.dat", count, e);
    if (!failures.empty())
        outcome.problem =
            "Quorbit could not copy its tracks into " + writeDir + " (" + failures +
            "). It will try again at the next start" +
            (outcome.levelsUsable
                 ? "."
                 : "; until then the installed tracks are played and no fastest time can be kept.");
    return outcome;
}

}  // namespace qb
