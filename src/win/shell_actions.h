// What the plug-in asks of the shell and of the host's windows.
#pragma once

#include <string>

#include "host/host_abi.h"

// Opens `url` with the user's default handler; false when the shell refuses.
bool OpenWithShell(const std::wstring& url);
// Sends the command message `command` to `window` and returns once the window has handled it.
void SendCommandMessage(HostWindow window, unsigned command);
