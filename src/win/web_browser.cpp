#include "web_browser.h"

#include <shlwapi.h>

#include <cwchar>

#include "bridge/browser_navigation.h"
#include "bridge/browser_status.h"
#include "bridge/web_message_channel.h"
#include "browser_runtime.h"
#include "com_callback.h"
#include "config/runtime_folder_search.h"
#include "system_paths.h"
#include "util/utf.h"
#include "win_handles.h"

namespace {

constexpr const wchar_t* kComponentMissingText = L"Cannot found the WebView2 component.";
constexpr const wchar_t* kEnvironmentFailedText = L"Cannot create the webview environment.";
constexpr const wchar_t* kControllerFailedText = L"Cannot create webview environment.";

using EnvironmentCompleted = ComCallback<ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler,
                                         HRESULT, ICoreWebView2Environment*>;
using ControllerCompleted = ComCallback<ICoreWebView2CreateCoreWebView2ControllerCompletedHandler,
                                        HRESULT, ICoreWebView2Controller*>;
using WebMessageReceived = ComCallback<ICoreWebView2WebMessageReceivedEventHandler, ICoreWebView2*,
                                       ICoreWebView2WebMessageReceivedEventArgs*>;
using NavigationStarting = ComCallback<ICoreWebView2NavigationStartingEventHandler, ICoreWebView2*,
                                       ICoreWebView2NavigationStartingEventArgs*>;
using NavigationCompleted = ComCallback<ICoreWebView2NavigationCompletedEventHandler,
                                        ICoreWebView2*, ICoreWebView2NavigationCompletedEventArgs*>;
using ScriptCompleted = ComCallback<ICoreWebView2ExecuteScriptCompletedHandler, HRESULT, LPCWSTR>;

// The text of a failure box: the text, then the status in parentheses.
std::wstring FailureText(const wchar_t* text, HRESULT status) {
    wchar_t formatted[160] = {};
    std::swprintf(formatted, sizeof formatted / sizeof formatted[0], L"%ls (0x%08X)", text,
                  static_cast<unsigned>(status));
    return formatted;
}

}  // namespace

// Whether the browser still exists, for the runtime's handlers, which may outlive it.
struct CWebBrowser::Liveness {
    CWebBrowser* browser;
};

// The page's request channel. Replies go to the browser while it exists; a command that takes
// the browser down while it runs still finds its channel here.
struct CWebBrowser::MessageRoute final : PageEndpoint {
    MessageRoute(CWebBrowser& owner, const CommandTable& commands, ChannelFileStream& stream)
        : browser(&owner), channel(commands, *this, stream) {}
    void PostWebMessageAsString(const std::wstring& text) override {
        if (browser != nullptr)
            browser->PostWebMessageAsString(text);
    }
    void ExecuteScript(const std::wstring& script) override {
        if (browser != nullptr)
            browser->ExecuteScript(script);
    }

    CWebBrowser* browser;
    WebMessageChannel channel;
};

CWebBrowser::CWebBrowser(BrowserRuntime& runtime, const CommandTable& commands,
                         ChannelFileStream& stream)
    : runtime_(runtime),
      alive_(std::make_shared<Liveness>(Liveness{this})),
      messages_(std::make_shared<MessageRoute>(*this, commands, stream)) {
    callbacks_[kCreationCompleted] = {};
    callbacks_[kNavigationCompleted] = {};
}

CWebBrowser::~CWebBrowser() {
    alive_->browser = nullptr;
    messages_->browser = nullptr;
    if (window_ != nullptr)
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    CloseWebView();
    if (window_ != nullptr) {
        DiscardPostedCallbacks();
        DestroyWindow(window_);
    }
}

bool CWebBrowser::CreateAsync(DWORD style, const RECT& rect, HWND parent, UINT id,
                              Callback created) {
    callbacks_[kCreationCompleted] = std::move(created);
    return Create(style, rect, parent, id);
}

bool CWebBrowser::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    static const bool registered = [] {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.style = CS_HREDRAW | CS_VREDRAW;
        windowClass.lpfnWndProc = &CWebBrowser::WindowProc;
        windowClass.hInstance = ThisModuleHandle();
        windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        windowClass.lpszClassName = kWindowClass;
        // A failed registration (the class is there already) stops nothing.
        if (RegisterClassExW(&windowClass) == 0)
            GetLastError();
        return true;
    }();
    static_cast<void>(registered);

    window_ = CreateWindowExW(0, kWindowClass, L"", style, rect.left, rect.top,
                              rect.right - rect.left, rect.bottom - rect.top, parent,
                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                              ThisModuleHandle(), this);
    if (window_ == nullptr)
        return false;
    return InitializeWebView();
}

