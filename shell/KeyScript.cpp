#include "shell/KeyScript.h"

#include <fstream>
#include <sstream>

#include "platform/KeyboardDevice.h"

namespace qb {

namespace {
constexpr int64_t LargestCount = 100000000;  // a million seconds of play

std::string_view TrimView(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t' || s.front() == '\r')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
    return s;
}

std::vector<std::string_view> Words(std::string_view s) {
    std::vector<std::string_view> out;
    size_t i = 0;
    while (i < s.size()) {
        while (i < s.size() && (s[i] == ' ' || s[i] == '\t')) ++i;
        const size_t start = i;
        while (i < s.size() && s[i] != ' ' && s[i] != '\t') ++i;
        if (i > start) out.push_back(s.substr(start, i - start));
    }
    return out;
}

std::string NameList() {
    std::string list;
    for (const auto& [name, code] : KeyScriptNames()) list += (list.empty() ? "" : " ") + name;
    return list;
}
}  // namespace

int64_t KeyScript::TotalFrames() const {
    int64_t total = 0;
    for (const KeyStep& s : steps) total += s.count;
    return total;
}

const std::vector<uint8_t>* KeyScript::KeysAt(int64_t frame) const {
    for (const KeyStep& s : steps) {
        if (frame < s.count) return &s.keys;
        frame -= s.count;
    }
    return nullptr;
}

const std::vector<std::pair<std::string, uint8_t>>& KeyScriptNames() {
    static const std::vector<std::pair<std::string, uint8_t>> names{
        {"Up", DIK_UP},         {"Down", DIK_DOWN},      {"Left", DIK_LEFT},      {"Right", DIK_RIGHT},
        {"Space", DIK_SPACE},   {"Return", DIK_RETURN},  {"Esc", DIK_ESCAPE},     {"LShift", DIK_LSHIFT},
        {"RShift", DIK_RSHIFT}, {"LCtrl", DIK_LCONTROL}, {"RCtrl", DIK_RCONTROL}, {"H", DIK_H}};
    return names;
}

bool ParseKeyScript(std::string_view text, KeyScript& out, std::string& error) {
    out.steps.clear();
    int lineNumber = 0;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        ++lineNumber;
        const std::string where = "line " + std::to_string(lineNumber) + ": ";
        if (const size_t hash = line.find('#'); hash != std::string_view::npos) line = line.substr(0, hash);
        line = TrimView(line);
        if (line.empty()) continue;
        const std::vector<std::string_view> words = Words(line);
        if (words.size() != 2) {
            error = where + "expected \"COUNT KEYS\", found \"" + std::string(line) + "\"";
            return false;
        }
        KeyStep step;
        for (char c : words[0]) {
            if (c < '0' || c > '9') {
                error = where + "the frame count \"" + std::string(words[0]) + "\" is not a whole number";
                return false;
            }
            step.count = step.count * 10 + (c - '0');
            if (step.count > LargestCount) {
                error = where + "the frame count " + std::string(words[0]) + " is too large";
                return false;
            }
        }
        if (step.count < 1) {
            error = where + "the frame count must be at least 1";
            return false;
        }
        if (words[1] != "-") {
            std::string_view keys = words[1];
            while (true) {
                const size_t plus = keys.find('+');
                const std::string_view name = keys.substr(0, plus);
                bool known = false;
                for (const auto& [n, code] : KeyScriptNames())
                    if (name == n) {
                        step.keys.push_back(code);
                        known = true;
                    }
                if (!known) {
                    error = where + "unknown key \"" + std::string(name) + "\" (keys: " + NameList() +
                            ", joined by +, or - for none)";
                    return false;
                }
                if (plus == std::string_view::npos) break;
                keys.remove_prefix(plus + 1);
            }
        }
        out.steps.push_back(std::move(step));
    }
    return true;
}

bool LoadKeyScript(const std::string& path, KeyScript& out, std::string& error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot read the key script " + path;
        return false;
    }
    std::stringstream ss;
    ss << in.rdbuf();
    if (!ParseKeyScript(ss.str(), out, error)) {
        error = path + ": " + error;
        return false;
    }
    return true;
}

}  // namespace qb
