// Self-test sink on a plain report file named after its creation time (see report_file_name.h,
// extension ".txt"). Each entry is a line with the local date and the title, then the text.
#pragma once

#include <filesystem>
#include <fstream>

#include "logger_output.h"

class FileLoggerOutput : public LoggerOutput {
  public:
    // Creates the folder of the file if it is missing.
    explicit FileLoggerOutput(const std::filesystem::path& base);

    void Write(const std::wstring& title, const std::wstring& text) override;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
    std::ofstream file_;
};
