// CWebBrowser: the child window that shows the page in the embedded browser runtime. It finds the
// runtime and starts it asynchronously, polices navigation, serves every web message of the page
// as a bridge request (the reply goes back as a string message) and runs scripts in the page,
// which is how events arrive there.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "bridge/page_endpoint.h"
#include "com_ptr.h"
#include "webview2_interfaces.h"

class BrowserRuntime;
class CommandTable;
struct ChannelFileStream;

class CWebBrowser final : public PageEndpoint {
  public:
    using Callback = std::function<void()>;
    // The script's status and its result as JSON text.
    using ScriptHandler = std::function<void(HRESULT status, const std::wstring& resultJson)>;

    enum CallbackKind : int { kCreationCompleted = 0, kNavigationCompleted = 1 };
    // Statuses of ExecuteScript that the runtime is not asked for.
    static constexpr int kStatusNotUp = 6;
    static constexpr int kStatusEmptyScript = 87;
    // The window message that carries a posted creation callback.
    static constexpr UINT kRunCallbackMessage = 0x8000;
    static constexpr const wchar_t* kWindowClass = L"EdgeBrowserHost";

    CWebBrowser(BrowserRuntime& runtime, const CommandTable& commands, ChannelFileStream& stream);
    // Takes the browser and the window down.
    ~CWebBrowser() override;
    CWebBrowser(const CWebBrowser&) = delete;
    CWebBrowser& operator=(const CWebBrowser&) = delete;

    // Creates the window in `parent` and begins start-up; `created` runs from the message loop
    // once the runtime has answered. True when start-up was begun.
    bool CreateAsync(DWORD style, const RECT& rect, HWND parent, UINT id, Callback created);
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    // Navigation does nothing until the browser is up. The callback is kept under
    // kNavigationCompleted.
    void Navigate(const std::wstring& url, Callback done = {});
    void NavigateToString(const std::wstring& html, Callback done = {});
    // A POST navigation; `headers` are "Name: value" lines separated by "\r\n".
    void NavigatePost(const std::wstring& url, const std::string& content,
                      const std::wstring& headers, Callback done = {});

    // kStatusNotUp before start-up has completed, kStatusEmptyScript for an empty script;
    // otherwise the runtime's status.
    int ExecuteScript(const std::wstring& script, ScriptHandler handler);
    void Print();
    void GoBack();
    void GoForward();
    // The page's address; empty for "about:blank" and while the browser is not up.
    std::wstring GetLocationURL() const;
    RECT GetBounds() const;
    void ResizeToClientArea();
    void EnableScriptDialogs();
    void RegisterCallback(int kind, Callback callback);
    // Takes the runtime's objects down; the window stays.
    void CloseWebView();

    HWND Window() const { return window_; }
    bool IsUp() const { return static_cast<bool>(webView_); }
    // Called each time a navigation has completed, after the window was shown.
    void SetNavigationCompleted(std::function<void()> completed) {
        navigationCompleted_ = std::move(completed);
    }

    // PageEndpoint: replies as string messages, events as scripts without a handler.
    void PostWebMessageAsString(const std::wstring& text) override;
    void ExecuteScript(const std::wstring& script) override;

  private:
    struct Liveness;
    struct MessageRoute;

    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool InitializeWebView();
    HRESULT OnEnvironmentCreated(HRESULT status, ICoreWebView2Environment* environment);
    HRESULT OnControllerCreated(HRESULT status, ICoreWebView2Controller* controller);
    void RegisterEventHandlers();
    HRESULT OnWebMessage(ICoreWebView2WebMessageReceivedEventArgs* args);
    HRESULT OnNavigationStarting(ICoreWebView2* sender,
                                 ICoreWebView2NavigationStartingEventArgs* args);
    HRESULT OnNavigationCompleted();
    // Posts the creation callback to this window, to run once from the message loop.
    void PostCreationCallback();
    // Frees the callbacks still waiting in the queue of a window about to go.
    void DiscardPostedCallbacks();

    BrowserRuntime& runtime_;
    HWND window_ = nullptr;
    std::shared_ptr<Liveness> alive_;
    std::shared_ptr<MessageRoute> messages_;
    std::map<int, Callback> callbacks_;
    std::function<void()> navigationCompleted_;

    ComPtr<ICoreWebView2Environment> environment_;
    ComPtr<ICoreWebView2Environment2> environment2_;
    ComPtr<ICoreWebView2> webView_;
    ComPtr<ICoreWebView2_2> webView2_;
    ComPtr<ICoreWebView2Controller> controller_;
    ComPtr<ICoreWebView2Settings> settings_;

    EventRegistrationToken navigationCompletedToken_{};
    EventRegistrationToken navigationStartingToken_{};
    EventRegistrationToken webMessageReceivedToken_{};
    ComPtr<ICoreWebView2WebMessageReceivedEventHandler> webMessageHandler_;
    ComPtr<ICoreWebView2NavigationStartingEventHandler> navigationStartingHandler_;
    ComPtr<ICoreWebView2NavigationCompletedEventHandler> navigationCompletedHandler_;
};
