// Placeholder until the SDL2/OpenGL services land: headless services with the
// real system facts, so the game builds and starts.
#include "platform/sdl/SdlPlatform.h"

#include <unistd.h>

#include <climits>
#include <filesystem>

#include "platform/headless/HeadlessPlatform.h"

namespace qb {

struct SdlPlatformImpl {
    explicit SdlPlatformImpl(const std::string& dir) : headless(dir) {}
    HeadlessPlatform headless;
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

SdlPlatform::SdlPlatform(const std::string& argv0, bool)
    : impl_(std::make_unique<SdlPlatformImpl>(ExecutableFolder(argv0))), platform(impl_->headless.platform) {
    platform.paths = ResolveGamePaths(ExecutableFolder(argv0));
}

SdlPlatform::~SdlPlatform() = default;

bool SdlPlatform::saveScreenshot(const std::string&) { return false; }

}  // namespace qb
