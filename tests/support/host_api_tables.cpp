#include "host_api_tables.h"

#include "host/extension_tables.h"
#include "host_api_defaults.h"

namespace {

HostApi* g_served = nullptr;

template <typename Result, typename Body>
Result Forward(Body&& body) noexcept {
    try {
        if (g_served != nullptr)
            return body(*g_served);
    } catch (...) {
    }
    return NeutralResult<Result>();
}

// One forwarder per row; an extension row passes the handle the HostApi gives for its table.
struct Forwarders {
#define HOST_OP(Name, Category, Selector, Result, Params, Args)                        \
    static Result BREVAN_HOSTCALL Name Params noexcept {                               \
        return Forward<Result>([&](HostApi& api) -> Result { return api.Name Args; }); \
    }
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args)                             \
    static Result BREVAN_HOSTCALL Name Params noexcept {                                  \
        return Forward<Result>([&](HostApi& api) -> Result {                              \
            const HostExtTable table = FindExtensionTable(api, hostops::ExtTable::Table); \
            return api.Name HOST_PREPEND_TABLE_ARG Args;                                  \
        });                                                                               \
    }
#include "host/host_ops_list.h"
#undef HOST_OP
#undef HOST_EXT_OP
};

struct ExtRow {
    hostops::ExtTable table;
    int index;
    HostFunction fn;
};

const ExtRow kExtRows[] = {
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args) \
    {hostops::ExtTable::Table, Index, reinterpret_cast<HostFunction>(&Forwarders::Name)},
#include "host/host_ops_list.h"
#undef HOST_EXT_OP
};

HostFunction BREVAN_HOSTCALL ExtensionFunction(HostExtTable table, int index) noexcept {
    return Forward<HostFunction>([&](HostApi& api) -> HostFunction {
        if (table == nullptr || api.HostExtensionGetFunction(table, index) == nullptr)
            return nullptr;
        for (const ExtRow& row : kExtRows) {
            if (row.index == index && FindExtensionTable(api, row.table) == table)
                return row.fn;
        }
        return nullptr;
    });
}

}  // namespace

void RegisterHostApiTables(pdfhost::TableManager& tables) {
    using hostops::Op;
#define HOST_OP(Name, Category, Selector, Result, Params, Args) \
    if (Op::Name != Op::HostExtensionGetFunction)               \
        tables.Register<Op::Name>(&Forwarders::Name);
#include "host/host_ops_list.h"
#undef HOST_OP
    tables.Register<Op::HostExtensionGetFunction>(&ExtensionFunction);
}

ServedHostApi::ServedHostApi(HostApi& api) : previous_(g_served) {
    g_served = &api;
}

ServedHostApi::~ServedHostApi() {
    g_served = previous_;
}
