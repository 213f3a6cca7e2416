#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "persist/InstalledCopy.h"
#include "platform/Platform.h"

namespace qb {

namespace fs = std::filesystem;

namespace {
std::string withSlash(std::string dir) {
    if (!dir.empty() && dir.back() != '/') dir += '/';
    return dir;
}
}  // namespace

bool LockWriteFolder(const std::string& dir, int& fd) {
    fd = ::open((dir + "quorbit.lock").c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (fd < 0) return true;
    if (::flock(fd, LOCK_EX | LOCK_NB) == 0) return true;
    const bool held = errno == EWOULDBLOCK;
    ::close(fd);
    fd = -1;
    return !held;
}

GamePaths ResolveGamePaths(const std::string& gameDir) {
    return ResolveGamePaths(gameDir, ::access(withSlash(gameDir).c_str(), W_OK) == 0);
}

GamePaths ResolveGamePaths(const std::string& gameDir, bool gameDirWritable) {
    GamePaths p;
    p.gameDir = withSlash(gameDir);
    p.writeDir = p.gameDir;
    if (gameDirWritable) return p;

    auto noSlash = [](std::string d) {
        while (d.size() > 1 && d.back() == '/') d.pop_back();
        return d;
    };
    std::string base;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg)
        base = noSlash(xdg);
    else if (const char* home = std::getenv("HOME"); home && *home)
        base = noSlash(home) + "/.local/share";
    if (base.empty() || base.front() != '/') {
        // A shared folder such as /tmp/quorbit could be anyone's: another
        // user could read, replace or link our files there. A private folder
        // for this run only, and the player is told.
        char private_[] = "/tmp/quorbit-XXXXXX";
        p.writeDir = ::mkdtemp(private_) ? withSlash(private_) : std::string();
        p.problem =
            "Neither XDG_DATA_HOME nor HOME names a folder of yours, so Quorbit keeps your options, "
            "fastest times and statistics in " +
            p.writeDir + " for this run only.";
        base.clear();
    } else {
        p.writeDir = withSlash(base + "/quorbit");
    }
    std::error_code ec;
    fs::create_directories(p.writeDir, ec);
    // Fastest times go into the player's copy of the tracks. Until one can
    // be made the installed tracks are played as they are, and the player
    // is told why nothing is kept.
    if (p.writeDir.empty()) {
        p.levels = p.gameDir + "levels.dat";
        return p;
    }
    const InstallOutcome installed = InstallTrackFiles(p.gameDir, p.writeDir);
    if (!installed.levelsUsable) p.levels = p.gameDir + "levels.dat";
    if (!installed.problem.empty()) p.problem += (p.problem.empty() ? "" : " ") + installed.problem;
    return p;
}

}  // namespace qb
