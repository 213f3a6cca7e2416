#include <sys/utsname.h>

#include <cmath>
#include <ctime>
#include <fstream>
#include <string>

#include "platform/SystemInfo.h"

namespace qb {

namespace {
std::string trim(const std::string& s) {
    size_t b = 0, e = s.size();
    while (b < e && static_cast<unsigned char>(s[b]) <= 32) ++b;
    while (e > b && static_cast<unsigned char>(s[e - 1]) <= 32) --e;
    return s.substr(b, e - b);
}

// Value of the first "key : value" line of /proc/cpuinfo with this key.
std::string cpuinfoField(const std::string& key) {
    std::ifstream in("/proc/cpuinfo");
    std::string line;
    while (std::getline(in, line)) {
        const auto colon = line.find(':');
        if (colon == std::string::npos) continue;
        if (trim(line.substr(0, colon)) == key) return trim(line.substr(colon + 1));
    }
    return "";
}
}  // namespace

std::string CleanProcessorName(const std::string& buffer) {
    const auto nul = buffer.find('\0');
    std::string r = nul == std::string::npos ? buffer : buffer.substr(0, nul);
    return r.empty() ? "(unknown)" : r;
}

std::string LinuxSystemInfo::operatingSystemName() {
    std::ifstream in("/etc/os-release");
    std::string line;
    while (std::getline(in, line)) {
        if (line.rfind("PRETTY_NAME=", 0) == 0) {
            std::string v = line.substr(12);
            if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'')) v = v.substr(1, v.size() - 2);
            return v;
        }
    }
    utsname u{};
    if (uname(&u) == 0) return u.sysname;
    return "";
}

std::string LinuxSystemInfo::processorName() {
    std::string name = cpuinfoField("model name");
    if (name.empty()) name = cpuinfoField("Hardware");
    return CleanProcessorName(name);
}

int32_t LinuxSystemInfo::processorSpeedMhz() {
    std::ifstream f("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq");
    long khz = 0;
    if (f >> khz && khz > 0) return static_cast<int32_t>(khz / 1000);
    const std::string mhz = cpuinfoField("cpu MHz");
    if (mhz.empty()) return 0;
    try {
        return static_cast<int32_t>(std::nearbyint(std::stod(mhz)));
    } catch (...) {
        return 0;
    }
}

uint64_t LinuxSystemInfo::totalPhysicalMemory() {
    std::ifstream in("/proc/meminfo");
    std::string key;
    uint64_t kb = 0;
    std::string unit;
    while (in >> key >> kb >> unit) {
        if (key == "MemTotal:") return kb * 1024;
    }
    return 0;
}

std::string LinuxSystemInfo::today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    char buf[16] = "";
    if (localtime_r(&now, &local) != nullptr) std::strftime(buf, sizeof buf, "%Y-%m-%d", &local);
    return buf;
}

}  // namespace qb
