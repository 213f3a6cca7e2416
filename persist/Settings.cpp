#include "persist/Settings.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <unordered_map>

#include "persist/AtomicFile.h"

namespace qb {

namespace {

std::string trim(const std::string& s) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; };
    size_t b = 0, e = s.size();
    while (b < e && blank(s[b])) ++b;
    while (e > b && blank(s[e - 1])) --e;
    return s.substr(b, e - b);
}

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// Length of the UTF-8 sequence starting at s[i], or 0 when it is not one
// (overlong forms, surrogates and values past U+10FFFF included).
size_t utf8Length(const std::string& s, size_t i) {
    const auto b = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char c = b(i);
    if (c < 0x80) return 1;
    size_t n;
    uint32_t cp;
    if ((c & 0xE0) == 0xC0) {
        n = 2, cp = c & 0x1F;
    } else if ((c & 0xF0) == 0xE0) {
        n = 3, cp = c & 0x0F;
    } else if ((c & 0xF8) == 0xF0) {
        n = 4, cp = c & 0x07;
    } else {
        return 0;
    }
    if (i + n > s.size()) return 0;
    for (size_t k = 1; k < n; ++k) {
        if ((b(i + k) & 0xC0) != 0x80) return 0;
        cp = cp << 6 | (b(i + k) & 0x3F);
    }
    static constexpr uint32_t least[5] = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < least[n] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return n;
}

bool isUtf8(const std::string& s) {
    for (size_t i = 0; i < s.size();) {
        const size_t n = utf8Length(s, i);
        if (n == 0) return false;
        i += n;
    }
    return true;
}

// The line with every byte that is not UTF-8 replaced by '?', so that what is
// written back is always text.
std::string asUtf8(const std::string& s) {
    std::string r;
    for (size_t i = 0; i < s.size();) {
        const size_t n = utf8Length(s, i);
        if (n == 0) {
            r += '?';
            ++i;
        } else {
            r.append(s, i, n);
            i += n;
        }
    }
    return r;
}

std::string fileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

}  // namespace

Settings::Settings(std::string path, Reporter report) : path_(std::move(path)), report_(std::move(report)) {}

bool Settings::IsValidKey(const std::string& key) {
    if (key.empty()) return false;
    return std::all_of(key.begin(), key.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '_' || c == '-';
    });
}

void Settings::report(const std::string& what) const {
    problems_.push_back(what);
    if (report_) report_(what);
}

void Settings::reportValue(const std::string& key, const std::string& value, const char* expected) const {
    if (!reportedKeys_.insert(key).second) return;
    report(fileName(path_) + ": \"" + key + " = " + value + "\" is not " + expected +
           "; the default is used");
}

void Settings::Load() {
    const std::vector<unsigned char> bytes = ReadWholeFile(path_);
    LoadText(std::string(bytes.begin(), bytes.end()));
}

void Settings::LoadText(std::string text) {
    lines_.clear();
    problems_.clear();
    reportedKeys_.clear();
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);

    std::unordered_map<std::string, size_t> lineOf;
    for (size_t i = 0; i < lines_.size(); ++i)
        if (!lines_[i].key.empty()) lineOf[lines_[i].key] = i;
    size_t start = 0;
    int number = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        const std::string raw = text.substr(start, end - start);
        start = end + 1;
        ++number;
        const std::string t = trim(raw);
        const std::string where = fileName(path_) + " line " + std::to_string(number);
        if (t.empty() || t[0] == '#') {
            std::string keep = raw;
            while (!keep.empty() && keep.back() == '\r') keep.pop_back();
            lines_.push_back({"", "", asUtf8(keep)});
            continue;
        }
        const size_t eq = t.find('=');
        const std::string key = eq == std::string::npos ? "" : trim(t.substr(0, eq));
        if (!isUtf8(t) || !IsValidKey(key)) {
            report(where + " is not \"key = value\" text and is ignored");
            // Kept as a comment so nothing the player wrote is lost.
            lines_.push_back({"", "", "# " + asUtf8(t)});
            continue;
        }
        // Found by name, not by walking every earlier line: a long file of
        // repeats would otherwise cost its length squared.
        const auto seen = lineOf.find(key);
        if (seen != lineOf.end()) {
            Line& earlier = lines_[seen->second];
            report(where + " sets \"" + key + "\" again; this later line counts");
            earlier.text = "# " + earlier.key + " = " + earlier.value;
            earlier.key.clear();
        }
        lineOf[key] = lines_.size();
        lines_.push_back({key, trim(t.substr(eq + 1)), ""});
    }
}

std::string Settings::Text() const {
    std::string out;
    for (const Line& l : lines_) out += (l.key.empty() ? l.text : l.key + " = " + l.value) + "\n";
    return out;
}

bool Settings::Save() const {
    const std::string out = Text();
    return WriteFileAtomically(path_, std::vector<unsigned char>(out.begin(), out.end()));
}

const Settings::Line* Settings::find(const std::string& key) const {
    for (const Line& l : lines_)
        if (!l.key.empty() && l.key == key) return &l;
    return nullptr;
}

bool Settings::Has(const std::string& key) const {
    return find(key) != nullptr;
}

bool Settings::GetBool(const std::string& key, bool fallback) const {
    const Line* l = find(key);
    if (!l) return fallback;
    const std::string v = lower(l->value);
    if (v == "true" || v == "yes" || v == "on" || v == "1") return true;
    if (v == "false" || v == "no" || v == "off" || v == "0") return false;
    reportValue(key, l->value, "true or false");
    return fallback;
}

int32_t Settings::GetInt(const std::string& key, int32_t fallback, int32_t lo, int32_t hi) const {
    const Line* l = find(key);
    if (!l) return fallback;
    const std::string& v = l->value;
    const char* first = v.data();
    if (!v.empty() && v[0] == '+') ++first;
    int64_t n = 0;
    const auto [end, ec] = std::from_chars(first, v.data() + v.size(), n);
    if (ec != std::errc() || end != v.data() + v.size() || v.empty() || n < lo || n > hi) {
        reportValue(key, v,
                    ("a whole number from " + std::to_string(lo) + " to " + std::to_string(hi)).c_str());
        return fallback;
    }
    return static_cast<int32_t>(n);
}

std::string Settings::GetString(const std::string& key, const std::string& fallback) const {
    const Line* l = find(key);
    return l ? l->value : fallback;
}

void Settings::SetString(const std::string& key, const std::string& value) {
    if (!IsValidKey(key)) return;
    std::string v = value;
    std::replace(v.begin(), v.end(), '\n', ' ');
    v = asUtf8(trim(v));
    reportedKeys_.erase(key);
    for (Line& l : lines_) {
        if (l.key == key) {
            l.value = v;
            return;
        }
    }
    lines_.push_back({key, v, ""});
}

void Settings::SetBool(const std::string& key, bool value) {
    SetString(key, value ? "true" : "false");
}

void Settings::SetInt(const std::string& key, int32_t value) {
    SetString(key, std::to_string(value));
}

void Settings::Erase(const std::string& key) {
    std::erase_if(lines_, [&](const Line& l) { return !l.key.empty() && l.key == key; });
    reportedKeys_.erase(key);
}

}  // namespace qb
