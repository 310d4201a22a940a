// The test host's run: one plug-in library through its whole life in the in-memory engine (entry
// point, handshake, registration, export, import, init, main frame), a document opened, the
// bridge requests through the page channel, then frame closing and unload.
#pragma once

#include <filesystem>

#include "check_report.h"

namespace testhost {

// Runs the checks, each recorded in `report`; stops at the first that fails. `workFolder` is an
// empty folder for the host's user data and the sample file.
void RunPlugin(const std::filesystem::path& plugin, const std::filesystem::path& workFolder,
               CheckReport& report);

}  // namespace testhost
