#include "level/FilePatch.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace qb {

bool PatchFileAt(const std::string& path, int64_t offset, const uint8_t* data, size_t size,
                 std::string& error) {
    // The file must already exist: a patch into a missing file would create
    // a file that is all zeros up to the patch.
    const int fd = ::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    size_t done = 0;
    while (done < size) {
        const ssize_t n = ::pwrite(fd, data + done, size - done, static_cast<off_t>(offset + done));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            error = path + ": " + std::strerror(n < 0 ? errno : EIO);
            ::close(fd);
            return false;
        }
        done += static_cast<size_t>(n);
    }
    int rc;
    do rc = ::fdatasync(fd);
    while (rc != 0 && errno == EINTR);
    if (rc != 0) {
        error = path + ": " + std::strerror(errno);
        ::close(fd);
        return false;
    }
    if (::close(fd) != 0) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

}  // namespace qb
