// Sinks of the built-in self-test report: each takes a title and a text per entry. The plug-in's
// own flow logs through AsyncLogger and writes nothing here.
#pragma once

#include <string>

class LoggerOutput {
  public:
    virtual ~LoggerOutput() = default;
    virtual void Write(const std::wstring& title, const std::wstring& text) = 0;
};
