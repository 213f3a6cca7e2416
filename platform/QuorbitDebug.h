// Debug.txt: the start-up report and one quoted record per start-up step,
// CRLF line ends, flushed line by line so a crash keeps every line before it.
#pragma once

#include <cstdio>
#include <string>

#include "platform/SystemInfo.h"

namespace qb {

class QuorbitDebug {
public:
    QuorbitDebug() = default;
    ~QuorbitDebug();
    QuorbitDebug(const QuorbitDebug&) = delete;
    QuorbitDebug& operator=(const QuorbitDebug&) = delete;

    // Creates or truncates the file and writes the system report. `today` is
    // "yyyy-mm-dd"; empty means the local date now.
    void Open(const std::string& path, SystemInfo& system, const std::string& today = "");
    void WriteLine(const std::string& text);  // one quoted record
    void WriteEmptyLine();
    void Close();
    bool isOpen() const { return file_ != nullptr; }

    // Record helpers: a quoted text and a true/false word as the log spells them.
    static std::string Quote(const std::string& text);
    static std::string BoolText(bool value) { return value ? "True" : "False"; }
    // Memory in megabytes as the report writes it (bytes / 1024 / 1024).
    static std::string MegabytesText(uint64_t bytes);

private:
    void writeRaw(const std::string& line);
    std::FILE* file_ = nullptr;
};

}  // namespace qb
