#include "debug_output.h"

#include <iostream>

void WriteDebugOutput(std::string_view text) {
    std::cerr << text << std::flush;
}
