#include "ribbon_commands.h"

#include "app/task_pane_state.h"
#include "batch/batch_redaction.h"
#include "bridge/page_events.h"

namespace {

// The host calls an entry's procedures with the entry's own handle and nothing of the plug-in's,
// so they reach the plug-in through this.
const RibbonServices* g_ribbon = nullptr;

int BREVAN_HOSTCALL AutoRedaction(void*) {
    if (g_ribbon == nullptr)
        return 0;
    if (SignInGate(g_ribbon->signIn).Pass())
        OpenTaskPane(*g_ribbon);
    return 1;
}

// Enabled while a document is active.
int BREVAN_HOSTCALL AutoRedactionEnabled(void*) {
    return g_ribbon != nullptr && g_ribbon->host.HostAppGetActiveDoc() != nullptr ? 1 : 0;
}

// The batch run starts from the files the user picks, so it is offered only while no document
// is active.
int BREVAN_HOSTCALL BatchRedactEnabled(void*) {
    return g_ribbon != nullptr && g_ribbon->host.HostAppGetActiveDoc() == nullptr ? 1 : 0;
}

// The batch run follows the gate: the file list, then the page dialog.
int BREVAN_HOSTCALL BatchRedact(void*) {
    if (g_ribbon == nullptr)
        return 0;
    if (SignInGate(g_ribbon->signIn).Pass() && g_ribbon->batch)
        g_ribbon->batch->Run();
    return 1;
}

int BREVAN_HOSTCALL Profile(void*) {
    if (g_ribbon == nullptr)
        return 0;
    if (SignInGate(g_ribbon->signIn).Pass())
        OpenAccountPage(*g_ribbon);
    return 1;
}

}  // namespace

RibbonProcedures RibbonProceduresFor(const RibbonServices& services) {
    g_ribbon = &services;
    RibbonProcedures procedures;
    procedures.autoRedaction = &AutoRedaction;
    procedures.autoRedactionEnabled = &AutoRedactionEnabled;
    procedures.batchRedact = &BatchRedact;
    procedures.batchRedactEnabled = &BatchRedactEnabled;
    procedures.profile = &Profile;
    return procedures;
}

void UnbindRibbonProcedures(const RibbonServices& services) {
    if (g_ribbon == &services)
        g_ribbon = nullptr;
}

void OpenTaskPane(const RibbonServices& services) {
    services.pane.SetShown(true);
    services.host.HostAppShowPane(kTaskPaneName, 1);
    services.accountPage = false;
    ChangePageEvent(services.page).Send();
}

void OpenAccountPage(const RibbonServices& services) {
    services.accountPage = true;
    services.pane.SetShown(true);
    services.host.HostAppShowPane(kTaskPaneName, 1);
    ChangePageEvent(services.page).Send();
}
