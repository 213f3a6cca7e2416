#include "shell/ReplayFile.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "persist/AtomicFile.h"
#include "platform/KeyboardDevice.h"
#include "shell/RaceTime.h"

namespace qb {

namespace {

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t' || s.front() == '\r')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
    return s;
}

// A whole number of at most nine digits (so it fits a Long).
bool Number(std::string_view s, int32_t& v) {
    if (s.empty() || s.size() > 9) return false;
    v = 0;
    for (char c : s) {
        if (c < '0' || c > '9') return false;
        v = v * 10 + (c - '0');
    }
    return true;
}

bool Hex64(std::string_view s, uint64_t& v) {
    if (s.size() != 16) return false;
    v = 0;
    for (char c : s) {
        int d;
        if (c >= '0' && c <= '9')
            d = c - '0';
        else if (c >= 'a' && c <= 'f')
            d = c - 'a' + 10;
        else
            return false;
        v = v << 4 | static_cast<uint64_t>(d);
    }
    return true;
}

bool Printable(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) < 32 || static_cast<unsigned char>(c) > 126) return false;
    return true;
}

// "usertracks/NAME.dat" or "levels.dat": nothing that could climb out of
// the game's folders.
bool SafeTrackFile(std::string_view s) {
    if (s == "levels.dat") return true;
    const std::string_view folder = "usertracks/";
    if (s.substr(0, folder.size()) != folder) return false;
    const std::string_view name = s.substr(folder.size());
    if (name.size() < 5 || name.size() > 200 || name.substr(name.size() - 4) != ".dat") return false;
    for (char c : name)
        if (c == '/' || c == '\\' || static_cast<unsigned char>(c) < 32 || c == 127) return false;
    return name.front() != '.';
}

std::string HashText(uint64_t v) {
    static const char* const digits = "0123456789abcdef";
    std::string s(16, '0');
    for (int i = 15; i >= 0; --i, v >>= 4) s[static_cast<size_t>(i)] = digits[v & 15];
    return s;
}

const char* KeyName(uint8_t code) {
    for (const auto& [name, c] : KeyScriptNames())
        if (c == code) return name.c_str();
    return "?";
}

}  // namespace

bool IsDrivingKey(uint8_t code) {
    switch (code) {
        case DIK_UP:
        case DIK_DOWN:
        case DIK_LEFT:
        case DIK_RIGHT:
        case DIK_SPACE:
        case DIK_LSHIFT:
        case DIK_RSHIFT:
        case DIK_LCONTROL:
        case DIK_RCONTROL:
            return true;
        default:
            return false;
    }
}

std::string FormatReplay(const Replay& r) {
    std::ostringstream out;
    out << "quorbit-replay " << Replay::FormatVersion << "\n";
    out << "file " << r.trackFile << "\n";
    out << "track " << r.track << "\n";
    out << "track-hash " << HashText(r.trackHash) << "\n";
    out << "frames " << r.frames << "\n";
    out << "time " << RaceTime::FromFrames(r.frames).Clock() << "\n";
    out << "stars " << r.stars << "/" << r.starCount << "\n";
    out << "driver " << r.driver << "\n";
    out << "date " << r.date << "\n";
    out << "keys\n";
    for (const KeyStep& s : r.keys.steps) {
        out << s.count << " ";
        if (s.keys.empty()) out << "-";
        for (size_t i = 0; i < s.keys.size(); ++i) out << (i ? "+" : "") << KeyName(s.keys[i]);
        out << "\n";
    }
    return out.str();
}

