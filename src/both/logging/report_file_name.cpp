#include "report_file_name.h"

#include <string>

#include "local_time.h"

std::filesystem::path ReportFilePath(const std::filesystem::path& base, const std::tm& localTime,
                                     std::string_view extension) {
    std::filesystem::path path = base;
    path += FormatTime(localTime, "_%d-%m-%Y_%H-%M-%S");
    path += std::string(extension);
    return path;
}