LRESULT CALLBACK CWebBrowser::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<CWebBrowser*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<CWebBrowser*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    return self->OnMessage(message, wParam, lParam);
}

LRESULT CWebBrowser::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (lParam == 0)
                break;
            ResizeToClientArea();
            return 0;
        case kRunCallbackMessage: {
            const std::unique_ptr<Callback> posted(reinterpret_cast<Callback*>(wParam));
            if (posted && *posted)
                (*posted)();
            return 0;
        }
        default:
            // The window lives inside the host's: its destruction must not end the host's
            // message loop, so it posts no quit message.
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

bool CWebBrowser::InitializeWebView() {
    CloseWebView();
    const std::wstring runtimeFolder = runtime_.RuntimeFolder();
    const std::wstring userDataFolder = runtime_.UserDataFolder();
    // The search may find a full browser's folder, which can't host the page.
    if (userDataFolder.empty() || !RuntimeFolderSearch::IsUsable(runtimeFolder))
        return false;
    const CreateCoreWebView2EnvironmentWithOptionsFn createEnvironment = runtime_.LoadLoader();
    if (createEnvironment == nullptr)
        return false;
    const ComPtr<ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler> handler =
        EnvironmentCompleted::Make(
            IID_ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler,
            [alive = alive_](HRESULT status, ICoreWebView2Environment* environment) {
                return alive->browser != nullptr
                           ? alive->browser->OnEnvironmentCreated(status, environment)
                           : E_ABORT;
            });
    const HRESULT status =
        createEnvironment(runtimeFolder.c_str(), userDataFolder.c_str(), nullptr, handler.Get());
    if (FAILED(status)) {
        const bool missing = status == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
        runtime_.ShowFailure(
            FailureText(missing ? kComponentMissingText : kEnvironmentFailedText, status));
        return false;
    }
    return true;
}

HRESULT CWebBrowser::OnEnvironmentCreated(HRESULT status, ICoreWebView2Environment* environment) {
    CHECK_BROWSER_STATUS(status);
    if (environment == nullptr)
        return E_FAIL;
    environment_ = ComPtr<ICoreWebView2Environment>::Retain(environment);
    HRESULT step = S_OK;
    environment2_ =
        environment_.As<ICoreWebView2Environment2>(IID_ICoreWebView2Environment2, &step);
    CHECK_BROWSER_STATUS(step);
    const ComPtr<ICoreWebView2CreateCoreWebView2ControllerCompletedHandler> handler =
        ControllerCompleted::Make(
            IID_ICoreWebView2CreateCoreWebView2ControllerCompletedHandler,
            [alive = alive_](HRESULT result, ICoreWebView2Controller* controller) {
                return alive->browser != nullptr
                           ? alive->browser->OnControllerCreated(result, controller)
                           : E_ABORT;
            });
    CHECK_BROWSER_STATUS(environment_->CreateCoreWebView2Controller(window_, handler.Get()));
    return S_OK;
}

HRESULT CWebBrowser::OnControllerCreated(HRESULT status, ICoreWebView2Controller* controller) {
    if (FAILED(status)) {
        runtime_.ShowFailure(FailureText(kControllerFailedText, status));
        return S_OK;
    }
    if (controller != nullptr) {
        controller_ = ComPtr<ICoreWebView2Controller>::Retain(controller);
        CHECK_BROWSER_STATUS(controller_->get_CoreWebView2(webView_.Put()));
        CHECK_BROWSER_STATUS(controller_->put_IsVisible(TRUE));
        if (webView_) {
            HRESULT step = S_OK;
            webView2_ = webView_.As<ICoreWebView2_2>(IID_ICoreWebView2_2, &step);
            CHECK_BROWSER_STATUS(step);
            CHECK_BROWSER_STATUS(webView_->get_Settings(settings_.Put()));
            if (settings_) {
                CHECK_BROWSER_STATUS(settings_->put_IsScriptEnabled(TRUE));
                CHECK_BROWSER_STATUS(settings_->put_AreDefaultContextMenusEnabled(TRUE));
                CHECK_BROWSER_STATUS(settings_->put_AreDefaultScriptDialogsEnabled(TRUE));
                CHECK_BROWSER_STATUS(settings_->put_IsWebMessageEnabled(TRUE));
            }
            ResizeToClientArea();
            RegisterEventHandlers();
        }
    }
    PostCreationCallback();
    return S_OK;
}

