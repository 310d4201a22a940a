// What the host knows of one plug-in library: its file, its id, and what it told the host in the
// handshake and the registration.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "host_abi.h"
#include "shared_library.h"

namespace pdfhost {

struct LoadedPlugin {
    uint32_t id = 0;
    std::filesystem::path path;
    std::unique_ptr<SharedLibrary> library;

    // The records handed to the plug-in; their `host` word points back here.
    HostHandshake handshake{};
    HostRegistration registration{};

    // From the handshake.
    HostRegistrationFn registrationFn = nullptr;
    uint32_t sdkVersion = 0;
    std::string versionText;

    // From the registration.
    std::string internalName;
    std::string shortName;
    HostPluginCallback exportFn = nullptr;
    HostPluginCallback importFn = nullptr;
    HostPluginCallback initFn = nullptr;
    HostPluginCallback unloadFn = nullptr;
    HostUiRecord ui{0, {}};  // a copy; size 0 when none was given
};

}  // namespace pdfhost
