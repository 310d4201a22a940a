#include "console_logger_output.h"

#include "debug_output.h"
#include "util/utf.h"

void ConsoleLoggerOutput::Write(const std::wstring& title, const std::wstring& text) {
    WriteDebugOutput(ToUtf8(title) + "\n" + ToUtf8(text) + "\n");
}
