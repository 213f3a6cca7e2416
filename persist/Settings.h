// settings.cfg: the player's choices that do not fit the 12 bytes of
// options.dat, as UTF-8 text lines "key = value" with '#' comments.
//
// Each feature reads its own keys with a typed getter and its own default, so
// adding a setting needs no change here. Lines the game does not know (a newer
// version's keys, the player's comments) are written back as they were read.
// A missing file is a first start: every key has its default. A damaged line
// or value is reported once through the reporter (the game sends it to
// Debug.txt) and that key reads as its default.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace qb {

class Settings {
public:
    using Reporter = std::function<void(const std::string&)>;

    explicit Settings(std::string path, Reporter report = {});

    // Reads the file (replacing what was held). A missing file is no problem.
    void Load();
    // Writes every line back through a temporary file and a rename.
    bool Save() const;
    // The same from and to the file's text.
    void LoadText(std::string text);
    std::string Text() const;

    // A value that is absent or does not read as the type gives `fallback`.
    // Booleans are true/false (also yes/no, on/off, 1/0); integers are decimal
    // and must lie in [lo, hi].
    bool GetBool(const std::string& key, bool fallback) const;
    int32_t GetInt(const std::string& key, int32_t fallback, int32_t lo = INT32_MIN,
                   int32_t hi = INT32_MAX) const;
    std::string GetString(const std::string& key, const std::string& fallback) const;
    bool Has(const std::string& key) const;

    // Keys are letters, digits, '.', '_' and '-'; a bad key is ignored.
    // Values lose surrounding blanks; line breaks become spaces.
    void SetBool(const std::string& key, bool value);
    void SetInt(const std::string& key, int32_t value);
    void SetString(const std::string& key, const std::string& value);
    void Erase(const std::string& key);

    const std::string& path() const { return path_; }
    // Every problem reported since the last Load, in order.
    const std::vector<std::string>& problems() const { return problems_; }

    static bool IsValidKey(const std::string& key);

private:
    struct Line {
        std::string key;    // empty: a comment, a blank line or a damaged line
        std::string value;  // for key lines
        std::string text;   // the line as it is written back when it holds no key
    };

    const Line* find(const std::string& key) const;
    void report(const std::string& what) const;
    void reportValue(const std::string& key, const std::string& value, const char* expected) const;

    std::string path_;
    Reporter report_;
    std::vector<Line> lines_;
    mutable std::vector<std::string> problems_;
    mutable std::set<std::string> reportedKeys_;  // each damaged value is told once
};

}  // namespace qb
