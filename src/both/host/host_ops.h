// Compile-time facts about every host operation, expanded from host_ops_list.h: an enumeration,
// and per operation its C function type, its numbers and its name.
#pragma once

#include <cstdint>

#include "host_abi.h"
#include "page_channel_abi.h"

// Turns "(a, b)" into "(HostExtTable table, a, b)": extension operations take the table first.
#define HOST_PREPEND_TABLE(...) (HostExtTable table, __VA_ARGS__)
#define HOST_PREPEND_TABLE_ARG(...) (table, __VA_ARGS__)

namespace hostops {

enum class Op : int {
#define HOST_OP(Name, Category, Selector, Result, Params, Args) Name,
#include "host_ops_list.h"
#undef HOST_OP
};

enum class ExtTable : int {
#define HOST_EXT_TABLE(Id, Name, Version) Id,
#include "host_ops_list.h"
#undef HOST_EXT_TABLE
};

struct ExtTableInfo {
    const char* name;
    int version;
};

inline constexpr ExtTableInfo kExtTables[] = {
#define HOST_EXT_TABLE(Id, Name, Version) {Name, Version},
#include "host_ops_list.h"
#undef HOST_EXT_TABLE
};

constexpr const ExtTableInfo& InfoOf(ExtTable table) {
    return kExtTables[static_cast<int>(table)];
}

enum class ExtOp : int {
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args) Name,
#include "host_ops_list.h"
#undef HOST_EXT_OP
};

template <Op>
struct OpTraits;
#define HOST_OP(Name, Category, Selector, Result, Params, Args) \
    template <>                                                 \
    struct OpTraits<Op::Name> {                                 \
        using Fn = Result BREVAN_HOSTCALL Params;               \
        using ResultType = Result;                              \
        static constexpr uint32_t category = Category;          \
        static constexpr uint32_t selector = Selector;          \
        static constexpr const char* name = #Name;              \
    };
#include "host_ops_list.h"
#undef HOST_OP

template <ExtOp>
struct ExtOpTraits;
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args) \
    template <>                                               \
    struct ExtOpTraits<ExtOp::Name> {                         \
        using Fn = Result BREVAN_HOSTCALL Params;             \
        using ResultType = Result;                            \
        static constexpr ExtTable table = ExtTable::Table;    \
        static constexpr int index = Index;                   \
        static constexpr const char* name = #Name;            \
    };
#include "host_ops_list.h"
#undef HOST_EXT_OP

}  // namespace hostops