void CWebBrowser::RegisterEventHandlers() {
    webMessageHandler_ = WebMessageReceived::Make(
        IID_ICoreWebView2WebMessageReceivedEventHandler,
        [alive = alive_](ICoreWebView2*, ICoreWebView2WebMessageReceivedEventArgs* args) {
            return alive->browser != nullptr ? alive->browser->OnWebMessage(args) : S_OK;
        });
    CHECK_BROWSER_STATUS(
        webView_->add_WebMessageReceived(webMessageHandler_.Get(), &webMessageReceivedToken_));
    navigationStartingHandler_ = NavigationStarting::Make(
        IID_ICoreWebView2NavigationStartingEventHandler,
        [alive = alive_](ICoreWebView2* sender, ICoreWebView2NavigationStartingEventArgs* args) {
            return alive->browser != nullptr ? alive->browser->OnNavigationStarting(sender, args)
                                             : S_OK;
        });
    CHECK_BROWSER_STATUS(webView_->add_NavigationStarting(navigationStartingHandler_.Get(),
                                                          &navigationStartingToken_));
    navigationCompletedHandler_ = NavigationCompleted::Make(
        IID_ICoreWebView2NavigationCompletedEventHandler,
        [alive = alive_](ICoreWebView2*, ICoreWebView2NavigationCompletedEventArgs*) {
            return alive->browser != nullptr ? alive->browser->OnNavigationCompleted() : S_OK;
        });
    CHECK_BROWSER_STATUS(webView_->add_NavigationCompleted(navigationCompletedHandler_.Get(),
                                                           &navigationCompletedToken_));
}

void CWebBrowser::PostCreationCallback() {
    const Callback& created = callbacks_[kCreationCompleted];
    if (!created)
        return;
    auto posted = std::make_unique<Callback>(created);
    if (PostMessageW(window_, kRunCallbackMessage, reinterpret_cast<WPARAM>(posted.get()), 0))
        posted.release();  // the window's message handler owns it now
}

void CWebBrowser::DiscardPostedCallbacks() {
    MSG message{};
    while (PeekMessageW(&message, window_, kRunCallbackMessage, kRunCallbackMessage, PM_REMOVE))
        delete reinterpret_cast<Callback*>(message.wParam);
}

HRESULT CWebBrowser::OnWebMessage(ICoreWebView2WebMessageReceivedEventArgs* args) {
    LPWSTR text = nullptr;
    const HRESULT status = args->TryGetWebMessageAsString(&text);
    const CoTaskString owned(text);
    CHECK_BROWSER_STATUS(status);
    if (FAILED(status) || owned == nullptr)
        return S_OK;
    // The reply is posted before this handler returns; the route outlives a command that takes
    // this browser down.
    const std::shared_ptr<MessageRoute> route = messages_;
    route->channel.OnWebMessage(ToUtf8(owned.get()));
    return S_OK;
}

HRESULT CWebBrowser::OnNavigationStarting(ICoreWebView2* sender,
                                          ICoreWebView2NavigationStartingEventArgs* args) {
    LPWSTR uri = nullptr;
    CHECK_BROWSER_STATUS(args->get_Uri(&uri));
    const CoTaskString owned(uri);
    if (owned != nullptr && IsNavigationAllowed(owned.get()))
        return S_OK;
    CHECK_BROWSER_STATUS(args->put_Cancel(TRUE));
    BOOL userInitiated = FALSE;
    CHECK_BROWSER_STATUS(args->get_IsUserInitiated(&userInitiated));
    CHECK_BROWSER_STATUS(sender->NavigateToString(kBlockedDomainHtml));
    return S_OK;
}

HRESULT CWebBrowser::OnNavigationCompleted() {
    ShowWindow(window_, SW_SHOW);
    if (navigationCompleted_)
        navigationCompleted_();
    return S_OK;
}

void CWebBrowser::CloseWebView() {
    if (webView_) {
        CHECK_BROWSER_STATUS(webView_->remove_NavigationCompleted(navigationCompletedToken_));
        CHECK_BROWSER_STATUS(webView_->remove_NavigationStarting(navigationStartingToken_));
        CHECK_BROWSER_STATUS(webView_->remove_WebMessageReceived(webMessageReceivedToken_));
        if (controller_)
            CHECK_BROWSER_STATUS(controller_->Close());
        controller_.Reset();
        webView_.Reset();
        webView2_.Reset();
        settings_.Reset();
    }
    environment2_.Reset();
    environment_.Reset();
}

