// Self-test sink on an HTML report named after its creation time (see report_file_name.h,
// extension ".html"), titled "Automated test report, HTML version". Each entry is a heading with
// its title, when there is one, and a paragraph with its text; the document is closed when the
// sink is destroyed.
#pragma once

#include <filesystem>
#include <fstream>

#include "logger_output.h"

class HtmlFileLoggerOutput : public LoggerOutput {
  public:
    // Creates the folder of the file if it is missing, and writes the document's head.
    explicit HtmlFileLoggerOutput(const std::filesystem::path& base);
    ~HtmlFileLoggerOutput() override;
    HtmlFileLoggerOutput(const HtmlFileLoggerOutput&) = delete;
    HtmlFileLoggerOutput& operator=(const HtmlFileLoggerOutput&) = delete;

    void Write(const std::wstring& title, const std::wstring& text) override;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
    std::ofstream file_;
};
