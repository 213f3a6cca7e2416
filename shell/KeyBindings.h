// Which keys drive the car: each play action has its own keys, which the
// player may change on the Controls screen. A key belongs to one action at
// most; Esc always pauses (and goes back in the menus) and Return always
// chooses in the menus, so neither can be given away.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace qb {

class Settings;

enum class Action : int { Accelerate, Brake, Left, Right, Jump, Pause, QuickRestart };
constexpr int ActionCount = 7;

class KeyBindings {
public:
    KeyBindings() { RestoreDefaults(); }

    const std::vector<uint8_t>& Keys(Action a) const { return keys_[index(a)]; }
    // Any of the action's keys is down in this key state.
    bool Held(const uint8_t* state, Action a) const;
    // The action a key belongs to, or -1.
    int ActionOf(uint8_t key) const;

    // Gives the action this key alone (the pause action keeps Esc beside it).
    // When another action had the key, that action gets the first key this
    // one had instead: keys are swapped, never doubled. False, and nothing
    // changes, for a key that cannot be given (Esc, Return, a key without a
    // name).
    bool Rebind(Action a, uint8_t key);
    void RestoreDefaults();
    bool IsDefault() const;

    // Reads the keys.* lines; anything wrong with them gives the defaults
    // and one line in `problem`. Writes them back (all of them, or none when
    // they are the defaults).
    void Load(const Settings& settings, std::string& problem);
    void Save(Settings& settings) const;

    // "Space, Ctrl, Shift": the action's keys as the Controls screen lists them.
    std::string KeysText(Action a) const;
    static const char* ActionTitle(Action a);    // "Accelerate"
    static const char* SettingsKey(Action a);    // "keys.accelerate"
    static std::string KeyName(uint8_t key);     // "LeftCtrl"; empty for a key without a name
    static int KeyFromName(const std::string&);  // -1 when unknown
    static bool Bindable(uint8_t key);

private:
    static size_t index(Action a) { return static_cast<size_t>(a); }
    std::array<std::vector<uint8_t>, ActionCount> keys_;
};

}  // namespace qb
