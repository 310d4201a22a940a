// The command line of pdfhost.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host_options.h"

namespace pdfhost {

struct CommandLine {
    HostOptions options;
    bool script = false;  // implies headless
    // Scripted mode only: the plug-in's task pane shows its page in the embedded browser, as on
    // the desktop, instead of the page being the script's channel.
    bool browserPane = false;
    std::vector<std::string> files;
};

// Parses the arguments after the program name. Options: --headless, --script, --profile DIR,
// --plugins DIR (default: "../plugins" beside the executable's folder), --lang TAG,
// --signed-in, --signed-out, --account-server URL, --browser-pane; the rest are files to open.
// Throws std::invalid_argument for an unknown option or a missing value.
CommandLine ParseCommandLine(const std::vector<std::string>& args,
                             const std::filesystem::path& executableFolder);

extern const char* const kUsage;

}  // namespace pdfhost
