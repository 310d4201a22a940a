#include "web_browser.h"

#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/value.h>

#include <memory>

#include "bridge/browser_navigation.h"
#include "bridge/command_table.h"
#include "fake_webview.h"
#include "system_browser_runtime.h"
#include "util/utf.h"
#include "window_test_support.h"

namespace {

constexpr DWORD kChildVisible = WS_CHILD | WS_VISIBLE;
constexpr RECT kArea{0, 0, 320, 200};

// Answers with the parameters' text, as the command received it.
class EchoParams final : public BaseDispatcher {
  public:
    using BaseDispatcher::BaseDispatcher;
    Json::Value Run() override { return MakeResult(0, Json::Value(params.Text())); }
};

class WebBrowserTest : public ::testing::Test, protected FakeBrowserRuntime {
  protected:
    WebBrowserTest() {
        commands_.Add(L"echoParams", [](const CommandRequest& request) {
            return std::make_unique<EchoParams>(request.params);
        });
    }
    ~WebBrowserTest() override {
        browser_.reset();
        DestroyWindow(parent_);
    }

    bool Start() {
        return browser_->CreateAsync(kChildVisible, kArea, parent_, 0, [this] {
            ++created_;
            log_.push_back("creation callback");
        });
    }
    void StartAndPump() {
        ASSERT_TRUE(Start());
        PumpMessages();
        ASSERT_TRUE(browser_->IsUp());
        log_.clear();
    }
    void Renew() { browser_ = std::make_unique<CWebBrowser>(runtime_, commands_, stream_); }

    CommandTable commands_;
    ChannelFileStream stream_;
    HWND parent_ = MakeParentWindow();
    std::unique_ptr<CWebBrowser> browser_ =
        std::make_unique<CWebBrowser>(runtime_, commands_, stream_);
    int created_ = 0;
};

TEST_F(WebBrowserTest, StartsInOrderAndRunsTheCreationCallbackFromTheMessageLoop) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(created_, 0);
    const CallLog expected{
        "LoadLoader",
        "CreateEnvironment(C:\\Program Files (x86)\\Microsoft\\EdgeWebView\\Application\\"
        "120.0.1.2, C:\\users\\tester\\data)",
        "CreateCoreWebView2Controller",
        "get_CoreWebView2",
        "put_IsVisible(1)",
        "get_Settings",
        "put_IsScriptEnabled(1)",
        "put_AreDefaultContextMenusEnabled(1)",
        "put_AreDefaultScriptDialogsEnabled(1)",
        "put_IsWebMessageEnabled(1)",
        "put_Bounds(320x200)",
        "add_WebMessageReceived",
        "add_NavigationStarting",
        "add_NavigationCompleted",
        "controller handler returned",
    };
    EXPECT_EQ(log_, expected);

    PumpMessages();
    PumpMessages();
    EXPECT_EQ(created_, 1);
    EXPECT_EQ(log_.back(), "creation callback");
    EXPECT_TRUE(browser_->IsUp());
    wchar_t className[64] = {};
    GetClassNameW(browser_->Window(), className, 64);
    EXPECT_STREQ(className, L"EdgeBrowserHost");
}

TEST_F(WebBrowserTest, RefusesQuietlyWhatCannotHostThePage) {
    const struct {
        const wchar_t* folder;
        bool loaderPresent;
        bool loaderAsked;
    } cases[] = {
        {L"C:\\Program Files (x86)\\Microsoft\\Edge\\Application\\120.0.1.2", true, false},
        {L"C:\\Users\\u\\AppData\\Local\\Microsoft\\Edge\\Application\\99.1.2.3", true, false},
        {L"", true, false},
        {L"C:\\Program Files (x86)\\Microsoft\\EdgeWebView\\Application\\120.0.1.2", false, true},
    };
    for (const auto& c : cases) {
        Renew();
        log_.clear();
        runtime_.runtimeFolder = c.folder;
        runtime_.loaderPresent = c.loaderPresent;
        EXPECT_FALSE(Start()) << ToUtf8(c.folder);
        EXPECT_EQ(log_.size(), c.loaderAsked ? 1u : 0u) << ToUtf8(c.folder);
        PumpMessages();
        EXPECT_EQ(created_, 0);
        EXPECT_FALSE(browser_->IsUp());
    }
    EXPECT_TRUE(runtime_.failures.empty());
}

