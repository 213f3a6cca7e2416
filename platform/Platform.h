// The services a game run is given. `quorbit` hands in the real ones, tests
// and tools the headless ones; the game code never knows which.
#pragma once

#include <string>

#include "platform/AudioDevice.h"
#include "platform/Clock.h"
#include "platform/GamepadDevice.h"
#include "platform/GraphicsDevice.h"
#include "platform/KeyboardDevice.h"
#include "platform/SystemInfo.h"
#include "platform/Window.h"

namespace qb {

// Where the game reads its data and writes its files.
struct GamePaths {
    std::string gameDir;   // holds levels.dat and the asset folders, ends with '/'
    std::string writeDir;  // options.dat, stats.dat, Debug.txt (and the patched levels.dat), ends with '/'
    // levels.dat to read and patch: writeDir's copy when writeDir differs,
    // the installed one (read only) while no copy could be made.
    std::string levelsFile() const { return levels.empty() ? writeDir + "levels.dat" : levels; }
    // What the player should know about where files go (empty when all is
    // well): no home folder, an installed copy that could not be brought over.
    std::string problem;
    // Set only while the installed levels.dat stands in for the copy.
    std::string levels;
};

struct Platform {
    GraphicsDevice& graphics;
    KeyboardDevice& keyboard;
    GamepadDevice& gamepads;
    Clock& clock;
    Window& window;
    AudioDevice& audio;
    SystemInfo& system;
    GamePaths paths;
};

// Picks the folder the game writes to: the game folder when writable, else
// $XDG_DATA_HOME/quorbit (default ~/.local/share/quorbit). When they differ,
// the track files are brought there (see persist/InstalledCopy.h) so that
// fastest times can be patched in place.
GamePaths ResolveGamePaths(const std::string& gameDir);
// The same with the writability test given (root can write anywhere, so
// tests decide for themselves what counts as a read-only install).
GamePaths ResolveGamePaths(const std::string& gameDir, bool gameDirWritable);

// One game per write folder: takes an advisory lock on dir/quorbit.lock for
// as long as `fd` stays open. False only when another process holds it; a
// folder where no lock file can be made is not guarded (nothing can be
// written there either).
bool LockWriteFolder(const std::string& dir, int& fd);

}  // namespace qb
