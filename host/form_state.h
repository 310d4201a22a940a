// What the host keeps of one document's interactive form besides the file: the handles of its
// form environment and interactive form, and whether a value written through the form rebuilds
// the appearances of its controls.
#pragma once

#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

struct FormState {
    HostFormEnv environment = reinterpret_cast<HostFormEnv>(NextHandleValue());
    NdxInterForm form = reinterpret_cast<NdxInterForm>(NextHandleValue());
    bool buildAppearances = true;
};

}  // namespace pdfhost