TEST_F(WebBrowserTest, FailuresToStartShowTheirOwnTexts) {
    const struct {
        HRESULT environment;
        HRESULT controller;
        bool begun;
        const wchar_t* text;
    } cases[] = {
        {HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), S_OK, false,
         L"Cannot found the WebView2 component. (0x80070002)"},
        {E_FAIL, S_OK, false, L"Cannot create the webview environment. (0x80004005)"},
        // The controller answers after start-up was begun: the dialog believes in the browser.
        {S_OK, E_ACCESSDENIED, true, L"Cannot create webview environment. (0x80070005)"},
    };
    for (const auto& c : cases) {
        Renew();
        runtime_.failures.clear();
        runtime_.environmentStatus = c.environment;
        environment_.controllerStatus = c.controller;
        EXPECT_EQ(Start(), c.begun);
        EXPECT_EQ(runtime_.failures, std::vector<std::wstring>{c.text});
        PumpMessages();
        EXPECT_EQ(created_, 0);
        EXPECT_FALSE(browser_->IsUp());
    }
}

TEST_F(WebBrowserTest, AnswersPageMessagesByTheirForm) {
    StartAndPump();
    const std::wstring bad = L"Error Message Parma";
    const struct {
        const wchar_t* message;
        std::vector<std::wstring> replies;
    } cases[] = {
        {L"[\"base\",\"echoParams\",\"\"]", {bad}},
        {L"[\"base\",\"echoParams\",\"\",\"u\",5]", {bad}},
        {L"not json at all", {bad}},
        {L"{\"module\":\"base\"}", {}},
        {L"\"text\"", {}},
        {L"42", {}},
    };
    for (const auto& c : cases) {
        webView_.posted.clear();
        webView_.PostFromPage(c.message);
        EXPECT_EQ(webView_.posted, c.replies) << ToUtf8(c.message);
    }
}

TEST_F(WebBrowserTest, ParametersReachTheCommandAsTextAndTheReplyCarriesTheIdentifier) {
    StartAndPump();
    const struct {
        const wchar_t* message;
        const char* params;
    } cases[] = {
        {L"[\"base\",\"echoParams\",{\"a\":1},\"id-1\"]", "{\"a\":1}"},
        {L"[\"base\",\"echoParams\",\"{ \\\"a\\\" : 1 }\",\"id-1\"]", "{ \"a\" : 1 }"},
        {L"[\"base\",\"echoParams\",\"Ärger\",\"id-1\"]", "\xC3\x84rger"},
    };
    for (const auto& c : cases) {
        webView_.posted.clear();
        webView_.PostFromPage(c.message);
        ASSERT_EQ(webView_.posted.size(), 1u);
        Json::Value reply;
        ASSERT_TRUE(Json::Reader().parse(ToUtf8(webView_.posted[0]), reply));
        EXPECT_EQ(reply["ret"].asInt(), 0);
        EXPECT_EQ(reply["uuid"].asString(), "id-1");
        // The writer of object parameters may end its text with a line feed.
        std::string params = reply["data"].asString();
        if (!params.empty() && params.back() == '\n')
            params.pop_back();
        EXPECT_EQ(params, c.params);
    }
}

TEST_F(WebBrowserTest, RefusesNavigationOutsideTheAllowedSchemes) {
    StartAndPump();
    const std::string blocked = "NavigateToString(" + ToUtf8(kBlockedDomainHtml) + ")";
    const struct {
        const wchar_t* uri;
        bool refused;
    } cases[] = {
        {L"https://example.org/", false}, {L"about:blank", false},
        {L"file:///c:/page.html", false}, {L"http://example.org/", true},
        {L"HTTPS://example.org/", true},  {L"File:///c:/page.html", true},
        {L"ftp://example.org/", true},
    };
    for (const auto& c : cases) {
        log_.clear();
        webView_.StartNavigation(c.uri);
        const CallLog expected =
            c.refused ? CallLog{"put_Cancel(1)", "get_IsUserInitiated", blocked} : CallLog{};
        EXPECT_EQ(log_, expected) << ToUtf8(c.uri);
    }
}

