// What the ribbon entries do. Each entry passes the sign-in gate first; "AutoRedaction" then
// opens the task pane on the page's home, "Profile" on the account page, and "BatchRedact" goes
// on to the batch run.
#pragma once

#include <memory>

#include "app/ribbon_builder.h"
#include "app/sign_in_gate.h"

class BatchRedaction;
class PageEventSink;
class TaskPaneState;

// What the ribbon entries use of the plug-in.
struct RibbonServices {
    HostApi& host;
    const SignInGateServices& signIn;
    // The user's choice of the pane, and whether it shows the account page.
    TaskPaneState& pane;
    bool& accountPage;
    PageEventSink& page;
    // The batch session, once the host is bound.
    const std::unique_ptr<BatchRedaction>& batch;
};

// The procedures that reach `services`, for BuildRibbon. `services` stays their target until it
// is unbound.
RibbonProcedures RibbonProceduresFor(const RibbonServices& services);
// Forgets `services`, so that a later press reaches nothing; for the application's destruction.
void UnbindRibbonProcedures(const RibbonServices& services);

// The entries' actions, after the gate.
void OpenTaskPane(const RibbonServices& services);
void OpenAccountPage(const RibbonServices& services);
