#include "html_file_logger_output.h"

#include <ctime>
#include <string>
#include <system_error>

#include "local_time.h"
#include "report_file_name.h"
#include "util/utf.h"

namespace {

constexpr const char* kReportTitle = "Automated test report, HTML version";

// Escapes the characters that HTML reserves; line ends become line breaks.
std::string HtmlText(const std::wstring& text) {
    std::string out;
    for (const char c : ToUtf8(text)) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&#39;";
                break;
            case '\n':
                out += "<br>\n";
                break;
            default:
                out += c;
        }
    }
    return out;
}

}  // namespace

HtmlFileLoggerOutput::HtmlFileLoggerOutput(const std::filesystem::path& base)
    : path_(ReportFilePath(base, LocalTime(std::time(nullptr)), ".html")) {
    std::error_code ignored;
    std::filesystem::create_directories(path_.parent_path(), ignored);
    file_.open(path_, std::ios::out | std::ios::trunc | std::ios::binary);
    file_ << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" << kReportTitle
          << "</title>\n</head>\n<body>\n<h1>" << kReportTitle << "</h1>\n"
          << std::flush;
}

HtmlFileLoggerOutput::~HtmlFileLoggerOutput() {
    file_ << "</body>\n</html>\n";
}

void HtmlFileLoggerOutput::Write(const std::wstring& title, const std::wstring& text) {
    if (!title.empty())
        file_ << "<h2>" << HtmlText(title) << "</h2>\n";
    file_ << "<p>" << HtmlText(text) << "</p>\n" << std::flush;
}
