// Reading track sources: one line at a time, every problem reported with
// its line, the rest of the file still checked.
#include <cmath>
#include <cstring>
#include <map>
#include <memory>

#include "level/ByteIO.h"
#include "level/TrackSource.h"
#include "level/TrackSourceWords.h"

namespace qb {

using namespace tracktext;

namespace {

struct Token {
    std::string text;
    bool quoted = false;
};

// Thrown for one bad line; the parser reports it and goes on.
struct LineError {
    std::string message;
};

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::vector<Token> tokenize(std::string_view line) {
    std::vector<Token> out;
    size_t i = 0;
    while (i < line.size()) {
        const char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            ++i;
        } else if (c == '#') {
            break;
        } else if (c == '"') {
            Token t{std::string(), true};
            ++i;
            for (;;) {
                if (i >= line.size()) throw LineError{"unterminated string"};
                const char d = line[i++];
                if (d == '"') break;
                if (d != '\\') {
                    t.text += d;
                    continue;
                }
                if (i >= line.size()) throw LineError{"unterminated string"};
                const char e = line[i++];
                if (e == '\\' || e == '"') {
                    t.text += e;
                } else if (e == 'x' && i + 1 < line.size() && hexValue(line[i]) >= 0 &&
                           hexValue(line[i + 1]) >= 0) {
                    t.text += static_cast<char>(hexValue(line[i]) * 16 + hexValue(line[i + 1]));
                    i += 2;
                } else {
                    throw LineError{std::string("unknown escape \\") + e + " in string"};
                }
            }
            out.push_back(std::move(t));
        } else {
            Token t;
            while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r' &&
                   line[i] != '#' && line[i] != '"')
                t.text += line[i++];
            out.push_back(std::move(t));
        }
    }
    return out;
}

class Parser {
public:
    Parser(const std::string& file, TrackSource& out, std::vector<SourceError>& errors)
        : file_(file), out_(out), errors_(errors) {}

    void line(int number, std::string_view text) {
        line_ = number;
        try {
            std::vector<Token> t = tokenize(text);
            if (!t.empty()) statement(t);
        } catch (const LineError& e) {
            report(e.message);
        }
    }

    void finish() { endTrack(); }

private:
    struct Track {
        LevelRecord rec;
        int16_t allStars = 0;
        uint32_t reserved = 0;
        std::map<std::string, int16_t, std::less<>> aliases;
        bool hasCount = false;
        int firstLine = 0;
        bool broken = false;
    };

    void report(const std::string& message) {
        errors_.push_back(SourceError{file_, line_, message});
        if (track_) track_->broken = true;
    }

    static int64_t integer(const std::vector<Token>& t, size_t i, int64_t lo, int64_t hi, const char* what) {
        int64_t v;
        if (i >= t.size() || t[i].quoted || !ParseInteger(t[i].text, lo, hi, v))
            throw LineError{std::string(what) + " must be a whole number from " + std::to_string(lo) +
                            " to " + std::to_string(hi)};
        return v;
    }
    static float number(const std::vector<Token>& t, size_t i, const char* what) {
        float v;
        if (i >= t.size() || t[i].quoted || !ParseFloat(t[i].text, v))
            throw LineError{std::string(what) + " must be a number"};
        return v;
    }
    static std::string text(const std::vector<Token>& t, size_t i, size_t maxLength, const char* what) {
        if (i >= t.size()) throw LineError{std::string(what) + " is missing"};
        if (t[i].text.size() > maxLength)
            throw LineError{std::string(what) + " is longer than " + std::to_string(maxLength) +
                            " characters"};
        return t[i].text;
    }
    static int16_t flag(const std::vector<Token>& t, size_t i, const char* what) {
        if (i < t.size() && !t[i].quoted && t[i].text == "yes") return -1;
        if (i < t.size() && !t[i].quoted && t[i].text == "no") return 0;
        return static_cast<int16_t>(integer(t, i, INT16_MIN, INT16_MAX, what));
    }
    static void noMore(const std::vector<Token>& t, size_t n) {
        if (t.size() > n) throw LineError{"unexpected '" + t[n].text + "'"};
    }

    Track& track(const std::string& word) {
        if (!track_) throw LineError{"'" + word + "' outside a track (start one with 'track')"};
        return *track_;
    }

