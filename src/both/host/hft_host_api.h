// HftHostApi: HostApi over the editor's table manager. Every call looks its function up again with
// (category, selector, plug-in id), casts it to the type of its row and calls it. A function the
// editor does not provide is reported once through the missing-function callback and answers the
// neutral result of its type (null, zero, nothing), so that a host that lacks a function degrades
// to a failed command instead of a crash.
#pragma once

#include <functional>
#include <string>
#include <unordered_set>

#include "host_api.h"

class HftHostApi final : public HostApi {
  public:
    using MissingHandler = std::function<void(const char* operation)>;

    HftHostApi(const HostTableManager* manager, uint32_t pluginId, MissingHandler onMissing = {});

#define HOST_OP(Name, Category, Selector, Result, Params, Args) \
    Result Name Params override {                               \
        return Call<hostops::Op::Name> Args;                    \
    }
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args)             \
    Result Name HOST_PREPEND_TABLE Params override {                      \
        return CallExt<hostops::ExtOp::Name> HOST_PREPEND_TABLE_ARG Args; \
    }
#include "host_ops_list.h"
#undef HOST_OP
#undef HOST_EXT_OP

  private:
    template <hostops::Op op, typename... Args>
    typename hostops::OpTraits<op>::ResultType Call(Args... args) {
        using Traits = hostops::OpTraits<op>;
        HostFunction found = manager_ != nullptr && manager_->lookup != nullptr
                                 ? manager_->lookup(Traits::category, Traits::selector, pluginId_)
                                 : nullptr;
        if (found == nullptr) {
            ReportMissing(Traits::name);
            return typename Traits::ResultType();
        }
        return reinterpret_cast<typename Traits::Fn*>(found)(args...);
    }

    template <hostops::ExtOp op, typename... Args>
    typename hostops::ExtOpTraits<op>::ResultType CallExt(HostExtTable table, Args... args) {
        using Traits = hostops::ExtOpTraits<op>;
        HostFunction found =
            table != nullptr ? HostExtensionGetFunction(table, Traits::index) : nullptr;
        if (found == nullptr)
            return typename Traits::ResultType();
        return reinterpret_cast<typename Traits::Fn*>(found)(args...);
    }

    void ReportMissing(const char* operation);

    const HostTableManager* manager_;
    uint32_t pluginId_;
    MissingHandler onMissing_;
    std::unordered_set<std::string> reported_;
};
