// The test host's run: one plug-in library through its whole life in ConsoleHost (entry point,
// handshake, registration, export, import, init, main frame), a document opened, the bridge
// requests through the page channel, then frame closing and unload.
#pragma once

#include <filesystem>

#include "check_report.h"

namespace testhost {

// Runs the checks, each recorded in `report`; stops at the first that fails.
void RunPlugin(const std::filesystem::path& plugin, CheckReport& report);

}  // namespace testhost
