#include "level/TrackSourceWords.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace qb::tracktext {

namespace {
constexpr std::array<std::string_view, 22> kReserved{
    "tex",      "scale", "action",  "dir",   "speed",  "dist", "loop",  "noloop",
    "loopflag", "rot",   "left",    "right", "yes",    "no",   "plain", "finish",
    "bounce",   "ice",   "falling", "turbo", "deadly", "still"};

bool parseHexBits(std::string_view s, size_t digits, uint64_t& bits) {
    if (s.size() != digits + 2 || s[0] != '0' || (s[1] != 'x' && s[1] != 'X')) return false;
    const char* b = s.data() + 2;
    const char* e = s.data() + s.size();
    auto r = std::from_chars(b, e, bits, 16);
    return r.ec == std::errc() && r.ptr == e;
}

std::string hexBits(uint64_t bits, int digits) {
    static const char* hex = "0123456789abcdef";
    std::string s = "0x";
    for (int i = digits - 1; i >= 0; --i) s += hex[(bits >> (4 * i)) & 0xF];
    return s;
}
}  // namespace

bool IsReservedWord(std::string_view w) {
    for (auto r : kReserved)
        if (r == w) return true;
    return false;
}

bool IsIdentifier(std::string_view w) {
    if (w.empty()) return false;
    auto alpha = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
    if (!alpha(w[0])) return false;
    for (char c : w)
        if (!alpha(c) && !(c >= '0' && c <= '9') && c != '-') return false;
    return true;
}

std::string FormatFloat(float f) {
    if (!std::isfinite(f)) {
        uint32_t bits;
        std::memcpy(&bits, &f, 4);
        return hexBits(bits, 8);
    }
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, f);
    return std::string(buf, r.ptr);
}

std::string FormatDouble(double d) {
    if (!std::isfinite(d)) {
        uint64_t bits;
        std::memcpy(&bits, &d, 8);
        return hexBits(bits, 16);
    }
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, d);
    return std::string(buf, r.ptr);
}

bool ParseFloat(std::string_view s, float& out) {
    uint64_t bits;
    if (parseHexBits(s, 8, bits)) {
        const auto b32 = static_cast<uint32_t>(bits);
        std::memcpy(&out, &b32, 4);
        return true;
    }
    if (!s.empty() && s[0] == '+') s.remove_prefix(1);
    const char* e = s.data() + s.size();
    auto r = std::from_chars(s.data(), e, out, std::chars_format::general);
    return r.ec == std::errc() && r.ptr == e && std::isfinite(out);
}

bool ParseDouble(std::string_view s, double& out) {
    uint64_t bits;
    if (parseHexBits(s, 16, bits)) {
        std::memcpy(&out, &bits, 8);
        return true;
    }
    if (!s.empty() && s[0] == '+') s.remove_prefix(1);
    const char* e = s.data() + s.size();
    auto r = std::from_chars(s.data(), e, out, std::chars_format::general);
    return r.ec == std::errc() && r.ptr == e && std::isfinite(out);
}

bool ParseInteger(std::string_view s, int64_t lo, int64_t hi, int64_t& out) {
    bool negative = false;
    if (!s.empty() && (s[0] == '-' || s[0] == '+')) {
        negative = s[0] == '-';
        s.remove_prefix(1);
    }
    int base = 10;
    if (s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) {
        base = 16;
        s.remove_prefix(2);
    }
    if (s.empty() || s[0] == '-' || s[0] == '+') return false;
    uint64_t magnitude;
    const char* e = s.data() + s.size();
    auto r = std::from_chars(s.data(), e, magnitude, base);
    if (r.ec != std::errc() || r.ptr != e) return false;
    if (negative) {
        if (magnitude > static_cast<uint64_t>(INT64_MAX) + 1) return false;
        out =
            magnitude == static_cast<uint64_t>(INT64_MAX) + 1 ? INT64_MIN : -static_cast<int64_t>(magnitude);
    } else {
        if (magnitude > static_cast<uint64_t>(INT64_MAX)) return false;
        out = static_cast<int64_t>(magnitude);
    }
    return out >= lo && out <= hi;
}

bool ParseUnsigned64(std::string_view s, uint64_t& out) {
    int base = 10;
    if (s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) {
        base = 16;
        s.remove_prefix(2);
    }
    if (s.empty() || s[0] == '-' || s[0] == '+') return false;
    const char* e = s.data() + s.size();
    auto r = std::from_chars(s.data(), e, out, base);
    return r.ec == std::errc() && r.ptr == e;
}

std::string Quote(std::string_view raw) {
    static const char* hex = "0123456789abcdef";
    std::string s = "\"";
    for (char ch : raw) {
        const auto c = static_cast<unsigned char>(ch);
        if (c == '"' || c == '\\') {
            s += '\\';
            s += ch;
        } else if (c < 0x20 || c >= 0x7F) {
            s += "\\x";
            s += hex[c >> 4];
            s += hex[c & 0xF];
        } else {
            s += ch;
        }
    }
    return s + "\"";
}

}  // namespace qb::tracktext
