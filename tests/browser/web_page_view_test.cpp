// The web view that pdfhost lends to a plug-in's window: opened and closed through the browser
// table, its page's window.external.DispatchFun answered by the plug-in's callback, and script
// calls into its page.
#include <gtest/gtest.h>

#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>
#include <string>
#include <vector>

#include "host_app.h"
#include "ui/web_page_view.h"
#include "web_test_support.h"

namespace {

using OpenWebPageFn = int (*)(const wchar_t*, HostWindow, HostWebPageRecord*, ::HostWebView*);
using CloseWebPageFn = void (*)(HostWindow);

// The plug-in's side: records each call and answers with a text made from it.
void AnswerCall(void* client, const wchar_t* module, const wchar_t* command, const wchar_t* params,
                HostWideString result) {
    auto& calls = *static_cast<std::vector<std::wstring>*>(client);
    calls.push_back(std::wstring(module) + L"|" + command + L"|" + params);
    if (auto* text = pdfhost::HostApp::Current()->Values().wideStrings.Find(result))
        text->text = L"reply to " + std::wstring(command);
}

class WebPageViewTest : public testing::Test {
  protected:
    WebPageViewTest() : host(Options()) {
        HostExtTable table = host.Extensions().Find("Browser Extension HFT", 0);
        open = reinterpret_cast<OpenWebPageFn>(host.Extensions().Function(table, 1));
        close = reinterpret_cast<CloseWebPageFn>(host.Extensions().Function(table, 2));
        record.setWord(kWebPageClientData, &calls);
        record.setWord(kWebPageDispatch, reinterpret_cast<void*>(&AnswerCall));
        window.resize(300, 200);
        window.show();
    }

    pdfhost::HostOptions Options() {
        pdfhost::HostOptions options;
        options.profile = profile.path().toStdString();
        return options;
    }

    QTemporaryDir profile;
    pdfhost::HostApp host;
    OpenWebPageFn open = nullptr;
    CloseWebPageFn close = nullptr;
    std::vector<std::wstring> calls;
    HostWebPageRecord record;
    QWidget window;
};

TEST_F(WebPageViewTest, ThePagesDispatchCallsReachThePlugInAndItsRepliesComeBack) {
    ASSERT_NE(open, nullptr);
    ASSERT_NE(close, nullptr);
    ::HostWebView handle = nullptr;
    const auto parent = reinterpret_cast<HostWindow>(&window);
    ASSERT_EQ(open(L"", parent, &record, &handle), 1);
    QPointer<pdfhost::WebPageView> view =
        qobject_cast<pdfhost::WebPageView*>(reinterpret_cast<QWidget*>(handle));
    ASSERT_FALSE(view.isNull());
    EXPECT_EQ(view->geometry(), window.rect());
    EXPECT_GE(view->engineMajorVersion(), 11);

    bool loaded = false;
    QObject::connect(view, &QWebEngineView::loadFinished, [&](bool) { loaded = true; });
    view->loadHtml(QStringLiteral(R"(<script>
        window.twice = function (text) { return text + text; };
        window.external.DispatchFun('base', 'getUser', '{"a":1}').then(function (reply) {
            window.answer = reply;
        });
    </script>)"),
                   QStringLiteral("about:blank"));
    ASSERT_TRUE(WaitFor([&] { return loaded; }));
    EXPECT_TRUE(WaitFor([&] {
        return Evaluate(*view->page(), QStringLiteral("window.answer || ''")).toString() ==
               QStringLiteral("reply to getUser");
    }));
    EXPECT_EQ(calls, std::vector<std::wstring>{L"base|getUser|{\"a\":1}"});
    EXPECT_EQ(view->callScriptForResult(QStringLiteral("twice"), {QStringLiteral("ab")}),
              QStringLiteral("abab"));

    window.resize(500, 250);
    EXPECT_EQ(view->geometry(), window.rect());

    close(parent);
    EXPECT_TRUE(view->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(view.isNull());
}

TEST_F(WebPageViewTest, NothingOpensWithoutAWindowOrARecord) {
    ::HostWebView handle = nullptr;
    EXPECT_EQ(open(L"", nullptr, &record, &handle), 0);
    EXPECT_EQ(open(L"", reinterpret_cast<HostWindow>(&window), nullptr, &handle), 0);
    EXPECT_EQ(handle, nullptr);
}

}  // namespace
