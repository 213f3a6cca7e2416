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
    explicit SdlPlatform(const std::string& argv0);
    ~SdlPlatform();

private:
    std::unique_ptr<SdlPlatformImpl> impl_;

public:
    Platform& platform;
};

// The folder holding the running executable, ending with '/'.
std::string ExecutableFolder(const std::string& argv0);

}  // namespace qb
