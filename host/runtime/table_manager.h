// The host's function table: (category, selector) -> function. Registration is typed by the
// operation list, so an implementation with the wrong signature does not compile.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "host_ops.h"

namespace pdfhost {

class TableManager {
  public:
    TableManager();
    ~TableManager();
    TableManager(const TableManager&) = delete;
    TableManager& operator=(const TableManager&) = delete;

    template <hostops::Op op>
    void Register(typename hostops::OpTraits<op>::Fn* fn) {
        using Traits = hostops::OpTraits<op>;
        Add(Traits::category, Traits::selector, reinterpret_cast<HostFunction>(fn), Traits::name);
    }

    // The function registered for the pair, or null.
    HostFunction Lookup(uint32_t category, uint32_t selector) const;
    std::size_t Size() const { return functions_.size(); }

    // Makes this manager the one that the ABI record answers from; a manager stops answering when
    // it is destroyed.
    void Activate();
    // The record handed to plug-ins. Its lookup answers from the active manager and remembers the
    // plug-in id of the call as the calling plug-in.
    static HostTableManager* Abi();
    // The plug-in id of the latest lookup: the plug-in whose call is being served.
    static uint32_t CallingPlugin();

  private:
    void Add(uint32_t category, uint32_t selector, HostFunction fn, const char* name);
    static HostFunction AbiLookup(uint32_t category, uint32_t selector, uint32_t pluginId);

    std::unordered_map<uint64_t, HostFunction> functions_;
};

}  // namespace pdfhost
