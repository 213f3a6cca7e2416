// The real services: SDL2 window and events, OpenGL through libepoxy,
// SDL2_mixer sound, the Linux system facts.
#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"

namespace qb {

struct SdlPlatformImpl;

class SdlPlatform {
public:
    // argv0 locates the game folder (the folder holding the executable).
    // hiddenWindow: the window is never mapped; frames are still drawn into
    // the back buffer, so saveScreenshot works (the picture tool uses it).
    explicit SdlPlatform(const std::string& argv0, bool hiddenWindow = false);
    ~SdlPlatform();
    SdlPlatform(const SdlPlatform&) = delete;
    SdlPlatform& operator=(const SdlPlatform&) = delete;

    // Writes the last frame drawn into the back buffer as a PNG. False when
    // there is no device yet or the file cannot be written.
    bool saveScreenshot(const std::string& pngPath);

private:
    std::unique_ptr<SdlPlatformImpl> impl_;

public:
    Platform& platform;
};

// The folder holding the running executable, ending with '/'.
std::string ExecutableFolder(const std::string& argv0);

}  // namespace qb
