// HostApi: the interface through which all plug-in logic reaches the editor. One virtual per host
// operation, named as in host_ops_list.h; extension operations take the extension table first.
#pragma once

#include "host_ops.h"

class HostApi {
  public:
    virtual ~HostApi() = default;

#define HOST_OP(Name, Category, Selector, Result, Params, Args) virtual Result Name Params = 0;
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args) \
    virtual Result Name HOST_PREPEND_TABLE Params = 0;
#include "host_ops_list.h"
#undef HOST_OP
#undef HOST_EXT_OP
};
