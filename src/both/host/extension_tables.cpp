#include "extension_tables.h"

HostExtTable FindExtensionTable(HostApi& host, hostops::ExtTable table) {
    const hostops::ExtTableInfo& info = hostops::InfoOf(table);
    return host.HostExtensionFind(info.name, info.version);
}
