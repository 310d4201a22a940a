// Extension tables that the host offers by name and version, each a row of functions found by
// index.
#pragma once

#include <string>
#include <vector>

#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

class ExtensionRegistry {
  public:
    // Offers a table; a later table of the same name and version replaces the earlier one.
    HostExtTable Add(std::string name, int version, std::vector<HostFunction> functions);

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
