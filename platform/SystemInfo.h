// The machine facts the start-up log reports.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

class SystemInfo {
public:
    virtual ~SystemInfo() = default;
    virtual std::string operatingSystemName() = 0;  // "" when unknown
    virtual std::string processorName() = 0;        // "(unknown)" when unknown
    virtual int32_t processorSpeedMhz() = 0;        // 0 when unknown
    virtual uint64_t totalPhysicalMemory() = 0;     // bytes
    // Today's local date as YYYY-MM-DD, for what the game dates (replays).
    virtual std::string today() { return ""; }
};

// Reads /proc/cpuinfo, /proc/meminfo and /etc/os-release.
class LinuxSystemInfo : public SystemInfo {
public:
    std::string operatingSystemName() override;
    std::string processorName() override;
    int32_t processorSpeedMhz() override;
    uint64_t totalPhysicalMemory() override;
    std::string today() override;
};

// Cuts a processor-name buffer at its first NUL; "(unknown)" when empty.
std::string CleanProcessorName(const std::string& buffer);

}  // namespace qb
