// The plug-in's small modal dialogs on Windows, as the system's task dialogs: the welcome dialog
// before a first use, the info dialog, and the result of a batch run.
#pragma once

#include <windows.h>

#include "batch/batch_choice.h"

// 0 the user chose to sign in, 1 to sign up, 2 not now (also when the dialog was closed).
int ShowWelcomeTaskDialog(HWND parent, bool channelPackage);
// 3 the user goes on, 2 not now.
int ShowInfoTaskDialog(HWND parent);
// The run's message, and the files that were not processed; 1 once the user ends it with OK.
int ShowBatchResultTaskDialog(HWND parent, const BatchOutcome& outcome);
