// Holders of the extension tables that other host plug-ins export. A missing table leaves the
// handle null; callers then get the neutral result of each operation.
#pragma once

#include "host/host_api.h"

// The table "login", version 103.
struct CCloudLogin {
    HostExtTable table = nullptr;
};

// The table "Browser Extension HFT", version 0.
struct CBrowser {
    HostExtTable table = nullptr;
};

// Finds an extension table by its row in the list of host operations.
HostExtTable FindExtensionTable(HostApi& host, hostops::ExtTable table);
