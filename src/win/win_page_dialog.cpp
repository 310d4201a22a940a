#include "win_page_dialog.h"

#include "app/page_dialog_services.h"
#include "bridge/page_script.h"
#include "config/brevan_config.h"
#include "config/internet_connection.h"
#include "config/service_config.h"
#include "host/extension_tables.h"
#include "logging/async_logger.h"
#include "system_paths.h"
#include "util/utf.h"
#include "web_browser.h"

namespace {

constexpr int kBatchWidth = 1100;
constexpr int kBatchHeight = 760;
// The browser's window styles: a visible child.
constexpr DWORD kBrowserStyle = WS_CHILD | WS_VISIBLE;

void RegisterDialogClass(WNDPROC procedure) {
    static const bool registered = [procedure] {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = procedure;
        windowClass.hInstance = ThisModuleHandle();
        windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        windowClass.lpszClassName = WinPageDialog::kWindowClass;
        return RegisterClassExW(&windowClass) != 0;
    }();
    static_cast<void>(registered);
}

// The area the browser covers: the parent's whole window, in the dialog's client coordinates,
// for the pane's dialog; the client area for the batch window.
RECT BrowserArea(HWND dialog, HWND parent, PageDialogKind kind) {
    RECT area{};
    GetClientRect(dialog, &area);
    if (kind == PageDialogKind::TaskPane && parent != nullptr) {
        RECT outer{};
        GetWindowRect(parent, &outer);
        MapWindowPoints(HWND_DESKTOP, dialog, reinterpret_cast<POINT*>(&outer), 2);
        area = outer;
    }
    return area;
}

}  // namespace

WinPageDialog::WinPageDialog(const PageDialogServices& services, BrowserRuntime& runtime,
                             PageDialogKind kind, HWND parent)
    : services_(services),
      runtime_(runtime),
      kind_(kind),
      parent_(parent),
      viewChannel_(
          services.host, services.commands, *this,
          kind == PageDialogKind::TaskPane ? services.paneViewStream : services.batchViewStream) {
    RegisterDialogClass(&WinPageDialog::WindowProc);
    if (kind_ == PageDialogKind::TaskPane) {
        RECT client{};
        if (parent_ != nullptr)
            GetClientRect(parent_, &client);
        window_ = CreateWindowExW(0, kWindowClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                                  0, client.right, client.bottom, parent_, nullptr,
                                  ThisModuleHandle(), this);
    } else {
        window_ = CreateWindowExW(0, kWindowClass, L"Batch Redaction",
                                  WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN,
                                  CW_USEDEFAULT, CW_USEDEFAULT, kBatchWidth, kBatchHeight, parent_,
                                  nullptr, ThisModuleHandle(), this);
    }
    PageFilePath(PageFile::Offline);
    PageFilePath(PageFile::Upgrade);
    // The pane shows the host's view, if any, while the browser starts and loads.
    if (kind_ == PageDialogKind::TaskPane)
        OpenHostView(url_);
    StartBrowser();
    if (kind_ == PageDialogKind::Batch && !webViewStarted_ && hostView_ == nullptr)
        Reload(false);
}

WinPageDialog::~WinPageDialog() {
    browser_.reset();
    CloseHostView();
    if (window_ != nullptr) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
}

LRESULT CALLBACK WinPageDialog::WindowProc(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<WinPageDialog*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<WinPageDialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    return self->OnMessage(message, wParam, lParam);
}

