// The debugger's output channel; the standard error stream stands for it on this platform.
#pragma once

#include <string_view>

void WriteDebugOutput(std::string_view text);