    void statement(const std::vector<Token>& t) {
        const std::string& w = t[0].text;
        if (t[0].quoted) throw LineError{"a line must start with a word, not a string"};
        if (w == "track") {
            endTrack();
            track_ = std::make_unique<Track>();
            track_->firstLine = line_;
            track_->rec.TextureNames.assign(1, std::string());
            track_->rec.Settings.FileGravity = 10;
        } else if (w == "zones") {
            noMore(t, 7);
            for (size_t i = 0; i < 6; ++i) out_.Tracks.ZoneComplete[i] = flag(t, i + 1, "a zone flag");
            out_.HasZones = true;
        } else if (w == "trailing") {
            for (size_t i = 1; i < t.size(); ++i) {
                const std::string& h = t[i].text;
                if (t[i].quoted || h.size() % 2 != 0)
                    throw LineError{"trailing bytes must be pairs of hex digits"};
                for (size_t k = 0; k < h.size(); k += 2) {
                    const int a = hexValue(h[k]), b = hexValue(h[k + 1]);
                    if (a < 0 || b < 0) throw LineError{"trailing bytes must be pairs of hex digits"};
                    out_.Tracks.Trailing.push_back(static_cast<uint8_t>(a * 16 + b));
                }
            }
            out_.HasTrailing = true;
        } else if (w == "gravity") {
            noMore(t, 2);
            track(w).rec.Settings.FileGravity = number(t, 1, "the gravity");
        } else if (w == "background") {
            noMore(t, 2);
            track(w).rec.Background = text(t, 1, 50, "the background name");
            track_->rec.Background.resize(50, ' ');
        } else if (w == "allstars") {
            noMore(t, 2);
            track(w).allStars = flag(t, 1, "the all-stars flag");
        } else if (w == "lead") {
            noMore(t, 2);
            track(w).rec.LeadByte = static_cast<uint8_t>(integer(t, 1, 0, 255, "the lead byte"));
        } else if (w == "reserved") {
            noMore(t, 2);
            track(w).reserved =
                static_cast<uint32_t>(integer(t, 1, INT32_MIN, UINT32_MAX, "the reserved value"));
        } else if (w == "settings") {
            noMore(t, 6);
            Track& k = track(w);
            k.rec.Settings.SettingsText = text(t, 1, 32767, "the settings text");
            for (size_t i = 0; i < 4; ++i)
                k.rec.Settings.Values[i] =
                    static_cast<uint32_t>(integer(t, i + 2, INT32_MIN, UINT32_MAX, "a settings value"));
        } else if (w == "time") {
            noMore(t, 5);
            Track& k = track(w);
            const auto place = static_cast<size_t>(integer(t, 1, 1, 3, "the place"));
            std::string name = text(t, 2, 15, "the name");
            name.resize(15, ' ');
            k.rec.Times.Names[place - 1] = name;
            k.rec.Times.Seconds[place - 1] =
                static_cast<int32_t>(integer(t, 3, INT32_MIN, INT32_MAX, "the seconds"));
            k.rec.Times.Hundredths[place - 1] =
                static_cast<int32_t>(integer(t, 4, INT32_MIN, INT32_MAX, "the hundredths"));
        } else if (w == "texture") {
            textureLine(t);
        } else if (w == "texturecount") {
            textureCountLine(t);
        } else if (w == "block" || w == "platform" || w == "ramp" || w == "star") {
            objectLine(t);
        } else {
            throw LineError{"unknown word '" + w + "'"};
        }
    }

    void textureLine(const std::vector<Token>& t) {
        Track& k = track("texture");
        if (!k.rec.Blocks.empty() || !k.rec.Platforms.empty() || !k.rec.Ramps.empty())
            throw LineError{"textures must be listed before the objects that use them"};
        if (k.rec.TextureNames.size() > 32767) throw LineError{"too many textures"};
        const auto index = static_cast<int16_t>(k.rec.TextureNames.size());
        if (t.size() == 2) {
            k.rec.TextureNames.push_back(text(t, 1, 32767, "the texture file"));
            return;
        }
        noMore(t, 3);
        if (t.size() < 2 || t[1].quoted || !IsIdentifier(t[1].text) || IsReservedWord(t[1].text))
            throw LineError{
                "a texture name must be a word of letters, digits, '_' and '-', not a reserved word"};
        if (k.aliases.count(t[1].text)) throw LineError{"texture name '" + t[1].text + "' is used twice"};
        k.aliases[t[1].text] = index;
        k.rec.TextureNames.push_back(text(t, 2, 32767, "the texture file"));
    }

