// Holders of the extension tables that other host plug-ins export. A missing table leaves the
// handle null; callers then get the neutral result of each operation.
#pragma once

#include "host/host_api.h"

class Brevan;

// The table "login", version 103.
class CCloudLogin {
  public:
    explicit CCloudLogin(Brevan& app) : app_(&app) {}
    HostExtTable table = nullptr;
    Brevan& app() const { return *app_; }

  private:
    Brevan* app_;
};

// The table "Browser Extension HFT", version 0.
class CBrowser {
  public:
    explicit CBrowser(Brevan& app) : app_(&app) {}
    HostExtTable table = nullptr;
    Brevan& app() const { return *app_; }

  private:
    Brevan* app_;
};

// The process-wide copy of the browser table handle that its forwarders read.
extern HostExtTable g_browserExtTable;

// Finds an extension table by its row in the list of host operations.
HostExtTable FindExtensionTable(HostApi& host, hostops::ExtTable table);
