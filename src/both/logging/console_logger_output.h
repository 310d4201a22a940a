// Self-test sink on the debug output: the title and the text, each followed by a line end.
#pragma once

#include "logger_output.h"

class ConsoleLoggerOutput : public LoggerOutput {
  public:
    void Write(const std::wstring& title, const std::wstring& text) override;
};