    void textureCountLine(const std::vector<Token>& t) {
        noMore(t, 3);
        Track& k = track("texturecount");
        if (t.size() < 3) throw LineError{"texturecount needs a type and a value"};
        int64_t code = -1;
        for (const auto& n : kTypeNames)
            if (n.name == t[1].text) code = n.code;
        if (code < 0 && !ParseInteger(t[1].text, 0, 65535, code))
            throw LineError{"unknown type '" + t[1].text + "'"};
        TaggedNumber& c = k.rec.TextureCount;
        c.VarType = static_cast<uint16_t>(code);
        const size_t width = TaggedNumberWidth(c.VarType);
        if (width == 0) throw LineError{"type " + t[1].text + " is not a number type"};
        std::vector<uint8_t> raw;
        ByteWriter bw(raw);
        const std::string& v = t[2].text;
        if (code == 4) {
            bw.F32(number(t, 2, "the count"));
        } else if (code == 5) {
            double d;
            if (!ParseDouble(v, d)) throw LineError{"the count must be a number"};
            uint64_t bits;
            std::memcpy(&bits, &d, 8);
            bw.U32(static_cast<uint32_t>(bits));
            bw.U32(static_cast<uint32_t>(bits >> 32));
        } else {
            const bool isUnsigned = code == 17 || code == 18 || code == 19 || code == 21 || code == 23;
            uint64_t bits;
            if (code == 21) {
                if (!ParseUnsigned64(v, bits)) throw LineError{"the count must be a whole number"};
            } else {
                const int64_t lo =
                    isUnsigned ? 0 : (width == 8 ? INT64_MIN : -(int64_t(1) << (8 * width - 1)));
                const int64_t hi =
                    width == 8 ? INT64_MAX : (int64_t(1) << (8 * width - (isUnsigned ? 0 : 1))) - 1;
                bits = static_cast<uint64_t>(integer(t, 2, lo, hi, "the count"));
            }
            for (size_t i = 0; i < width; ++i) raw.push_back(static_cast<uint8_t>(bits >> (8 * i)));
        }
        c.Raw = raw;
        c.Value = TaggedNumberValue(c.VarType, raw.data());
        k.hasCount = true;
    }

    int16_t textureRef(Track& k, const Token& tok) const {
        if (!tok.quoted) {
            auto it = k.aliases.find(tok.text);
            if (it != k.aliases.end()) return it->second;
            int64_t v;
            if (ParseInteger(tok.text, INT16_MIN, INT16_MAX, v)) {
                if (v < 1 || v >= static_cast<int64_t>(k.rec.TextureNames.size()))
                    throw LineError{"texture " + tok.text + " is not one of the " +
                                    std::to_string(k.rec.TextureNames.size() - 1) + " listed above"};
                return static_cast<int16_t>(v);
            }
        }
        return 0;
    }

    // Block, platform, ramp or star: six numbers (three for a star), then
    // options in any order.
    void objectLine(const std::vector<Token>& t) {
        const std::string& w = t[0].text;
        Track& k = track(w);
        const bool star = w == "star", ramp = w == "ramp", platform = w == "platform";
        const size_t numbers = star ? 3 : 6;
        float v[6] = {};
        for (size_t i = 0; i < numbers; ++i) v[i] = number(t, i + 1, "a position or size");
        if (star) {
            noMore(t, 4);
            k.rec.Stars.push_back(StarRecord{v[0], v[1], v[2]});
            return;
        }
        if (k.rec.TextureNames.size() < 2) throw LineError{"list a texture before the first " + w};
        const size_t faces = ramp ? 2 : 4;
        int16_t tex[4] = {1, 1, 1, 1};
        int64_t top = 0, side = 0, action = 0, dir = 0, speed = 0, dist = 0, loop = 0, rot = 0;
        for (size_t i = numbers + 1; i < t.size(); ++i) {
            const std::string& o = t[i].text;
            auto value = [&](int64_t lo, int64_t hi) {
                return integer(t, ++i, lo, hi, ("the value of " + o).c_str());
            };
            if (t[i].quoted) throw LineError{"unexpected string " + Quote(o)};
            if (o == "tex") {
                size_t n = 0;
                int16_t got[4];
                while (n < faces && i + 1 < t.size()) {
                    const int16_t r = textureRef(k, t[i + 1]);
                    if (r == 0) break;
                    got[n++] = r;
                    ++i;
                }
                if (n != 1 && n != faces)
                    throw LineError{"'tex' takes one texture or " + std::to_string(faces) +
                                    " (one per face)"};
                for (size_t f = 0; f < faces; ++f) tex[f] = got[n == 1 ? 0 : f];
            } else if (o == "scale" && !ramp) {
                top = value(0, 255);
                side = value(0, 255);
            } else if (o == "action" && !ramp) {
                action = value(0, 255);
            } else if (o == "rot" && ramp) {
                rot = value(0, 255);
            } else if (platform && o == "dir") {
                if (i + 1 < t.size() && t[i + 1].text == "left")
                    dir = 2, ++i;
                else if (i + 1 < t.size() && t[i + 1].text == "right")
                    dir = 3, ++i;
                else if (i + 1 < t.size() && t[i + 1].text == "still")
                    dir = 0, ++i;
                else
                    dir = value(0, 255);
            } else if (platform && o == "speed") {
                speed = value(0, 255);
            } else if (platform && o == "dist") {
                dist = value(0, 255);
            } else if (platform && o == "loop") {
                loop = 1;
            } else if (platform && o == "noloop") {
                loop = 0;
            } else if (platform && o == "loopflag") {
                loop = value(0, 255);
            } else {
                bool kind = false;
                for (size_t a = 0; a < kKindNames.size() && !ramp; ++a)
                    if (kKindNames[a] == o) action = static_cast<int64_t>(a), kind = true;
                if (!kind) throw LineError{"unknown " + w + " option '" + o + "'"};
            }
        }
        if (ramp) {
            RampRecord r{v[0], v[1], v[2], v[3], v[4], v[5], tex[0], tex[1], static_cast<uint8_t>(rot)};
            k.rec.Ramps.push_back(r);
            return;
        }
        BlockRecord b{v[0],
                      v[1],
                      v[2],
                      v[3],
                      v[4],
                      v[5],
                      tex[0],
                      tex[1],
                      tex[2],
                      tex[3],
                      static_cast<uint8_t>(top),
                      static_cast<uint8_t>(side),
                      static_cast<uint8_t>(action)};
        if (!platform) {
            k.rec.Blocks.push_back(b);
            return;
        }
        MovingPlatformRecord m{b.X,
                               b.Y,
                               b.Z,
                               b.scaleX,
                               b.scaleY,
                               b.scalez,
                               b.TextureA,
                               b.TextureB,
                               b.TextureC,
                               b.TextureD,
                               b.ScaleTextureTop,
                               b.ScaleTextureSide,
                               b.ActionCode,
                               static_cast<uint8_t>(speed),
                               static_cast<uint8_t>(dir),
                               static_cast<uint8_t>(dist),
                               static_cast<uint8_t>(loop)};
        k.rec.Platforms.push_back(m);
    }

