// Fakes of the browser runtime, its loader and its objects. They keep the calls that the browser
// window makes, in order, in one shared log, and let a test fire the runtime's events.
#pragma once

#include <string>
#include <vector>

#include "browser_runtime.h"
#include "com_ptr.h"
#include "webview_fake_bases.h"

using CallLog = std::vector<std::string>;

// Reference counting that never deletes: the test owns the object and checks that every
// reference the browser took was given back.
template <typename Base>
class FakeCom : public Base {
  public:
    FakeCom(CallLog& log, std::vector<IID> interfaces)
        : log(log), interfaces_(std::move(interfaces)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        for (const IID& known : interfaces_) {
            if (IsEqualIID(iid, known) || IsEqualIID(iid, IID_IUnknown)) {
                *object = static_cast<Base*>(this);
                AddRef();
                return S_OK;
            }
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }

    ULONG references = 1;
    CallLog& log;

  private:
    std::vector<IID> interfaces_;
};

// A copy that the callee frees with CoTaskMemFree, as the runtime hands out strings.
LPWSTR TaskString(const std::wstring& text);

// A flag's setter that logs its name and value, as "Name(1)".
#define FAKE_FLAG(Name)                                                    \
    HRESULT STDMETHODCALLTYPE Name(BOOL value) override {                  \
        log.push_back(std::string(#Name "(") + (value ? "1" : "0") + ")"); \
        return S_OK;                                                       \
    }

// An event's add and remove members, both logged: the handler is kept in `slot`, and its
// registration gets the token `number`.
#define FAKE_EVENT(Name, Handler, slot, number)                                           \
    HRESULT STDMETHODCALLTYPE add_##Name(Handler* handler, EventRegistrationToken* token) \
        override {                                                                        \
        log.push_back("add_" #Name);                                                      \
        slot = ComPtr<Handler>::Retain(handler);                                          \
        token->value = number;                                                            \
        return S_OK;                                                                      \
    }                                                                                     \
    HRESULT STDMETHODCALLTYPE remove_##Name(EventRegistrationToken token) override {      \
        log.push_back("remove_" #Name "(" + std::to_string(token.value) + ")");           \
        slot.Reset();                                                                     \
        return S_OK;                                                                      \
    }

class FakeSettings final : public FakeCom<UnimplementedCoreWebView2Settings> {
  public:
    explicit FakeSettings(CallLog& log) : FakeCom(log, {IID_ICoreWebView2Settings}) {}
    FAKE_FLAG(put_IsScriptEnabled)
    FAKE_FLAG(put_IsWebMessageEnabled)
    FAKE_FLAG(put_AreDefaultScriptDialogsEnabled)
    FAKE_FLAG(put_AreDefaultContextMenusEnabled)
};

class FakeWebView final : public FakeCom<UnimplementedCoreWebView2_2> {
  public:
    FakeWebView(CallLog& log, FakeSettings& settings)
        : FakeCom(log, {IID_ICoreWebView2, IID_ICoreWebView2_2}), settings_(settings) {}

    HRESULT STDMETHODCALLTYPE get_Settings(ICoreWebView2Settings** settings) override;
    HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* uri) override;
    HRESULT STDMETHODCALLTYPE Navigate(LPCWSTR uri) override;
    HRESULT STDMETHODCALLTYPE NavigateToString(LPCWSTR html) override;
    FAKE_EVENT(NavigationStarting, ICoreWebView2NavigationStartingEventHandler, starting_, 2)
    FAKE_EVENT(NavigationCompleted, ICoreWebView2NavigationCompletedEventHandler, completed_, 3)
    FAKE_EVENT(WebMessageReceived, ICoreWebView2WebMessageReceivedEventHandler, messages_, 1)
    HRESULT STDMETHODCALLTYPE
    ExecuteScript(LPCWSTR script, ICoreWebView2ExecuteScriptCompletedHandler* handler) override;
    HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR message) override;

    // The page posts `text` as a string message.
    void PostFromPage(const std::wstring& text);
    // The page starts a navigation to `uri`; the log gets what the handler did to it.
    void StartNavigation(const std::wstring& uri);
    void CompleteNavigation();

    std::wstring source = L"about:blank";
    std::vector<std::wstring> posted;   // string messages to the page, in order
    std::vector<std::wstring> scripts;  // scripts run in the page, in order

  private:
    FakeSettings& settings_;
    ComPtr<ICoreWebView2NavigationStartingEventHandler> starting_;
    ComPtr<ICoreWebView2NavigationCompletedEventHandler> completed_;
    ComPtr<ICoreWebView2WebMessageReceivedEventHandler> messages_;
};

class FakeController final : public FakeCom<UnimplementedCoreWebView2Controller> {
  public:
    FakeController(CallLog& log, FakeWebView& webView)
        : FakeCom(log, {IID_ICoreWebView2Controller}), webView_(webView) {}
    FAKE_FLAG(put_IsVisible)
    HRESULT STDMETHODCALLTYPE get_Bounds(RECT* bounds) override;
    HRESULT STDMETHODCALLTYPE put_Bounds(RECT bounds) override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE get_CoreWebView2(ICoreWebView2** webView) override;

    RECT bounds{};

  private:
    FakeWebView& webView_;
};

class FakeEnvironment final : public FakeCom<UnimplementedCoreWebView2Environment2> {
  public:
    FakeEnvironment(CallLog& log, FakeController& controller)
        : FakeCom(log, {IID_ICoreWebView2Environment, IID_ICoreWebView2Environment2}),
          controller_(controller) {}
    // Answers at once, inside the call, with `controllerStatus` and the controller.
    HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
        HWND parent, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) override;

    HRESULT controllerStatus = S_OK;

  private:
    FakeController& controller_;
};

// The machine as a test sets it up: the runtime folder found, whether the loader is there, and
// what starting an environment answers.
class FakeRuntime final : public BrowserRuntime {
  public:
    FakeRuntime(CallLog& log, FakeEnvironment& environment);
    ~FakeRuntime() override;

    std::wstring RuntimeFolder() override { return runtimeFolder; }
    std::wstring UserDataFolder() override { return L"C:\\users\\tester\\data"; }
    CreateCoreWebView2EnvironmentWithOptionsFn LoadLoader() override;
    void ShowFailure(const std::wstring& text) override { failures.push_back(text); }

    std::wstring runtimeFolder =
        L"C:\\Program Files (x86)\\Microsoft\\EdgeWebView\\Application\\120.0.1.2";
    bool loaderPresent = true;
    HRESULT environmentStatus = S_OK;
    std::vector<std::wstring> failures;
    CallLog& log;
    FakeEnvironment& environment;
};

// The runtime's fakes wired to one another, each writing its calls to one log: the base of the
// fixtures that start browsers on them.
class FakeBrowserRuntime {
  protected:
    CallLog log_;
    FakeSettings settings_{log_};
    FakeWebView webView_{log_, settings_};
    FakeController controller_{log_, webView_};
    FakeEnvironment environment_{log_, controller_};
    FakeRuntime runtime_{log_, environment_};
};
