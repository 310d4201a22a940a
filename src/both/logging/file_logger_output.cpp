#include "file_logger_output.h"

#include <ctime>
#include <system_error>

#include "local_time.h"
#include "report_file_name.h"
#include "util/utf.h"

FileLoggerOutput::FileLoggerOutput(const std::filesystem::path& base)
    : path_(ReportFilePath(base, LocalTime(std::time(nullptr)), ".txt")) {
    std::error_code ignored;
    std::filesystem::create_directories(path_.parent_path(), ignored);
    file_.open(path_, std::ios::out | std::ios::trunc | std::ios::binary);
}

void FileLoggerOutput::Write(const std::wstring& title, const std::wstring& text) {
    file_ << FormatTime(LocalTime(std::time(nullptr)), "%d-%m-%Y %H:%M:%S") << ' ' << ToUtf8(title)
          << '\n'
          << ToUtf8(text) << '\n'
          << std::flush;
}
