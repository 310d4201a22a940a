#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "logging/console_logger_output.h"
#include "logging/file_logger_output.h"
#include "logging/html_file_logger_output.h"
#include "logging/log_file_path.h"
#include "logging/logger_output_factory.h"
#include "logging/txt_file_logger_output.h"

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The text with each digit shown as '9', to compare time stamps by their form.
std::string Shape(std::string text) {
    for (char& c : text) {
        if (c >= '0' && c <= '9')
            c = '9';
    }
    return text;
}

int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

class LoggerOutputTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::path(testing::TempDir()) /
                  (std::string("brevan_report_") +
                   testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    fs::path folder_;
};

TEST_F(LoggerOutputTest, HtmlReportHasTitleEscapedParagraphsAndClosingTags) {
    fs::path path;
    {
        HtmlFileLoggerOutput report(folder_ / "sub" / "report");
        path = report.path();
        report.Write(L"getCurrentDoc", L"a < b & \"c\" 'd' > e");
        report.Write(L"", L"Gr\u00fc\u00dfe\nsecond line");
    }
    EXPECT_EQ(path.parent_path(), folder_ / "sub");
    EXPECT_EQ(Shape(PathToUtf8(path.filename())), "report_99-99-9999_99-99-99.html");

    const std::string html = ReadFile(path);
    EXPECT_NE(html.find("<title>Automated test report, HTML version</title>"), std::string::npos);
    EXPECT_NE(html.find("<h2>getCurrentDoc</h2>\n<p>a &lt; b &amp; &quot;c&quot; &#39;d&#39; &gt; "
                        "e</p>"),
              std::string::npos);
    EXPECT_NE(html.find("<p>Gr\xC3\xBC\xC3\x9F"
                        "e<br>\nsecond line</p>"),
              std::string::npos);
    EXPECT_EQ(Count(html, "<p>"), 2);
    EXPECT_EQ(Count(html, "<h2>"), 1);
    EXPECT_TRUE(html.ends_with("</body>\n</html>\n"));
    EXPECT_LT(html.find("<body>"), html.find("<p>"));
}

TEST_F(LoggerOutputTest, TextFileStampsEachNonEmptyLineAndEchoesIt) {
    const std::unique_ptr<LoggerOutput> output = MakeLoggerOutput(1, PathToUtf8(folder_));
    testing::internal::CaptureStderr();
    output->Write(L"Title", L"");
    output->Write(L"", L"caf\u00e9");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Title\ncaf\xC3\xA9\n");

    EXPECT_EQ(Shape(ReadFile(folder_ / "brevanlog.txt")),
              "9999-99-99 99:99:99 999 Title\n9999-99-99 99:99:99 999 caf\xC3\xA9\n");
}

TEST_F(LoggerOutputTest, ConsoleAndReportFileForms) {
    testing::internal::CaptureStderr();
    ConsoleLoggerOutput().Write(L"title", L"text");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "title\ntext\n");

    FileLoggerOutput report(folder_ / "plain");
    report.Write(L"case", L"result");
    EXPECT_EQ(Shape(PathToUtf8(report.path().filename())), "plain_99-99-9999_99-99-99.txt");
    EXPECT_EQ(Shape(ReadFile(report.path())), "99-99-9999 99:99:99 case\nresult\n");
}

}  // namespace
