// How a pdfhost run is set up.
#pragma once

#include <filesystem>
#include <optional>
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
    // Whether the local account starts signed in (--signed-in, --signed-out). Without a word,
    // headless runs start signed in and the desktop keeps the state it had.
    std::optional<bool> signedIn;
    // The account server of the local account (--account-server), as if signed in to it last;
    // empty: the one the profile names.
    std::string accountServer;
};

}  // namespace pdfhost
