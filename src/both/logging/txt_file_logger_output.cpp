#include "txt_file_logger_output.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <system_error>

#include "debug_output.h"
#include "local_time.h"
#include "util/utf.h"

namespace {

std::string MillisecondStamp() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const long long millis = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
    const std::tm local = LocalTime(system_clock::to_time_t(now));
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d %03lld ",
                  local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec, millis);
    return stamp;
}

}  // namespace

TxtFileLoggerOutput::TxtFileLoggerOutput(const std::filesystem::path& base)
    : path_(std::filesystem::path(base) += ".txt") {
    std::error_code ignored;
    std::filesystem::create_directories(path_.parent_path(), ignored);
}

void TxtFileLoggerOutput::Write(const std::wstring& title, const std::wstring& text) {
    std::ofstream file(path_, std::ios::out | std::ios::app | std::ios::binary);
    for (const std::wstring* part : {&title, &text}) {
        if (part->empty())
            continue;
        const std::string line = ToUtf8(*part) + "\n";
        WriteDebugOutput(line);
        file << MillisecondStamp() << line;
    }
}