    void endTrack() {
        if (!track_) return;
        Track& k = *track_;
        LevelRecord& r = k.rec;
        const int current = line_;
        line_ = k.firstLine;
        const auto textures = static_cast<int64_t>(r.TextureNames.size()) - 1;
        if (textures < 1) report("the track lists no texture");
        if (r.Blocks.empty()) report("the track has no block");
        if (k.hasCount) {
            const double v = r.TextureCount.Value;
            if (!std::isfinite(v) || std::nearbyint(v) != static_cast<double>(textures))
                report("texturecount " + FormatDouble(v) + " does not round to the " +
                       std::to_string(textures) + " textures listed");
        } else {
            r.TextureCount.VarType = textures > INT16_MAX ? 3 : 2;
            r.TextureCount.Raw.clear();
            ByteWriter bw(r.TextureCount.Raw);
            if (textures > INT16_MAX)
                bw.I32(static_cast<int32_t>(textures));
            else
                bw.I16(static_cast<int16_t>(textures));
            r.TextureCount.Value = static_cast<double>(textures);
        }
        r.BlockUpper = static_cast<int32_t>(r.Blocks.size()) - 1;
        r.PlatformUpper = static_cast<int32_t>(r.Platforms.size()) - 1;
        r.RampUpper = static_cast<int32_t>(r.Ramps.size()) - 1;
        r.StarUpper = static_cast<int32_t>(r.Stars.size()) - 1;
        r.Settings.Gravity = GravityFromFile(r.Settings.FileGravity);
        if (!k.broken) {
            out_.Tracks.Levels.push_back(std::move(r));
            out_.Tracks.AllStars.push_back(k.allStars);
            out_.Tracks.Index.push_back(LevelIndexEntry{0, k.reserved});
        }
        track_.reset();
        line_ = current;
    }

    const std::string& file_;
    TrackSource& out_;
    std::vector<SourceError>& errors_;
    std::unique_ptr<Track> track_;
    int line_ = 0;
};

}  // namespace

bool ParseTrackSource(std::string_view text, const std::string& fileName, TrackSource& out,
                      std::vector<SourceError>& errors) {
    out = TrackSource{};
    const size_t before = errors.size();
    Parser p(fileName, out, errors);
    int number = 0;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        p.line(++number, text.substr(start, end - start));
        start = end + 1;
    }
    p.finish();
    return errors.size() == before;
}

LevelFile JoinTrackSources(const std::vector<TrackSource>& sources) {
    LevelFile all;
    for (const auto& s : sources) {
        all.Levels.insert(all.Levels.end(), s.Tracks.Levels.begin(), s.Tracks.Levels.end());
        all.AllStars.insert(all.AllStars.end(), s.Tracks.AllStars.begin(), s.Tracks.AllStars.end());
        all.Index.insert(all.Index.end(), s.Tracks.Index.begin(), s.Tracks.Index.end());
        if (s.HasZones) all.ZoneComplete = s.Tracks.ZoneComplete;
        if (s.HasTrailing) all.Trailing = s.Tracks.Trailing;
    }
    return all;
}

}  // namespace qb
