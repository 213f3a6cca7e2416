#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "level/LevelFileReader.h"
#include "level/TrackLimits.h"

namespace qb {

namespace {
// Opens a track file for reading and checks its size against the limit; -1
// with `error` set when it cannot be used.
int openTrackFile(const std::string& path, int64_t& size, LevelFileError& error) {
    // Non-blocking, so that a pipe put in place of the file cannot hold the game.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat st {};
    if (fd < 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        const int err = errno;
        if (fd >= 0) ::close(fd);
        error.Message = fd < 0 && err != ENOENT
                            ? std::string("the file cannot be read: ") + std::strerror(err)
                            : "the file is missing or empty";
        return -1;
    }
    if (st.st_size > limits::kTrackFileBytes) {
        ::close(fd);
        error.Message = "the file is " + std::to_string(st.st_size) + " bytes long, over the limit of " +
                        std::to_string(limits::kTrackFileBytes) + " bytes for a track file";
        return -1;
    }
    size = st.st_size;
    return fd;
}

// Reads up to bytes.size() bytes from the start; the vector is cut to what came.
void readUpTo(int fd, std::vector<uint8_t>& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        done += static_cast<size_t>(n);
    }
    bytes.resize(done);
}
}  // namespace

bool ReadLevelFileAt(const std::string& path, LevelFile& out, LevelFileError& error,
                     std::vector<uint8_t>* keep) {
    out = LevelFile{};
    error = LevelFileError{};
    int64_t size = 0;
    const int fd = openTrackFile(path, size, error);
    if (fd < 0) return false;
    // Sized from the file, never from what it claims; a file that grows
    // while it is read is cut at the size it had.
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    readUpTo(fd, bytes);
    ::close(fd);
    if (bytes.empty()) {
        error.Message = "the file is missing or empty";
        return false;
    }
    const bool ok = ReadLevelFile(bytes.data(), bytes.size(), out, error);
    if (keep) *keep = std::move(bytes);
    return ok;
}

bool ReadLevelCountAt(const std::string& path, int32_t& count, LevelFileError& error) {
    count = 0;
    error = LevelFileError{};
    int64_t size = 0;
    const int fd = openTrackFile(path, size, error);
    if (fd < 0) return false;
    // The largest header the limits allow is a few kilobytes.
    std::vector<uint8_t> head(static_cast<size_t>(std::min<int64_t>(size, HeaderSize(limits::kTracks))));
    readUpTo(fd, head);
    ::close(fd);
    LevelFile header;
    if (!ReadLevelIndex(head.data(), head.size(), header, error)) return false;
    count = static_cast<int32_t>(header.Index.size());
    return true;
}

}  // namespace qb
