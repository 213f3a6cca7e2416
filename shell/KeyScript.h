// Key scripts for the headless simulator: one step per line, "COUNT KEYS",
// holding KEYS for COUNT play frames. KEYS is "-" (nothing held) or key
// names joined by "+"; blank lines and "#" comments are skipped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

struct KeyStep {
    int64_t count = 0;
    std::vector<uint8_t> keys;  // key codes held during the step
};

struct KeyScript {
    std::vector<KeyStep> steps;
    int64_t TotalFrames() const;
    // The keys held in frame `frame` (0-based), or nullptr past the end.
    const std::vector<uint8_t>* KeysAt(int64_t frame) const;
};

// The names a script may use, in the order they are listed for the user:
// Up Down Left Right Space Return Esc LShift RShift LCtrl RCtrl H.
const std::vector<std::pair<std::string, uint8_t>>& KeyScriptNames();

// False with a message naming the line when the text is not a valid script.
bool ParseKeyScript(std::string_view text, KeyScript& out, std::string& error);
// Reads and parses a script file.
bool LoadKeyScript(const std::string& path, KeyScript& out, std::string& error);

}  // namespace qb
