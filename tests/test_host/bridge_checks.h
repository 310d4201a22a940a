// The bridge requests the test host drives through its page channel once the plug-in runs and a
// document is open, each reply checked for its exact keys and codes.
#pragma once

#include <filesystem>

#include "check_report.h"
#include "console_host.h"

namespace testhost {

// The open document the requests work on: its handle, and the file it was opened from.
struct SampleDocument {
    HostDoc doc = nullptr;
    std::filesystem::path path;
    std::uintmax_t size = 0;
};

// Runs the requests in order; throws CheckFailed at the first failed check.
void RunBridgeChecks(ConsoleHost& host, const SampleDocument& sample, CheckReport& report);

}  // namespace testhost
