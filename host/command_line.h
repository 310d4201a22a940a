// The command line of pdfhost.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "batch_options.h"
#include "host_options.h"

namespace pdfhost {

struct CommandLine {
    HostOptions options;
    bool script = false;  // implies headless
    // Scripted mode only: the plug-in's task pane shows its page in the embedded browser, as on
    // the desktop, instead of the page being the script's channel.
    bool browserPane = false;
    std::vector<std::string> files;
    // --batch: a headless batch redaction of `files` (files and folders) with these options.
    std::optional<BatchOptions> batch;
};

// Parses the arguments after the program name. Options: --headless, --script, --profile DIR,
// --plugins DIR (default: "../plugins" beside the executable's folder), --lang TAG,
// --signed-in, --signed-out, --account-server URL, --browser-pane, --batch with the batch options
// (see batch_options.h; only with --batch); the rest are files to open (or, with --batch, files
// and folders to redact). Throws std::invalid_argument for an unknown option, a missing value,
// a batch option without --batch, --batch with --script, or --batch without a path.
CommandLine ParseCommandLine(const std::vector<std::string>& args,
                             const std::filesystem::path& executableFolder);

extern const char* const kUsage;

}  // namespace pdfhost