bool ParseReplay(std::string_view text, Replay& out, std::string& error) {
    out = Replay{};
    if (text.size() > Replay::LargestFile) {
        error = "the file is far too long for a replay";
        return false;
    }
    bool haveVersion = false, haveFile = false, haveTrack = false, haveHash = false, haveFrames = false,
         haveStars = false, haveKeys = false;
    int lineNumber = 0;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string_view raw = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        ++lineNumber;
        const std::string_view line = Trim(raw);
        if (line.empty() || line.front() == '#') continue;
        const std::string where = "line " + std::to_string(lineNumber) + ": ";
        const size_t space = line.find(' ');
        const std::string_view name = line.substr(0, space);
        const std::string_view value = space == std::string_view::npos ? "" : Trim(line.substr(space + 1));
        if (!haveVersion) {
            int32_t version = 0;
            if (name != "quorbit-replay" || !Number(value, version)) {
                error = "this is not a Quorbit replay";
                return false;
            }
            if (version != Replay::FormatVersion) {
                error = "the replay was written in format " + std::to_string(version) +
                        "; this game reads format " + std::to_string(Replay::FormatVersion);
                return false;
            }
            haveVersion = true;
            continue;
        }
        if (name == "keys") {
            haveKeys = true;
            break;
        }
        if (name == "file") {
            if (!SafeTrackFile(value)) {
                error = where + "\"" + std::string(value) + "\" is not a track file of the game";
                return false;
            }
            out.trackFile = value;
            haveFile = true;
        } else if (name == "track") {
            if (!Number(value, out.track) || out.track < 1) {
                error = where + "the track number is not valid";
                return false;
            }
            haveTrack = true;
        } else if (name == "track-hash") {
            if (!Hex64(value, out.trackHash)) {
                error = where + "the track identity is not 16 hex digits";
                return false;
            }
            haveHash = true;
        } else if (name == "frames") {
            if (!Number(value, out.frames) || out.frames > Replay::LongestRun) {
                error = where + "the run is longer than an hour, longer than any real run";
                return false;
            }
            haveFrames = true;
        } else if (name == "stars") {
            const size_t slash = value.find('/');
            if (slash == std::string_view::npos || !Number(value.substr(0, slash), out.stars) ||
                !Number(value.substr(slash + 1), out.starCount) || out.stars > out.starCount) {
                error = where + "the stars are not \"TAKEN/OF\"";
                return false;
            }
            haveStars = true;
        } else if (name == "driver") {
            if (value.size() > Replay::DriverLength || !Printable(value)) {
                error = where + "the driver's name is not a name";
                return false;
            }
            out.driver = value;
        } else if (name == "date") {
            if (value.size() > 10 || !Printable(value)) {
                error = where + "the date is not a date";
                return false;
            }
            out.date = value;
        }
        // Other header lines (a later version's extras, "time") are for
        // people; the frames decide.
    }
    if (!haveVersion) {
        error = "the file is empty";
        return false;
    }
    if (!haveFile || !haveTrack || !haveHash || !haveFrames || !haveStars || !haveKeys) {
        error = "the replay is cut short: its header is incomplete";
        return false;
    }
    std::string keyError;
    if (!ParseKeyScript(text, out.keys, keyError)) {
        error = "in the keys, " + keyError;
        return false;
    }
    int64_t total = 0;
    for (const KeyStep& s : out.keys.steps) {
        for (uint8_t k : s.keys)
            if (!IsDrivingKey(k)) {
                error = std::string("the keys hold ") + KeyName(k) + ", which is not a driving key";
                return false;
            }
        total += s.count;
        if (total > Replay::LongestRun + 1) {
            error = "the keys run longer than an hour, longer than any real run";
            return false;
        }
    }
    if (total != out.PlayFrames()) {
        error = "the keys cover " + std::to_string(total) + " frames but the run took " +
                std::to_string(out.PlayFrames()) + ": the replay is cut short or damaged";
        return false;
    }
    return true;
}

bool LoadReplay(const std::string& path, Replay& out, std::string& error) {
    std::error_code ec;
    const auto size = std::filesystem::file_size(path, ec);
    if (ec) {
        error = "cannot read " + path;
        return false;
    }
    if (size > Replay::LargestFile) {
        error = path + ": the file is far too long for a replay";
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot read " + path;
        return false;
    }
    std::stringstream ss;
    ss << in.rdbuf();
    if (!ParseReplay(ss.str(), out, error)) {
        error = path + ": " + error;
        return false;
    }
    return true;
}

bool SaveReplay(const std::string& path, const Replay& replay) {
    const std::string text = FormatReplay(replay);
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ec);
    return WriteFileAtomically(path, std::vector<unsigned char>(text.begin(), text.end()));
}

}  // namespace qb
