#include "browser_status.h"

#include <cstdio>
#include <string>

#include "logging/async_logger.h"

void CheckBrowserStatus(const char* file, int line, int32_t status) {
    if (status >= 0)
        return;
    const std::string label =
        "Failure at \"" + std::string(file) + "\"(" + std::to_string(line) + ")";
    char text[64] = {};
    std::snprintf(text, sizeof text, " : 0x%08X", static_cast<unsigned>(status));
    AsyncLogger::Instance().Log(kLogError, "WebView2Browser error: %", label + text);
}
