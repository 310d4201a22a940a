// The plug-in's ribbon items on one main window: the "Sablemark" drop-down in the "Redaction"
// panel of the "Protect" category, with its three entries. The category and the panel are found
// by name and made only when missing; a window whose ribbon already holds the drop-down (a second
// window of the same ribbon) is left untouched.
#pragma once

#include "host/host_api.h"

// The procedures of the entries. "Profile" has no enable procedure: it is always enabled.
struct RibbonProcedures {
    HostRibbonExecuteProc autoRedaction = nullptr;
    HostRibbonEnableProc autoRedactionEnabled = nullptr;
    HostRibbonExecuteProc batchRedact = nullptr;
    HostRibbonEnableProc batchRedactEnabled = nullptr;
    HostRibbonExecuteProc profile = nullptr;
};

// Returns true when the drop-down and its entries were added.
bool BuildRibbon(HostApi& host, HostFrame frame, const RibbonProcedures& procedures);