TEST_F(WebBrowserTest, NavigationWaitsForStartUpAndCompletesAddresses) {
    browser_->Navigate(L"https://example.org/");
    EXPECT_TRUE(log_.empty());
    StartAndPump();
    browser_->Navigate(L"example.org");
    browser_->Navigate(L"c:\\pages\\offline.html");
    browser_->Navigate(L"https://example.org/a");
    browser_->NavigateToString(L"<p>x</p>");
    const CallLog expected{"Navigate(http://example.org)",
                           "Navigate(file://c:\\pages\\offline.html)",
                           "Navigate(https://example.org/a)", "NavigateToString(<p>x</p>)"};
    EXPECT_EQ(log_, expected);
}

TEST_F(WebBrowserTest, ScriptsRunOnlyOnceUpAndNotEmpty) {
    EXPECT_EQ(browser_->ExecuteScript(L"1", {}), CWebBrowser::kStatusNotUp);
    StartAndPump();
    EXPECT_EQ(browser_->ExecuteScript(L"", {}), CWebBrowser::kStatusEmptyScript);
    std::wstring result;
    EXPECT_EQ(browser_->ExecuteScript(L"1 + 1",
                                      [&](HRESULT, const std::wstring& json) { result = json; }),
              S_OK);
    // An event script goes without a handler of the caller's.
    static_cast<PageEndpoint&>(*browser_).ExecuteScript(L" window.__dispatchEvent({});");
    EXPECT_EQ(webView_.scripts,
              (std::vector<std::wstring>{L"1 + 1", L" window.__dispatchEvent({});"}));
    EXPECT_EQ(result, L"null");
}

TEST_F(WebBrowserTest, CompletedNavigationShowsTheWindowAndTellsTheDialog) {
    StartAndPump();
    int hidden = 0;
    browser_->SetNavigationCompleted([&] { ++hidden; });
    ShowWindow(browser_->Window(), SW_HIDE);
    webView_.CompleteNavigation();
    EXPECT_NE(GetWindowLongW(browser_->Window(), GWL_STYLE) & WS_VISIBLE, 0);
    EXPECT_EQ(hidden, 1);
}

TEST_F(WebBrowserTest, LocationAndBoundsComeFromTheRuntime) {
    EXPECT_EQ(browser_->GetLocationURL(), L"");
    StartAndPump();
    EXPECT_EQ(browser_->GetLocationURL(), L"");  // about:blank
    webView_.source = L"https://example.org/page";
    EXPECT_EQ(browser_->GetLocationURL(), L"https://example.org/page");
    const RECT bounds = browser_->GetBounds();
    EXPECT_EQ(bounds.right - bounds.left, 320);
    EXPECT_EQ(bounds.bottom - bounds.top, 200);
}

TEST_F(WebBrowserTest, TearsDownInOrderAndGivesEveryReferenceBack) {
    StartAndPump();
    browser_->CloseWebView();
    const CallLog expected{"remove_NavigationCompleted(3)", "remove_NavigationStarting(2)",
                           "remove_WebMessageReceived(1)", "Close"};
    EXPECT_EQ(log_, expected);
    EXPECT_FALSE(browser_->IsUp());
    EXPECT_EQ(browser_->ExecuteScript(L"1", {}), CWebBrowser::kStatusNotUp);
    EXPECT_EQ(controller_.references, 1u);
    EXPECT_EQ(webView_.references, 1u);
    EXPECT_EQ(settings_.references, 1u);
    EXPECT_EQ(environment_.references, 1u);
}

TEST_F(WebBrowserTest, ABrowserGoneBeforeItsCallbackRanLeavesNothingToRun) {
    ASSERT_TRUE(Start());
    browser_.reset();
    PumpMessages();
    EXPECT_EQ(created_, 0);
    EXPECT_EQ(controller_.references, 1u);
    EXPECT_EQ(log_.back(), "Close");
}

TEST(SystemBrowserRuntimeTest, WithoutARuntimeOnTheMachineStartUpIsRefusedQuietly) {
    SystemBrowserRuntime runtime;
    EXPECT_EQ(runtime.RuntimeFolder(), L"");
    CommandTable commands;
    ChannelFileStream stream;
    const HWND parent = MakeParentWindow();
    {
        CWebBrowser browser(runtime, commands, stream);
        EXPECT_FALSE(browser.CreateAsync(kChildVisible, kArea, parent, 0, [] { FAIL(); }));
        EXPECT_NE(browser.Window(), nullptr);
        PumpMessages();
    }
    DestroyWindow(parent);
}

}  // namespace
