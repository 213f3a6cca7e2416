#include "shell/KeyBindings.h"

#include <algorithm>
#include <sstream>

#include "persist/Settings.h"
#include "platform/KeyboardDevice.h"

namespace qb {

namespace {

struct KeyNamePair {
    uint8_t key;
    const char* name;
};

// The names in settings.cfg and on the Controls screen.
constexpr KeyNamePair Names[] = {
    {DIK_UP, "Up"},
    {DIK_DOWN, "Down"},
    {DIK_LEFT, "Left"},
    {DIK_RIGHT, "Right"},
    {DIK_SPACE, "Space"},
    {DIK_RETURN, "Return"},
    {DIK_ESCAPE, "Esc"},
    {DIK_BACK, "Backspace"},
    {DIK_TAB, "Tab"},
    {DIK_LCONTROL, "LeftCtrl"},
    {DIK_RCONTROL, "RightCtrl"},
    {DIK_LSHIFT, "LeftShift"},
    {DIK_RSHIFT, "RightShift"},
    {DIK_LMENU, "LeftAlt"},
    {DIK_RMENU, "RightAlt"},
    {DIK_A, "A"},
    {DIK_B, "B"},
    {DIK_C, "C"},
    {DIK_D, "D"},
    {DIK_E, "E"},
    {DIK_F, "F"},
    {DIK_G, "G"},
    {DIK_H, "H"},
    {DIK_I, "I"},
    {DIK_J, "J"},
    {DIK_K, "K"},
    {DIK_L, "L"},
    {DIK_M, "M"},
    {DIK_N, "N"},
    {DIK_O, "O"},
    {DIK_P, "P"},
    {DIK_Q, "Q"},
    {DIK_R, "R"},
    {DIK_S, "S"},
    {DIK_T, "T"},
    {DIK_U, "U"},
    {DIK_V, "V"},
    {DIK_W, "W"},
    {DIK_X, "X"},
    {DIK_Y, "Y"},
    {DIK_Z, "Z"},
    {DIK_1, "1"},
    {DIK_2, "2"},
    {DIK_3, "3"},
    {DIK_4, "4"},
    {DIK_5, "5"},
    {DIK_6, "6"},
    {DIK_7, "7"},
    {DIK_8, "8"},
    {DIK_9, "9"},
    {DIK_0, "0"},
    {DIK_MINUS, "Minus"},
    {DIK_EQUALS, "Equals"},
    {DIK_LBRACKET, "LeftBracket"},
    {DIK_RBRACKET, "RightBracket"},
    {DIK_SEMICOLON, "Semicolon"},
    {DIK_APOSTROPHE, "Apostrophe"},
    {DIK_GRAVE, "Grave"},
    {DIK_BACKSLASH, "Backslash"},
    {DIK_COMMA, "Comma"},
    {DIK_PERIOD, "Period"},
    {DIK_SLASH, "Slash"},
    {DIK_CAPITAL, "CapsLock"},
    {DIK_F1, "F1"},
    {DIK_F2, "F2"},
    {DIK_F3, "F3"},
    {DIK_F4, "F4"},
    {DIK_F5, "F5"},
    {DIK_F6, "F6"},
    {DIK_F7, "F7"},
    {DIK_F8, "F8"},
    {DIK_F9, "F9"},
    {DIK_F10, "F10"},
    {DIK_F11, "F11"},
    {DIK_F12, "F12"},
    {DIK_NUMPAD0, "Keypad0"},
    {DIK_NUMPAD1, "Keypad1"},
    {DIK_NUMPAD2, "Keypad2"},
    {DIK_NUMPAD3, "Keypad3"},
    {DIK_NUMPAD4, "Keypad4"},
    {DIK_NUMPAD5, "Keypad5"},
    {DIK_NUMPAD6, "Keypad6"},
    {DIK_NUMPAD7, "Keypad7"},
    {DIK_NUMPAD8, "Keypad8"},
    {DIK_NUMPAD9, "Keypad9"},
    {DIK_NUMPADENTER, "KeypadEnter"},
    {DIK_ADD, "KeypadPlus"},
    {DIK_SUBTRACT, "KeypadMinus"},
    {DIK_MULTIPLY, "KeypadMultiply"},
    {DIK_DIVIDE, "KeypadDivide"},
    {DIK_DECIMAL, "KeypadPeriod"},
    {DIK_HOME, "Home"},
    {DIK_END, "End"},
    {DIK_PRIOR, "PageUp"},
    {DIK_NEXT, "PageDown"},
    {DIK_INSERT, "Insert"},
    {DIK_DELETE, "Delete"},
};

struct ActionInfo {
    const char* title;
    const char* settingsKey;
    std::vector<uint8_t> defaults;
};

const ActionInfo& Info(Action a) {
    static const ActionInfo infos[ActionCount] = {
        {"Accelerate", "keys.accelerate", {DIK_UP}},
        {"Brake", "keys.brake", {DIK_DOWN}},
        {"Left", "keys.left", {DIK_LEFT}},
        {"Right", "keys.right", {DIK_RIGHT}},
        {"Jump", "keys.jump", {DIK_SPACE, DIK_LCONTROL, DIK_RCONTROL, DIK_LSHIFT, DIK_RSHIFT}},
        {"Pause", "keys.pause", {DIK_ESCAPE, DIK_P}},
        {"Quick restart", "keys.restart", {DIK_BACK}},
    };
    return infos[static_cast<size_t>(a)];
}

}  // namespace

const char* KeyBindings::ActionTitle(Action a) {
    return Info(a).title;
}

const char* KeyBindings::SettingsKey(Action a) {
    return Info(a).settingsKey;
}

std::string KeyBindings::KeyName(uint8_t key) {
    for (const KeyNamePair& n : Names)
        if (n.key == key) return n.name;
    return {};
}

int KeyBindings::KeyFromName(const std::string& name) {
    for (const KeyNamePair& n : Names)
        if (name == n.name) return n.key;
    return -1;
}

bool KeyBindings::Bindable(uint8_t key) {
    return key != DIK_ESCAPE && key != DIK_RETURN && !KeyName(key).empty();
}

bool KeyBindings::Held(const uint8_t* state, Action a) const {
    for (uint8_t key : Keys(a))
        if (state[key] == 128) return true;
    return false;
}

int KeyBindings::ActionOf(uint8_t key) const {
    for (int a = 0; a < ActionCount; ++a)
        if (std::find(keys_[a].begin(), keys_[a].end(), key) != keys_[a].end()) return a;
    return -1;
}

void KeyBindings::RestoreDefaults() {
    for (int a = 0; a < ActionCount; ++a) keys_[a] = Info(static_cast<Action>(a)).defaults;
}

bool KeyBindings::IsDefault() const {
    for (int a = 0; a < ActionCount; ++a)
        if (keys_[a] != Info(static_cast<Action>(a)).defaults) return false;
    return true;
}

bool KeyBindings::Rebind(Action a, uint8_t key) {
    if (!Bindable(key)) return false;
    std::vector<uint8_t>& mine = keys_[index(a)];
    const int other = ActionOf(key);
    if (other == static_cast<int>(index(a))) {
        // Already one of its keys: it becomes the only one.
        mine.erase(
            std::remove_if(mine.begin(), mine.end(), [&](uint8_t k) { return k != key && k != DIK_ESCAPE; }),
            mine.end());
        return true;
    }
    // The key this action gives up first (never Esc).
    uint8_t given = 0;
    for (uint8_t k : mine)
        if (k != DIK_ESCAPE) {
            given = k;
            break;
        }
    if (other >= 0) {
        std::vector<uint8_t>& theirs = keys_[static_cast<size_t>(other)];
        for (uint8_t& k : theirs)
            if (k == key) k = given;
        theirs.erase(std::remove(theirs.begin(), theirs.end(), uint8_t{0}), theirs.end());
    }
    const bool keepsEsc = a == Action::Pause;
    mine.clear();
    if (keepsEsc) mine.push_back(DIK_ESCAPE);
    mine.push_back(key);
    return true;
}

void KeyBindings::Load(const Settings& settings, std::string& problem) {
    problem.clear();
    RestoreDefaults();
    std::array<std::vector<uint8_t>, ActionCount> read;
    std::vector<bool> used(256, false);
    for (int a = 0; a < ActionCount && problem.empty(); ++a) {
        const Action action = static_cast<Action>(a);
        const std::string text = settings.GetString(SettingsKey(action), "");
        if (text.empty()) {
            read[a] = Info(action).defaults;
        } else {
            std::istringstream words(text);
            std::string word;
            while (words >> word) {
                const int key = KeyFromName(word);
                if (key < 0 || !Bindable(static_cast<uint8_t>(key))) {
                    problem =
                        std::string(SettingsKey(action)) + ": \"" + word + "\" is not a key that can be used";
                    break;
                }
                read[a].push_back(static_cast<uint8_t>(key));
            }
            if (action == Action::Pause) read[a].insert(read[a].begin(), DIK_ESCAPE);
        }
        for (uint8_t key : read[a]) {
            if (!problem.empty()) break;
            if (used[key])
                problem = std::string(SettingsKey(action)) + ": " + KeyName(key) + " is given twice";
            used[key] = true;
        }
    }
    if (!problem.empty()) {
        problem = "settings.cfg: " + problem + "; the default keys are used";
        return;
    }
    keys_ = read;
}

void KeyBindings::Save(Settings& settings) const {
    const bool defaults = IsDefault();
    for (int a = 0; a < ActionCount; ++a) {
        const Action action = static_cast<Action>(a);
        if (defaults) {
            settings.Erase(SettingsKey(action));
            continue;
        }
        std::string text;
        for (uint8_t key : keys_[a]) {
            if (key == DIK_ESCAPE) continue;
            text += (text.empty() ? "" : " ") + KeyName(key);
        }
        settings.SetString(SettingsKey(action), text);
    }
}

std::string KeyBindings::KeysText(Action a) const {
    const std::vector<uint8_t>& keys = Keys(a);
    auto has = [&](uint8_t k) { return std::find(keys.begin(), keys.end(), k) != keys.end(); };
    std::string text;
    auto add = [&](const std::string& name) { text += (text.empty() ? "" : ", ") + name; };
    for (uint8_t key : keys) {
        // Both Ctrl keys (or Shift, or Alt) read as one.
        const struct {
            uint8_t left, right;
            const char* both;
        } pairs[] = {{DIK_LCONTROL, DIK_RCONTROL, "Ctrl"},
                     {DIK_LSHIFT, DIK_RSHIFT, "Shift"},
                     {DIK_LMENU, DIK_RMENU, "Alt"}};
        bool merged = false;
        for (const auto& p : pairs) {
            if ((key == p.left || key == p.right) && has(p.left) && has(p.right)) {
                if (key == p.left) add(p.both);
                merged = true;
            }
        }
        if (!merged) add(KeyName(key));
    }
    return text;
}

}  // namespace qb
