#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "level/LevelFileReader.h"
#include "level/TrackLimits.h"

namespace qb {

bool ReadLevelFileAt(const std::string& path, LevelFile& out, LevelFileError& error,
                     std::vector<uint8_t>* keep) {
    out = LevelFile{};
    error = LevelFileError{};
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat st {};
    if (fd < 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        if (fd >= 0) ::close(fd);
        error.Message = fd < 0 && errno != ENOENT
                            ? std::string("the file cannot be read: ") + std::strerror(errno)
                            : "the file is missing or empty";
        return false;
    }
    if (st.st_size > limits::kTrackFileBytes) {
        ::close(fd);
        error.Message = "the file is " + std::to_string(st.st_size) + " bytes long, over the limit of " +
                        std::to_string(limits::kTrackFileBytes) + " bytes for a track file";
        return false;
    }
    // Sized from the file, never from what it claims; a file that grows
    // while it is read is cut at the size it had.
    std::vector<uint8_t> bytes(static_cast<size_t>(st.st_size));
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        done += static_cast<size_t>(n);
    }
    ::close(fd);
    bytes.resize(done);
    if (bytes.empty()) {
        error.Message = "the file is missing or empty";
        return false;
    }
    const bool ok = ReadLevelFile(bytes.data(), bytes.size(), out, error);
    if (keep) *keep = std::move(bytes);
    return ok;
}

}  // namespace qb
