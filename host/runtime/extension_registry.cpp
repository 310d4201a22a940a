#include "extension_registry.h"

#include <algorithm>

namespace pdfhost {

HostExtTable ExtensionRegistry::Add(std::string name, int version,
                                    std::vector<HostFunction> functions) {
    if (const HostExtTable earlier = Find(name, version)) {
        tables_.Erase(earlier);
        std::erase(order_, earlier);
    }
    const HostExtTable table =
        tables_.Emplace(Table{std::move(name), version, std::move(functions)});
    order_.push_back(table);
    return table;
}

void ExtensionRegistry::SetFunction(const std::string& name, int version, int index,
                                    HostFunction fn) {
    if (index < 0)
        return;
    HostExtTable table = Find(name, version);
    if (table == nullptr)
        table = Add(name, version, {});
    std::vector<HostFunction>& functions = tables_.Find(table)->functions;
    if (functions.size() <= static_cast<std::size_t>(index))
        functions.resize(static_cast<std::size_t>(index) + 1, nullptr);
    functions[static_cast<std::size_t>(index)] = fn;
}

HostExtTable ExtensionRegistry::Find(const std::string& name, int version) const {
    const auto it = std::find_if(order_.begin(), order_.end(), [&](HostExtTable table) {
        const Table* entry = tables_.Find(table);
        return entry->name == name && entry->version == version;
    });
    return it == order_.end() ? nullptr : *it;
}

HostFunction ExtensionRegistry::Function(HostExtTable table, int index) const {
    const Table* entry = tables_.Find(table);
    if (entry == nullptr || index < 0 ||
        static_cast<std::size_t>(index) >= entry->functions.size()) {
        return nullptr;
    }
    return entry->functions[static_cast<std::size_t>(index)];
}

}  // namespace pdfhost