void CWebBrowser::Navigate(const std::wstring& url, Callback done) {
    if (!webView_)
        return;
    callbacks_[kNavigationCompleted] = std::move(done);
    CHECK_BROWSER_STATUS(webView_->Navigate(NormalizeUrl(url).c_str()));
}

void CWebBrowser::NavigateToString(const std::wstring& html, Callback done) {
    if (!webView_)
        return;
    callbacks_[kNavigationCompleted] = std::move(done);
    CHECK_BROWSER_STATUS(webView_->NavigateToString(html.c_str()));
}

void CWebBrowser::NavigatePost(const std::wstring& url, const std::string& content,
                               const std::wstring& headers, Callback done) {
    if (!webView_)
        return;
    callbacks_[kNavigationCompleted] = std::move(done);
    if (!environment2_ || !webView2_)
        return;
    const ComPtr<IStream> stream(SHCreateMemStream(reinterpret_cast<const BYTE*>(content.data()),
                                                   static_cast<UINT>(content.size())));
    ComPtr<ICoreWebView2WebResourceRequest> request;
    CHECK_BROWSER_STATUS(environment2_->CreateWebResourceRequest(url.c_str(), L"POST", stream.Get(),
                                                                 headers.c_str(), request.Put()));
    if (request)
        CHECK_BROWSER_STATUS(webView2_->NavigateWithWebResourceRequest(request.Get()));
}

int CWebBrowser::ExecuteScript(const std::wstring& script, ScriptHandler handler) {
    if (!webView_)
        return kStatusNotUp;
    if (script.empty())
        return kStatusEmptyScript;
    const ComPtr<ICoreWebView2ExecuteScriptCompletedHandler> completed =
        ScriptCompleted::Make(IID_ICoreWebView2ExecuteScriptCompletedHandler,
                              [handler = std::move(handler)](HRESULT status, LPCWSTR resultJson) {
                                  if (handler)
                                      handler(status, resultJson != nullptr ? resultJson : L"");
                                  return S_OK;
                              });
    return webView_->ExecuteScript(script.c_str(), completed.Get());
}

void CWebBrowser::ExecuteScript(const std::wstring& script) {
    ExecuteScript(script, ScriptHandler());
}

void CWebBrowser::PostWebMessageAsString(const std::wstring& text) {
    if (webView_)
        CHECK_BROWSER_STATUS(webView_->PostWebMessageAsString(text.c_str()));
}

void CWebBrowser::Print() {
    if (webView_)
        ExecuteScript(L"window.print();", ScriptHandler());
}

void CWebBrowser::GoBack() {
    BOOL possible = FALSE;
    if (webView_ && SUCCEEDED(webView_->get_CanGoBack(&possible)) && possible)
        CHECK_BROWSER_STATUS(webView_->GoBack());
}

void CWebBrowser::GoForward() {
    BOOL possible = FALSE;
    if (webView_ && SUCCEEDED(webView_->get_CanGoForward(&possible)) && possible)
        CHECK_BROWSER_STATUS(webView_->GoForward());
}

std::wstring CWebBrowser::GetLocationURL() const {
    if (!webView_)
        return {};
    LPWSTR source = nullptr;
    CHECK_BROWSER_STATUS(webView_->get_Source(&source));
    const CoTaskString owned(source);
    if (owned == nullptr || std::wcscmp(owned.get(), L"about:blank") == 0)
        return {};
    return owned.get();
}

RECT CWebBrowser::GetBounds() const {
    RECT bounds{};
    if (controller_)
        CHECK_BROWSER_STATUS(controller_->get_Bounds(&bounds));
    return bounds;
}

void CWebBrowser::ResizeToClientArea() {
    if (!controller_)
        return;
    RECT client{};
    GetClientRect(window_, &client);
    CHECK_BROWSER_STATUS(controller_->put_Bounds(client));
}

void CWebBrowser::EnableScriptDialogs() {
    if (settings_)
        CHECK_BROWSER_STATUS(settings_->put_AreDefaultScriptDialogsEnabled(TRUE));
}

void CWebBrowser::RegisterCallback(int kind, Callback callback) {
    callbacks_[kind] = std::move(callback);
}
