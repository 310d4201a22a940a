// Chooses the self-test sink by number: 0 the HTML report, 2 the debug output, anything else the
// text file "brevanlog.txt". File sinks write into `folder` (UTF-8), normally the log folder.
#pragma once

#include <memory>
#include <string>

#include "logger_output.h"

std::unique_ptr<LoggerOutput> MakeLoggerOutput(int selector, const std::string& folder);
