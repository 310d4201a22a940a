// What the ribbon entries do. Each entry passes the sign-in gate first; "AutoRedaction" then
// opens the task pane on the page's home, "Profile" on the account page, and "BatchRedact" goes
// on to the batch run. The host calls the entries' procedures without client data of the
// plug-in's, so they reach the application object that built the ribbon.
#pragma once

#include "app/ribbon_builder.h"

class Brevan;

// The procedures that reach `app`, for BuildRibbon. `app` stays the target until it is unbound.
RibbonProcedures RibbonProceduresFor(Brevan& app);
// Forgets `app`, so that a later press reaches nothing; for the application's destruction.
void UnbindRibbonProcedures(const Brevan& app);

// The entries' actions, after the gate.
void OpenTaskPane(Brevan& app);
void OpenAccountPage(Brevan& app);
