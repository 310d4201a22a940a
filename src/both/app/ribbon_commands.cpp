#include "ribbon_commands.h"

#include "app/brevan.h"
#include "app/sign_in_gate.h"
#include "batch/batch_redaction.h"
#include "bridge/page_events.h"

namespace {

Brevan* g_app = nullptr;

int AutoRedaction(void*) {
    if (g_app == nullptr)
        return 0;
    if (SignInGate(*g_app).Pass())
        OpenTaskPane(*g_app);
    return 1;
}

// Enabled while a document is active.
int AutoRedactionEnabled(void*) {
    return g_app != nullptr && g_app->host().HostAppGetActiveDoc() != nullptr ? 1 : 0;
}

// The batch run starts from the files the user picks, so it is offered only while no document
// is active.
int BatchRedactEnabled(void*) {
    return g_app != nullptr && g_app->host().HostAppGetActiveDoc() == nullptr ? 1 : 0;
}

// The batch run follows the gate: the file list, then the page dialog.
int BatchRedact(void*) {
    if (g_app == nullptr)
        return 0;
    if (SignInGate(*g_app).Pass() && g_app->batch)
        g_app->batch->Run();
    return 1;
}

int Profile(void*) {
    if (g_app == nullptr)
        return 0;
    if (SignInGate(*g_app).Pass())
        OpenAccountPage(*g_app);
    return 1;
}

}  // namespace

RibbonProcedures RibbonProceduresFor(Brevan& app) {
    g_app = &app;
    RibbonProcedures procedures;
    procedures.autoRedaction = &AutoRedaction;
    procedures.autoRedactionEnabled = &AutoRedactionEnabled;
    procedures.batchRedact = &BatchRedact;
    procedures.batchRedactEnabled = &BatchRedactEnabled;
    procedures.profile = &Profile;
    return procedures;
}

void UnbindRibbonProcedures(const Brevan& app) {
    if (g_app == &app)
        g_app = nullptr;
}

void OpenTaskPane(Brevan& app) {
    app.pane.SetShown(true);
    app.host().HostAppShowPane(Brevan::kTaskPaneName, 1);
    app.accountPage = false;
    ChangePageEvent(app).Send();
}

void OpenAccountPage(Brevan& app) {
    app.accountPage = true;
    app.pane.SetShown(true);
    app.host().HostAppShowPane(Brevan::kTaskPaneName, 1);
    ChangePageEvent(app).Send();
}
