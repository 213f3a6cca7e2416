#include "platform/QuorbitDebug.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <sstream>

namespace qb {

QuorbitDebug::~QuorbitDebug() {
    Close();
}

std::string QuorbitDebug::Quote(const std::string& text) {
    std::string r = "\"";
    for (char c : text) {
        r += c;
        if (c == '"') r += '"';  // a quote inside a text is doubled
    }
    r += '"';
    return r;
}

std::string QuorbitDebug::MegabytesText(uint64_t bytes) {
    const double mb = static_cast<double>(bytes) / 1024.0 / 1024.0;
    // Up to 15 significant digits, no trailing zeros, like a plain number-to-text.
    std::ostringstream os;
    os.precision(15);
    os << mb;
    return os.str();
}

void QuorbitDebug::writeRaw(const std::string& line) {
    if (!file_) return;
    std::fputs(line.c_str(), file_);
    std::fputs("\r\n", file_);
    std::fflush(file_);
}

void QuorbitDebug::Open(const std::string& path, SystemInfo& system, const std::string& today) {
    Close();
    // The last run's log is kept beside the new one: it tells what went
    // wrong last time, which a fresh start would otherwise wipe out.
    if (path.size() > 4 && path.compare(path.size() - 4, 4, ".txt") == 0)
        std::rename(path.c_str(), (path.substr(0, path.size() - 4) + ".old.txt").c_str());
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0644);
    file_ = fd >= 0 ? ::fdopen(fd, "wb") : nullptr;
    if (!file_ && fd >= 0) ::close(fd);
    if (!file_) return;  // the log never reports its own failures
    std::string date = today;
    if (date.empty()) {
        std::time_t t = std::time(nullptr);
        std::tm tmv{};
        localtime_r(&t, &tmv);
        char buf[16];
        std::strftime(buf, sizeof buf, "%Y-%m-%d", &tmv);
        date = buf;
    }
    WriteEmptyLine();
    WriteLine("Quorbit Debug");
    writeRaw(Quote("Operating system") + "," + Quote(system.operatingSystemName()));
    writeRaw("#" + date + "#");
    WriteEmptyLine();
    WriteLine(system.processorName());
    writeRaw(Quote("CPU Speed") + "," + std::to_string(system.processorSpeedMhz()) + "," + Quote("Mhz"));
    writeRaw(Quote("Memory") + "," + Quote(MegabytesText(system.totalPhysicalMemory())));
    WriteEmptyLine();
}

void QuorbitDebug::WriteLine(const std::string& text) {
    writeRaw(Quote(text));
}

void QuorbitDebug::WriteEmptyLine() {
    writeRaw("");
}

void QuorbitDebug::Close() {
    if (file_) std::fclose(file_);
    file_ = nullptr;
}

}  // namespace qb
