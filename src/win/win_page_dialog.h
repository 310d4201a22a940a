// The page dialogs of the Windows layer: the task pane's, a child window over the pane's window,
// and the batch run's modal window "Batch Redaction". Each shows the page in a CWebBrowser of its
// own; when that can't start it borrows the host's web view through the host's browser table,
// whose page reaches the commands through window.external.DispatchFun. The host's view is driven
// only through that table: it is opened on an address and closed, so showing another address
// opens it anew, and script calls can't reach its page.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "bridge/host_view_channel.h"
#include "bridge/page_dialog.h"
#include "config/page_address.h"
#include "page_files.h"

class BrowserRuntime;
class CWebBrowser;
struct PageDialogServices;

class WinPageDialog final : public BatchPageDialog {
  public:
    // The run's result when the window is closed rather than ended with OK.
    static constexpr int kClosed = 2;
    static constexpr const wchar_t* kWindowClass = L"SablemarkPageDialog";

    // Makes the window over `parent` and starts the browser; the batch dialog opens the host's
    // view at once when the browser can't start, the task pane's waits for its first Reload.
    WinPageDialog(const PageDialogServices& services, BrowserRuntime& runtime, PageDialogKind kind,
                  HWND parent);
    // Takes the browser down and gives the host its web view back.
    ~WinPageDialog() override;
    WinPageDialog(const WinPageDialog&) = delete;
    WinPageDialog& operator=(const WinPageDialog&) = delete;

    HostWindow Window() const override { return reinterpret_cast<HostWindow>(window_); }
    void Show() override { ShowWindow(window_, SW_SHOW); }
    void Reload(bool rebuild) override;
    void CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                    std::wstring* result) override;
    void HideHostView() override;

    int RunModal() override;
    void EndModal(int result) override;
    void SetVisible(bool visible) override { ShowWindow(window_, visible ? SW_SHOW : SW_HIDE); }

    const std::wstring& url() const { return url_; }
    bool webViewStarted() const { return webViewStarted_; }
    bool hostViewOpen() const { return hostView_ != nullptr; }

  private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void StartBrowser();
    void OnBrowserCreated();
    void ShowPage(const std::wstring& address);
    void ShowOnline();
    void ShowOffline();
    // Opens the host's view on `address`, closing one that is open; the host's answer.
    int OpenHostView(const std::wstring& address);
    void CloseHostView();
    std::wstring PageFilePath(PageFile file) const;
    bool IsOnline() const;
    const char* LogPrefix() const;

    const PageDialogServices& services_;
    BrowserRuntime& runtime_;
    const PageDialogKind kind_;
    HWND parent_;
    HWND window_ = nullptr;
    HostViewChannel viewChannel_;
    std::unique_ptr<CWebBrowser> browser_;
    HostWebView hostView_ = nullptr;
    bool webViewStarted_ = false;
    std::wstring url_;
    bool modalRunning_ = false;
    int modalResult_ = 0;
};
