// A HostApi served through the C function tables that a plug-in library reaches: one captureless
// function per row of the operation list, each forwarding to the HostApi being served. A call
// with no HostApi served, or whose HostApi throws, answers the neutral result of its row, so no
// exception crosses into the library.
#pragma once

#include "host/host_api.h"
#include "table_manager.h"

// Registers every core row into `tables`. HostExtensionGetFunction answers a function of an
// extension table that the served HostApi finds and offers at that index with the forwarder of
// that row, which calls the HostApi with the table's handle.
void RegisterHostApiTables(pdfhost::TableManager& tables);

// Makes `api` the HostApi that the registered functions forward to while this lives.
class ServedHostApi {
  public:
    explicit ServedHostApi(HostApi& api);
    ~ServedHostApi();
    ServedHostApi(const ServedHostApi&) = delete;
    ServedHostApi& operator=(const ServedHostApi&) = delete;

  private:
    HostApi* previous_;
};
