#include "persist/AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>

namespace qb {

namespace {
bool failed(std::string* error, const std::string& path, int err, const std::string& tmp = {}) {
    if (!tmp.empty()) ::unlink(tmp.c_str());
    if (error) *error = path + ": " + std::strerror(err);
    return false;
}
}  // namespace

bool WriteFileAtomically(const std::string& path, const std::vector<unsigned char>& bytes,
                         std::string* error) {
    // Created exclusively and never through a symbolic link: a leftover of a
    // killed save, or a link someone placed there, is removed (the link
    // itself, not what it points to) and the file made anew.
    const std::string tmp = path + ".tmp";
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    int fd = ::open(tmp.c_str(), flags, 0644);
    if (fd < 0 && errno == EEXIST && ::unlink(tmp.c_str()) == 0) fd = ::open(tmp.c_str(), flags, 0644);
    if (fd < 0) return failed(error, path, errno);
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            const int err = n < 0 ? errno : EIO;
            ::close(fd);
            return failed(error, path, err, tmp);
        }
        done += static_cast<size_t>(n);
    }
    if (::fsync(fd) != 0) {
        const int err = errno;
        ::close(fd);
        return failed(error, path, err, tmp);
    }
    if (::close(fd) != 0) return failed(error, path, errno, tmp);
    // rename replaces a symbolic link at `path` itself, never its target.
    if (std::rename(tmp.c_str(), path.c_str()) != 0) return failed(error, path, errno, tmp);
    return true;
}

std::vector<unsigned char> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return {};
    // A folder opens as a stream but fails at its first read.
    try {
        return std::vector<unsigned char>(std::istreambuf_iterator<char>(in),
                                          std::istreambuf_iterator<char>());
    } catch (const std::exception&) {
        return {};
    }
}

bool CreateIfMissing(const std::string& path) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (fd < 0) return false;
    ::close(fd);
    return true;
}

}  // namespace qb
