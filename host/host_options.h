// How a pdfhost run is set up.
#pragma once

#include <filesystem>
#include <string>

namespace pdfhost {

struct HostOptions {
    // Preferences, plug-in settings and user data; empty: a fresh temporary folder, removed when
    // the host ends.
    std::filesystem::path profile;
    // Where *.tpi plug-ins are loaded from; empty: no plug-ins.
    std::filesystem::path plugins;
    // The interface language tag.
    std::string language = "en-US";
    // No visible window; messages go to the script output or stderr.
    bool headless = true;
    // Initial state of the local account (kept for the account provider).
    bool signedIn = true;
};

}  // namespace pdfhost
