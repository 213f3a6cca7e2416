#include "platform/sdl/SdlPlatform.h"

#include <unistd.h>

#include <climits>
#include <filesystem>

#include "platform/SystemInfo.h"
#include "platform/sdl/SdlAudio.h"
#include "platform/sdl/SdlClock.h"
#include "platform/sdl/SdlGamepads.h"
#include "platform/sdl/SdlGraphics.h"
#include "platform/sdl/SdlKeyboard.h"
#include "platform/sdl/SdlWindow.h"
#include "platform/sdl/WindowMessage.h"

namespace qb {

// Members in construction order: the window needs the keyboard it feeds, the
// device needs the window; they go in reverse, the device first.
struct SdlPlatformImpl {
    SdlPlatformImpl(const std::string& gameDir, bool hidden)
        : window(keyboard, hidden, gameDir + "icons/quorbit.png"),
          graphics(window),
          platform{graphics, keyboard, gamepads, clock, window, audio, system, ResolveGamePaths(gameDir)} {
        window.inWindowMessage = [this](const std::string& text) {
            return ShowWindowMessage(graphics, text);
        };
    }
    SdlKeyboard keyboard;
    SdlGamepads gamepads;
    SdlClock clock;
    SdlWindow window;
    SdlGraphics graphics;
    SdlAudio audio;
    LinuxSystemInfo system;
    Platform platform;
};

std::string ExecutableFolder(const std::string& argv0) {
    char buf[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf - 1);
    std::filesystem::path exe = n > 0 ? std::filesystem::path(std::string(buf, static_cast<size_t>(n)))
                                      : std::filesystem::absolute(argv0);
    std::string dir = exe.parent_path().string();
    if (dir.empty() || dir.back() != '/') dir += '/';
    return dir;
}

SdlPlatform::SdlPlatform(const std::string& argv0, bool hiddenWindow)
    : impl_(std::make_unique<SdlPlatformImpl>(ExecutableFolder(argv0), hiddenWindow)),
      platform(impl_->platform) {}

SdlPlatform::~SdlPlatform() = default;

bool SdlPlatform::saveScreenshot(const std::string& pngPath) {
    return impl_->graphics.saveScreenshot(pngPath);
}

}  // namespace qb
