// What the browser window needs of the machine to start the embedded browser: where its runtime
// is, where the user's browser data goes, the runtime's loader, and a way to tell the user of a
// failure. The system's own is SystemBrowserRuntime; tests give theirs.
#pragma once

#include <string>

#include "webview2_interfaces.h"

class BrowserRuntime {
  public:
    virtual ~BrowserRuntime() = default;
    // The runtime's folder, found once per process; empty when there is none.
    virtual std::wstring RuntimeFolder() = 0;
    // The folder of the browser's user data; empty when it can't be had.
    virtual std::wstring UserDataFolder() = 0;
    // Loads the runtime's loader library and gives its entry that starts an environment; null when
    // the library can't be loaded.
    virtual CreateCoreWebView2EnvironmentWithOptionsFn LoadLoader() = 0;
    // A message box with the caption "Failure".
    virtual void ShowFailure(const std::wstring& text) = 0;
};
