// The plug-in's small modal dialogs on Windows, as the system's task dialogs: the welcome dialog
// before a first use and the info dialog.
#pragma once

#include <windows.h>

// 0 the user chose to sign in, 1 to sign up, 2 not now (also when the dialog was closed).
int ShowWelcomeTaskDialog(HWND parent, bool channelPackage);
// 3 the user goes on, 2 not now.
int ShowInfoTaskDialog(HWND parent);