LRESULT WinPageDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            // The pane's browser follows the pane's size, without moving.
            if (kind_ == PageDialogKind::TaskPane && webViewStarted_ && browser_) {
                SetWindowPos(browser_->Window(), nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam),
                             SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
            }
            break;
        case WM_CLOSE:
            if (kind_ == PageDialogKind::Batch) {
                EndModal(kClosed);
                return 0;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

const char* WinPageDialog::LogPrefix() const {
    return kind_ == PageDialogKind::TaskPane ? "Brevan Auto redact" : "Brevan Batch redact";
}

std::wstring WinPageDialog::PageFilePath(PageFile file) const {
    const std::wstring folder =
        services_.config ? services_.config->serviceFolder() : std::wstring();
    return folder.empty() ? std::wstring() : EnsurePageFile(folder, file);
}

bool WinPageDialog::IsOnline() const {
    return IsConnectedToInternet(services_.config.get(), services_.platform);
}

void WinPageDialog::StartBrowser() {
    browser_ = std::make_unique<CWebBrowser>(runtime_, services_.commands, services_.browserStream);
    webViewStarted_ = browser_->CreateAsync(kBrowserStyle, BrowserArea(window_, parent_, kind_),
                                            window_, 0, [this] { OnBrowserCreated(); });
}

void WinPageDialog::OnBrowserCreated() {
    browser_->SetNavigationCompleted([this] { HideHostView(); });
    browser_->EnableScriptDialogs();
    BuildPageUrl(services_.host, services_.config.get(), services_.serviceConfig.get(),
                 services_.accountPage, kind_, url_);
    if (IsOnline() && !url_.empty()) {
        // Shown once loaded; meanwhile the host's view, if any, stays in front.
        ShowWindow(browser_->Window(), SW_HIDE);
        browser_->Navigate(url_);
    } else {
        browser_->Navigate(FileAddress(PageFilePath(PageFile::Offline)));
    }
}

void WinPageDialog::Reload(bool rebuild) {
    if (url_.empty() || rebuild) {
        BuildPageUrl(services_.host, services_.config.get(), services_.serviceConfig.get(),
                     services_.accountPage, kind_, url_);
    }
    LogPageReload(services_.logger, kind_, url_);
    ShowPage(url_);
}

void WinPageDialog::ShowPage(const std::wstring& address) {
    if (webViewStarted_ && browser_) {
        browser_->Navigate(address);
        return;
    }
    url_ = address;
    if (IsOnline() && !url_.empty())
        ShowOnline();
    else
        ShowOffline();
}

void WinPageDialog::ShowOnline() {
    if (kind_ == PageDialogKind::Batch)
        services_.logger.Log(kLogInfo, "Brevan Batch redact start ShowOnlineHtml.");
    if (OpenHostView(url_) == 0 || hostView_ == nullptr) {
        if (kind_ == PageDialogKind::Batch)
            services_.logger.Log(kLogError,
                                 "Brevan Batch redact ShowOnlineHtml OpenWebPage error.");
        return;
    }
    if (kind_ == PageDialogKind::TaskPane)
        services_.logger.Log(kLogInfo, "Brevan Auto redact ShowOnlineHtml: %", ToUtf8(url_));
    else
        services_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml :%", ToUtf8(url_));
}

void WinPageDialog::ShowOffline() {
    services_.logger.Log(kLogInfo, "% ShowOfflineHtml.", LogPrefix());
    OpenHostView(FileAddress(PageFilePath(PageFile::Offline)));
}

int WinPageDialog::OpenHostView(const std::wstring& address) {
    if (!services_.browserExt || services_.browserExt->table == nullptr)
        return 0;
    CloseHostView();
    HostWebView view = nullptr;
    const int opened = services_.host.BrowserExtOpenWebPage(
        services_.browserExt->table, address.c_str(), Window(), &viewChannel_.record(), &view);
    hostView_ = view;
    return opened;
}

void WinPageDialog::CloseHostView() {
    if (hostView_ == nullptr)
        return;
    hostView_ = nullptr;
    if (services_.browserExt && services_.browserExt->table != nullptr)
        services_.host.BrowserExtCloseWebPage(services_.browserExt->table, Window());
}

void WinPageDialog::CallScript(const std::wstring&, const std::vector<std::wstring>& arguments,
                               std::wstring*) {
    if (webViewStarted_ && browser_)
        browser_->ExecuteScript(DispatchEventScript(arguments), CWebBrowser::ScriptHandler());
}

void WinPageDialog::HideHostView() {
    CloseHostView();
}

int WinPageDialog::RunModal() {
    // A loop of its own, so that hiding the window doesn't end the run.
    const bool ownerEnabled = parent_ != nullptr && !EnableWindow(parent_, FALSE);
    modalRunning_ = true;
    modalResult_ = 0;
    ShowWindow(window_, SW_SHOW);
    MSG message{};
    while (modalRunning_ && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (message.message == WM_QUIT)
        PostQuitMessage(static_cast<int>(message.wParam));
    if (ownerEnabled)
        EnableWindow(parent_, TRUE);
    return modalResult_;
}

void WinPageDialog::EndModal(int result) {
    modalResult_ = result;
    modalRunning_ = false;
    ShowWindow(window_, SW_HIDE);
    // Wakes the modal loop, which may be waiting for a message.
    PostMessageW(window_, WM_NULL, 0, 0);
}
