// The integration suite's entry: runs the tests with the HTML report open. The report goes to
// $BREVAN_REPORT_DIR, or to "reports" in the current folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <memory>

#include "logging/html_file_logger_output.h"
#include "logging/logger_output_factory.h"
#include "self_test_report.h"
#include "util/utf.h"

namespace {

constexpr int kHtmlReport = 0;
std::unique_ptr<LoggerOutput> g_report;

}  // namespace

void ReportExchange(const std::string& test, const std::string& request,
                    const std::string& output) {
    if (g_report)
        g_report->Write(FromUtf8(test), FromUtf8("> " + request + "\n" + output));
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const char* folder = std::getenv("BREVAN_REPORT_DIR");
    g_report = MakeLoggerOutput(kHtmlReport, folder != nullptr ? folder : "reports");
    if (auto* html = dynamic_cast<HtmlFileLoggerOutput*>(g_report.get())) {
        std::cout << "Self-test report: " << html->path().string() << std::endl;
    }
    const int result = RUN_ALL_TESTS();
    g_report.reset();
    return result;
}
