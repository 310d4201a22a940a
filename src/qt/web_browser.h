// CWebBrowser: the child window that shows the page in the embedded web engine. It starts the
// engine asynchronously, polices navigation, serves every web message of the page as a bridge
// request (its reply goes back as a string message) and runs scripts in the page, which is how
// events arrive there. The page reaches it through an injected window.chrome.webview.
#pragma once

#include <QRect>
#include <QVariant>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "app/platform_services.h"

class BrowserPage;
class QWebChannel;
class QWebEngineView;
class WebMessageChannel;
class WebViewBridge;
struct PageDialogServices;

class CWebBrowser final : public QWidget, public PageEndpoint {
  public:
    using Callback = std::function<void()>;
    using ScriptHandler = std::function<void(const QVariant& result)>;

    enum CallbackKind : int { kCreationCompleted = 0, kNavigationCompleted = 1 };
    // Statuses of ExecuteScript.
    static constexpr int kStatusOk = 0;
    static constexpr int kStatusNotUp = 6;
    static constexpr int kStatusEmptyScript = 87;

    explicit CWebBrowser(const PageDialogServices& services);
    ~CWebBrowser() override;
    CWebBrowser(const CWebBrowser&) = delete;
    CWebBrowser& operator=(const CWebBrowser&) = delete;

    // Places the window in `parent` and begins start-up; `created` runs from the event loop once
    // the browser is up. True when start-up was begun.
    bool CreateAsync(QWidget* parent, const QRect& rect, Callback created);
    bool Create(QWidget* parent, const QRect& rect);

    // Navigation does nothing until the browser is up. The callback is kept under
    // kNavigationCompleted.
    void Navigate(const std::wstring& url, Callback done = {});
    void NavigateToString(const std::wstring& html, Callback done = {});
    // A POST navigation; `headers` are "Name: value" lines separated by "\r\n".
    void NavigatePost(const std::wstring& url, const std::string& content,
                      const std::wstring& headers, Callback done = {});

    // kStatusNotUp before start-up has completed, kStatusEmptyScript for an empty script;
    // otherwise the script is queued in the page and kStatusOk returned.
    int ExecuteScript(const std::wstring& script, ScriptHandler handler);
    void Print();
    void GoBack();
    void GoForward();
    // The page's address; empty for "about:blank" and while the browser is not up.
    std::wstring GetLocationURL() const;
    QRect GetBounds() const;
    void ResizeToClientArea();
    void EnableScriptDialogs();
    void RegisterCallback(int kind, Callback callback);
    // Takes the engine's objects down; the window stays.
    void CloseWebView();

    bool IsUp() const { return view_ != nullptr; }
    // Called each time a navigation has completed, once the browser shows.
    void SetNavigationCompleted(std::function<void()> completed) {
        navigationCompleted_ = std::move(completed);
    }

    // PageEndpoint: replies as "message" events, events as scripts, in the order they are given.
    void PostWebMessageAsString(const std::wstring& text) override;
    void ExecuteScript(const std::wstring& script) override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    bool InitializeWebView();
    // The engine's part of start-up, run from the event loop.
    void OnEngineReady();
    void OnWebMessage(const QString& text, bool isString);
    void OnNavigationCompleted();

    const PageDialogServices& services_;
    std::map<int, Callback> callbacks_;
    QWebEngineView* view_ = nullptr;
    BrowserPage* page_ = nullptr;
    QWebChannel* channel_ = nullptr;
    WebViewBridge* bridge_ = nullptr;
    // The page's request channel. A command may take this browser down while it runs; what the
    // channel still needs afterwards lives in the route, which the running request keeps.
    struct MessageRoute;
    std::shared_ptr<MessageRoute> messages_;
    std::function<void()> navigationCompleted_;
};
