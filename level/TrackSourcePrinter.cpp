// Writing track sources: every stored value spelled so that reading the
// text back gives the same bytes.
#include <cctype>
#include <cmath>
#include <set>

#include "level/TrackSource.h"
#include "level/TrackSourceWords.h"

namespace qb {

using namespace tracktext;

namespace {

std::string trimBlanks(const std::string& s) {
    const size_t end = s.find_last_not_of(' ');
    return end == std::string::npos ? std::string() : s.substr(0, end + 1);
}

std::string flagWord(int16_t v) {
    if (v == -1) return "yes";
    if (v == 0) return "no";
    return std::to_string(v);
}

// A readable texture name from its file name: "Stone Wall.bmp" -> stone_wall.
std::string makeAlias(const std::string& file, std::set<std::string>& used) {
    std::string stem = file.substr(0, file.rfind('.'));
    std::string a;
    for (char c : stem) {
        const auto u = static_cast<unsigned char>(c);
        a += (std::isalnum(u) && u < 0x80) ? static_cast<char>(std::tolower(u)) : '_';
    }
    if (a.empty() || !IsIdentifier(a)) a = "t_" + a;
    if (IsReservedWord(a)) a += "_tex";
    std::string candidate = a;
    for (int n = 2; used.count(candidate); ++n) candidate = a + "_" + std::to_string(n);
    used.insert(candidate);
    return candidate;
}

template <typename R>
std::string boxNumbers(const R& r) {
    return FormatFloat(r.X) + " " + FormatFloat(r.Y) + " " + FormatFloat(r.Z) + "  " + FormatFloat(r.scaleX) +
           " " + FormatFloat(r.scaleY) + " " + FormatFloat(r.scalez);
}

template <typename R>
std::string blockOptions(const R& b, const std::vector<std::string>& alias) {
    auto name = [&](int16_t t) { return alias.at(static_cast<size_t>(t)); };
    std::string s = "  tex ";
    if (b.TextureA == b.TextureB && b.TextureA == b.TextureC && b.TextureA == b.TextureD)
        s += name(b.TextureA);
    else
        s += name(b.TextureA) + " " + name(b.TextureB) + " " + name(b.TextureC) + " " + name(b.TextureD);
    s += "  scale " + std::to_string(b.ScaleTextureTop) + " " + std::to_string(b.ScaleTextureSide);
    s += "  ";
    s += b.ActionCode < kKindNames.size() ? std::string(kKindNames[b.ActionCode])
                                          : "action " + std::to_string(b.ActionCode);
    return s;
}

std::string countLine(const TaggedNumber& c, size_t textures) {
    // The usual form (a 16-bit count equal to the list) needs no line.
    if (c.VarType == 2 && c.Raw.size() == 2 &&
        static_cast<int16_t>(c.Raw[0] | c.Raw[1] << 8) == static_cast<int64_t>(textures))
        return std::string();
    std::string type = std::to_string(c.VarType);
    for (const auto& n : kTypeNames)
        if (n.code == c.VarType) type = std::string(n.name);
    uint64_t bits = 0;
    for (size_t i = 0; i < c.Raw.size(); ++i) bits |= static_cast<uint64_t>(c.Raw[i]) << (8 * i);
    std::string value;
    const size_t w = c.Raw.size();
    switch (c.VarType) {
        case 4:
            value = FormatFloat(static_cast<float>(c.Value));
            break;
        case 5:
            value = FormatDouble(c.Value);
            break;
        case 16:
        case 2:
        case 3:
        case 22:
        case 6:
        case 20: {
            // Sign-extend the stored width.
            const int64_t v = w == 8 ? static_cast<int64_t>(bits)
                                     : static_cast<int64_t>(bits << (64 - 8 * w)) >> (64 - 8 * w);
            value = std::to_string(v);
            break;
        }
        default:
            value = std::to_string(bits);
            break;
    }
    return "  texturecount " + type + " " + value + "\n";
}

void printTrack(std::string& s, const LevelRecord& r, int16_t allStars, uint32_t reserved, size_t number) {
    s += "track " + std::to_string(number) + "\n";
    if (r.LeadByte != 0) s += "  lead " + std::to_string(r.LeadByte) + "\n";
    if (reserved != 0) s += "  reserved " + std::to_string(reserved) + "\n";
    s += "  gravity " + FormatFloat(r.Settings.FileGravity) + "\n";
    s += "  background " + Quote(trimBlanks(r.Background)) + "\n";
    s += "  allstars " + flagWord(allStars) + "\n";
    for (size_t p = 0; p < 3; ++p) {
        const std::string name = trimBlanks(r.Times.Names[p]);
        if (name.empty() && r.Times.Seconds[p] == 0 && r.Times.Hundredths[p] == 0) continue;
        s += "  time " + std::to_string(p + 1) + " " + Quote(name) + " " +
             std::to_string(r.Times.Seconds[p]) + " " + std::to_string(r.Times.Hundredths[p]) + "\n";
    }
    const auto& set = r.Settings;
    if (!set.SettingsText.empty() || set.Values != std::array<uint32_t, 4>{0, 0, 0, 0}) {
        s += "  settings " + Quote(set.SettingsText);
        for (uint32_t v : set.Values) s += " " + std::to_string(v);
        s += "\n";
    }
    std::set<std::string> used;
    std::vector<std::string> alias(r.TextureNames.size());
    for (size_t i = 1; i < r.TextureNames.size(); ++i) {
        alias[i] = makeAlias(r.TextureNames[i], used);
        s += "  texture " + alias[i] + " " + Quote(r.TextureNames[i]) + "\n";
    }
    s += countLine(r.TextureCount, r.TextureNames.empty() ? 0 : r.TextureNames.size() - 1);
    for (const auto& b : r.Blocks) s += "  block " + boxNumbers(b) + blockOptions(b, alias) + "\n";
    for (const auto& m : r.Platforms) {
        s += "  platform " + boxNumbers(m) + blockOptions(m, alias);
        s += "  dir " + (m.Mdir == 2   ? std::string("left")
                         : m.Mdir == 3 ? std::string("right")
                                       : std::to_string(m.Mdir));
        s += "  speed " + std::to_string(m.Mspeed) + "  dist " + std::to_string(m.Mdist);
        s += m.MloopBack == 0   ? "  noloop"
             : m.MloopBack == 1 ? "  loop"
                                : "  loopflag " + std::to_string(m.MloopBack);
        s += "\n";
    }
    for (const auto& p : r.Ramps) {
        s += "  ramp " + boxNumbers(p) + "  tex ";
        s += p.TextureA == p.TextureB ? alias.at(static_cast<size_t>(p.TextureA))
                                      : alias.at(static_cast<size_t>(p.TextureA)) + " " +
                                            alias.at(static_cast<size_t>(p.TextureB));
        s += "  rot " + std::to_string(p.Rotation) + "\n";
    }
    for (const auto& st : r.Stars)
        s += "  star " + FormatFloat(st.X) + " " + FormatFloat(st.Y) + " " + FormatFloat(st.Z) + "\n";
}

}  // namespace

std::string PrintTrackSource(const LevelFile& file, size_t first, size_t count, bool withFileLines) {
    std::string s = "# Tracks written by quorbit-track dump.\n";
    if (withFileLines) {
        s += "zones";
        for (int16_t z : file.ZoneComplete) s += " " + flagWord(z);
        s += "\n";
        static const char* hex = "0123456789abcdef";
        for (size_t i = 0; i < file.Trailing.size(); i += 32) {
            s += "trailing ";
            for (size_t k = i; k < file.Trailing.size() && k < i + 32; ++k) {
                s += hex[file.Trailing[k] >> 4];
                s += hex[file.Trailing[k] & 0xF];
            }
            s += "\n";
        }
    }
    for (size_t i = first; i < first + count && i < file.Levels.size(); ++i) {
        s += "\n";
        printTrack(s, file.Levels[i], i < file.AllStars.size() ? file.AllStars[i] : 0,
                   i < file.Index.size() ? file.Index[i].Reserved : 0, i + 1);
    }
    return s;
}

std::string DescribeTrack(const LevelRecord& r, int32_t number) {
    auto plural = [](size_t n, const char* word) {
        return std::to_string(n) + " " + word + (n == 1 ? "" : "s");
    };
    return "track " + std::to_string(number) + ": " + plural(r.Blocks.size(), "block") + ", " +
           plural(r.Platforms.size(), "platform") + ", " + plural(r.Ramps.size(), "ramp") + ", " +
           plural(r.Stars.size(), "star") + ", " + plural(r.TextureNames.size() - 1, "texture") +
           ", gravity " + FormatFloat(r.Settings.FileGravity) + " (" + FormatFloat(r.Settings.Gravity) +
           " a frame)";
}

}  // namespace qb
