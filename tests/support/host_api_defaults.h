// A host that offers nothing: every operation answers the neutral result of its type. Test fakes
// derive from it and override what their scenario needs.
#pragma once

#include <type_traits>

#include "host/host_api.h"

template <typename T>
T NeutralResult() {
    if constexpr (!std::is_void_v<T>)
        return T{};
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-parameter"
class HostApiDefaults : public HostApi {
  public:
#define HOST_OP(Name, Category, Selector, Result, Params, Args) \
    Result Name Params override {                               \
        return NeutralResult<Result>();                         \
    }
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args) \
    Result Name HOST_PREPEND_TABLE Params override {          \
        return NeutralResult<Result>();                       \
    }
#include "host/host_ops_list.h"
#undef HOST_OP
#undef HOST_EXT_OP
};
#pragma GCC diagnostic pop
