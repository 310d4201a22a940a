// The usage reports of the plug-ins (HostAppReportUsage), appended as JSON lines to a file in the
// profile folder: one object per report with its time (UTC) and its texts as they were given.
#pragma once

#include <filesystem>
#include <string>

namespace pdfhost {

struct UsageReport {
    std::string name;
    std::string type;
    std::string details;
    std::string module;
    std::string version;
    std::string extra1;
    std::string extra2;
    int last = 0;
};

class UsageLog {
  public:
    explicit UsageLog(std::filesystem::path file) : file_(std::move(file)) {}

    // Appends one line; a file that cannot be written is told on stderr.
    void Append(const UsageReport& report) const;

    const std::filesystem::path& File() const { return file_; }

  private:
    std::filesystem::path file_;
};

}  // namespace pdfhost
