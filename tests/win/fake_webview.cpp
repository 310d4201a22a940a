#include "fake_webview.h"

#include <cstring>

#include "util/utf.h"

namespace {

FakeRuntime* current = nullptr;

HRESULT STDMETHODCALLTYPE
StartEnvironment(PCWSTR runtimeFolder, PCWSTR userDataFolder, ICoreWebView2EnvironmentOptions*,
                 ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* handler) {
    current->log.push_back("CreateEnvironment(" + ToUtf8(runtimeFolder) + ", " +
                           ToUtf8(userDataFolder) + ")");
    if (FAILED(current->environmentStatus))
        return current->environmentStatus;
    handler->Invoke(S_OK, &current->environment);
    return S_OK;
}

}  // namespace

LPWSTR TaskString(const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc(bytes));
    std::memcpy(copy, text.c_str(), bytes);
    return copy;
}

HRESULT STDMETHODCALLTYPE FakeWebView::get_Settings(ICoreWebView2Settings** settings) {
    log.push_back("get_Settings");
    settings_.AddRef();
    *settings = &settings_;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeWebView::get_Source(LPWSTR* uri) {
    *uri = TaskString(source);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeWebView::Navigate(LPCWSTR uri) {
    log.push_back("Navigate(" + ToUtf8(uri) + ")");
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeWebView::NavigateToString(LPCWSTR html) {
    log.push_back("NavigateToString(" + ToUtf8(html) + ")");
    return S_OK;
}

HRESULT STDMETHODCALLTYPE
FakeWebView::ExecuteScript(LPCWSTR script, ICoreWebView2ExecuteScriptCompletedHandler* handler) {
    scripts.emplace_back(script);
    if (handler == nullptr)
        return E_POINTER;
    return handler->Invoke(S_OK, L"null");
}

HRESULT STDMETHODCALLTYPE FakeWebView::PostWebMessageAsString(LPCWSTR message) {
    posted.emplace_back(message);
    return S_OK;
}

namespace {

class FakeMessageArgs final : public FakeCom<UnimplementedCoreWebView2WebMessageReceivedEventArgs> {
  public:
    FakeMessageArgs(CallLog& log, std::wstring text)
        : FakeCom(log, {IID_ICoreWebView2WebMessageReceivedEventArgs}), text_(std::move(text)) {}
    HRESULT STDMETHODCALLTYPE TryGetWebMessageAsString(LPWSTR* text) override {
        *text = TaskString(text_);
        return S_OK;
    }

  private:
    std::wstring text_;
};

class FakeNavigationArgs final
    : public FakeCom<UnimplementedCoreWebView2NavigationStartingEventArgs> {
  public:
    FakeNavigationArgs(CallLog& log, std::wstring uri)
        : FakeCom(log, {IID_ICoreWebView2NavigationStartingEventArgs}), uri_(std::move(uri)) {}
    HRESULT STDMETHODCALLTYPE get_Uri(LPWSTR* uri) override {
        *uri = TaskString(uri_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_IsUserInitiated(BOOL* value) override {
        log.push_back("get_IsUserInitiated");
        *value = TRUE;
        return S_OK;
    }
    FAKE_FLAG(put_Cancel)

  private:
    std::wstring uri_;
};

}  // namespace

void FakeWebView::PostFromPage(const std::wstring& text) {
    FakeMessageArgs args(log, text);
    messages_->Invoke(this, &args);
}

void FakeWebView::StartNavigation(const std::wstring& uri) {
    FakeNavigationArgs args(log, uri);
    starting_->Invoke(this, &args);
}

void FakeWebView::CompleteNavigation() {
    completed_->Invoke(this, nullptr);
}

HRESULT STDMETHODCALLTYPE FakeController::get_Bounds(RECT* value) {
    *value = bounds;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeController::put_Bounds(RECT value) {
    log.push_back("put_Bounds(" + std::to_string(value.right - value.left) + "x" +
                  std::to_string(value.bottom - value.top) + ")");
    bounds = value;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeController::Close() {
    log.push_back("Close");
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeController::get_CoreWebView2(ICoreWebView2** webView) {
    log.push_back("get_CoreWebView2");
    webView_.AddRef();
    *webView = &webView_;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FakeEnvironment::CreateCoreWebView2Controller(
    HWND, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) {
    log.push_back("CreateCoreWebView2Controller");
    handler->Invoke(controllerStatus, SUCCEEDED(controllerStatus) ? &controller_ : nullptr);
    log.push_back("controller handler returned");
    return S_OK;
}

FakeRuntime::FakeRuntime(CallLog& log, FakeEnvironment& environment)
    : log(log), environment(environment) {
    current = this;
}

FakeRuntime::~FakeRuntime() {
    current = nullptr;
}

CreateCoreWebView2EnvironmentWithOptionsFn FakeRuntime::LoadLoader() {
    log.push_back("LoadLoader");
    return loaderPresent ? &StartEnvironment : nullptr;
}
