// Self-test sink on the text file "<base>.txt": the non-empty title and text each become a line
// with a local time stamp to the millisecond ("2026-03-15 10:20:30 042 "). The lines also go to
// the debug output, without stamp.
#pragma once

#include <filesystem>

#include "logger_output.h"

class TxtFileLoggerOutput : public LoggerOutput {
  public:
    // Creates the folder of the file if it is missing.
    explicit TxtFileLoggerOutput(const std::filesystem::path& base);

    void Write(const std::wstring& title, const std::wstring& text) override;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};
