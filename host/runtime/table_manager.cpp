#include "table_manager.h"

#include <stdexcept>
#include <string>

namespace pdfhost {
namespace {

TableManager* g_active = nullptr;
uint32_t g_callingPlugin = 0;

uint64_t KeyOf(uint32_t category, uint32_t selector) {
    return (static_cast<uint64_t>(category) << 32) | selector;
}

}  // namespace

TableManager::TableManager() = default;

TableManager::~TableManager() {
    if (g_active == this)
        g_active = nullptr;
}

void TableManager::Add(uint32_t category, uint32_t selector, HostFunction fn, const char* name) {
    if (fn == nullptr)
        throw std::logic_error(std::string("null function for ") + name);
    const auto [it, inserted] = functions_.emplace(KeyOf(category, selector), fn);
    if (!inserted && it->second != fn) {
        throw std::logic_error(std::string("two functions registered for ") + name);
    }
}

HostFunction TableManager::Lookup(uint32_t category, uint32_t selector) const {
    const auto it = functions_.find(KeyOf(category, selector));
    return it == functions_.end() ? nullptr : it->second;
}

void TableManager::Activate() {
    g_active = this;
}

HostFunction TableManager::AbiLookup(uint32_t category, uint32_t selector, uint32_t pluginId) {
    g_callingPlugin = pluginId;
    return g_active != nullptr ? g_active->Lookup(category, selector) : nullptr;
}

HostTableManager* TableManager::Abi() {
    static HostTableManager record{sizeof(HostTableManager), &TableManager::AbiLookup};
    return &record;
}

uint32_t TableManager::CallingPlugin() {
    return g_callingPlugin;
}

}  // namespace pdfhost
