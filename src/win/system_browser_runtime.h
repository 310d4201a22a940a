// The machine's browser runtime: found through the registry and the installation folders, its
// loader library taken from beside the plug-in.
#pragma once

#include "browser_runtime.h"
#include "win_handles.h"

class SystemBrowserRuntime final : public BrowserRuntime {
  public:
    std::wstring RuntimeFolder() override;
    // The local application data folder's "Demos\MfcEdgeDemo".
    std::wstring UserDataFolder() override;
    // "WebView2Loader.dll" from the plug-in's "runtimes\win-x86\native" folder ("win-x64" in a
    // 64-bit build), kept loaded while this object lives.
    CreateCoreWebView2EnvironmentWithOptionsFn LoadLoader() override;
    void ShowFailure(const std::wstring& text) override;

  private:
    ModuleHandle loader_;
};
