// Extension tables by name and version, and their functions by index.
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostExtTable ExtensionFind(const char* name, int version) {
    return Guarded<HostExtTable>(nullptr, [&](HostApp& app) -> HostExtTable {
        if (name == nullptr)
            return nullptr;
        return app.Extensions().Find(name, version);
    });
}

HostFunction ExtensionGetFunction(HostExtTable table, int index) {
    return Guarded<HostFunction>(
        nullptr, [&](HostApp& app) { return app.Extensions().Function(table, index); });
}

}  // namespace

void RegisterExtensionTables(TableManager& tables) {
    tables.Register<Op::HostExtensionFind>(&ExtensionFind);
    tables.Register<Op::HostExtensionGetFunction>(&ExtensionGetFunction);
}

}  // namespace pdfhost
