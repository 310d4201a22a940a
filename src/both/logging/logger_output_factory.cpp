#include "logger_output_factory.h"

#include "console_logger_output.h"
#include "html_file_logger_output.h"
#include "log_file_path.h"
#include "txt_file_logger_output.h"
#include "util/wide_path.h"

namespace {

constexpr int kHtmlReport = 0;
constexpr int kDebugOutput = 2;
constexpr const char* kFileStem = "brevanlog";

}  // namespace

std::unique_ptr<LoggerOutput> MakeLoggerOutput(int selector, const std::string& folder) {
    const std::filesystem::path base = PathOfUtf8(folder) / kFileStem;
    switch (selector) {
        case kHtmlReport:
            return std::make_unique<HtmlFileLoggerOutput>(base);
        case kDebugOutput:
            return std::make_unique<ConsoleLoggerOutput>();
        default:
            return std::make_unique<TxtFileLoggerOutput>(base);
    }
}
