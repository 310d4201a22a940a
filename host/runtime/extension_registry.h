// Extension tables that the host offers by name and version, each a row of functions found by
// index.
#pragma once

#include <string>
#include <vector>

#include "handle_pool.h"
#include "host_abi.h"
#include "host_ops.h"

namespace pdfhost {

class ExtensionRegistry {
  public:
    // Offers a table; a later table of the same name and version replaces the earlier one.
    HostExtTable Add(std::string name, int version, std::vector<HostFunction> functions);
    // Puts one function of a table at `index`, making the table when it is not offered yet.
    // Tables are filled this way function by function, by whichever part of the host serves
    // them; the indexes in between stay null.
    void SetFunction(const std::string& name, int version, int index, HostFunction fn);

    // Typed by the operation list, so an implementation with the wrong signature does not
    // compile.
    template <hostops::ExtOp op>
    void Register(typename hostops::ExtOpTraits<op>::Fn* fn) {
        using Traits = hostops::ExtOpTraits<op>;
        const hostops::ExtTableInfo& table = hostops::InfoOf(Traits::table);
        SetFunction(table.name, table.version, Traits::index, reinterpret_cast<HostFunction>(fn));
    }

    // The table of that exact name and version, or null.
    HostExtTable Find(const std::string& name, int version) const;
    // Function `index` of a known table, or null.
    HostFunction Function(HostExtTable table, int index) const;

  private:
    struct Table {
        std::string name;
        int version = 0;
        std::vector<HostFunction> functions;
    };

    HandlePool<HostExtTable, Table> tables_;
    std::vector<HostExtTable> order_;
};

}  // namespace pdfhost
