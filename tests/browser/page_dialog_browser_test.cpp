// The task pane's page dialog in the real web engine: the page is built from the service
// document, shown, and served; events reach it before the reply of the command that raised
// them; navigation off the allowed addresses is refused; without a network the offline page
// shows.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "app/brevan.h"
#include "bridge/page_events.h"
#include "config/brevan_config.h"
#include "config/service_config.h"
#include "fake_host.h"
#include "html_dialog.h"
#include "page_files.h"
#include "profile_html_dialog.h"
#include "web_browser.h"
#include "web_test_support.h"

namespace {

const HostWindow kMainWindow = reinterpret_cast<HostWindow>(0x4000);

// The page records what reaches it, in order.
constexpr const char* kTestPage = R"(<!DOCTYPE html>
<html><head><meta charset="utf-8"><title>test page</title><script>
window.seen = [];
window.__dispatchEvent = function (event) { seen.push('event ' + JSON.stringify(event)); };
chrome.webview.addEventListener('message', function (message) {
    seen.push('reply ' + message.data);
});
</script></head><body>page</body></html>
)";

// A host whose answer to "which document is active" raises an event, as the editor's hooks do
// in the middle of a command.
class EventingHost : public FakeHost {
  public:
    HostWindow HostAppGetMainWindow() override { return kMainWindow; }
    HostDoc HostAppGetActiveDoc() override {
        if (app != nullptr)
            UserSignOutEvent(*app).Send();
        return FakeHost::HostAppGetActiveDoc();
    }
    Brevan* app = nullptr;
};

class PaneDialogTest : public testing::Test {
  protected:
    PaneDialogTest() {
        app.Attach(host, platform);
        app.ImportTables();
        EXPECT_EQ(app.Init(), 1);
        QFile page(pages.filePath("page.html"));
        EXPECT_TRUE(page.open(QIODevice::WriteOnly));
        page.write(kTestPage);
        pageAddress = "file://" + pages.filePath("page.html").toStdString();
        window.resize(400, 600);
        window.show();
    }
    ~PaneDialogTest() override {
        app.paneDialogs.clear();
        dialog.reset();
        app.Unload();
    }

    void PublishTemplate(const std::string& address) {
        platform.httpBodies[app.serviceConfig->DocumentAddress()] =
            R"({"url":{"qvd_brevan_plugin_domain":")" + address + R"("},"size":1,"dsvConfig":{}})";
    }

    // Makes the pane's dialog as the pane host does, and waits until its browser shows a page.
    CWebBrowser& OpenPane() {
        dialog = std::make_unique<CHtmlDlg>(app.pageDialogServices(), &window);
        app.paneDialogs[kMainWindow] = dialog.get();
        dialog->Reload(false);
        dialog->Show();
        EXPECT_TRUE(WaitFor([&] {
            return dialog->browser() != nullptr && dialog->browser()->IsUp() &&
                   !dialog->browser()->GetLocationURL().empty() && dialog->browser()->isVisible();
        }));
        return *dialog->browser();
    }

    QVariant Evaluate(CWebBrowser& browser, const QString& script) {
        QVariant result;
        bool done = false;
        browser.ExecuteScript(script.toStdWString(), [&](const QVariant& value) {
            result = value;
            done = true;
        });
        WaitFor([&] { return done; }, 10000);
        return result;
    }

    std::vector<std::string> Seen(CWebBrowser& browser) {
        std::vector<std::string> seen;
        for (const QString& line :
             Evaluate(browser, QStringLiteral("window.seen || []")).toStringList())
            seen.push_back(line.toStdString());
        return seen;
    }

    QTemporaryDir pages;
    std::string pageAddress;
    EventingHost host;
    FakePlatform platform;
    Brevan app;
    QWidget window;
    std::unique_ptr<CHtmlDlg> dialog;
};

TEST_F(PaneDialogTest, ThePageIsShownServedAndGetsEventsBeforeTheirCommandsReply) {
    PublishTemplate(pageAddress + "?platform=%s");
    dialog = std::make_unique<CHtmlDlg>(app.pageDialogServices(), &window);
    // Before start-up has completed the browser takes no script.
    ASSERT_NE(dialog->browser(), nullptr);
    EXPECT_EQ(dialog->browser()->ExecuteScript(L"1", {}), CWebBrowser::kStatusNotUp);
    dialog.reset();

    CWebBrowser& browser = OpenPane();
    EXPECT_EQ(dialog->url(), FromUtf8(pageAddress) +
                                 L"?platform=Win%20PDF%20Editor&pluginversion=2026.1.0.0"
                                 L"&ThemeColor=000000&isChannelPackage=false");
    EXPECT_EQ(browser.GetLocationURL(), dialog->url());
    EXPECT_EQ(browser.ExecuteScript(L"", {}), CWebBrowser::kStatusEmptyScript);

    host.app = &app;
    Evaluate(browser, QStringLiteral(R"(
        chrome.webview.postMessage('["base","getCurrentDoc","","id-1"]');
        chrome.webview.postMessage('["base"]');
        chrome.webview.postMessage(["base","getCurrentDoc","","id-2"]);
        chrome.webview.postMessage('{"not":"an array"}');
        chrome.webview.postMessage('["base","noSuchCommand",{},"id-3"]');)"));
    const std::vector<std::string> expected{
        R"(event {"name":"ev-user-sign-out"})",
        R"(reply {"data":null,"ret":300001,"uuid":"id-1"})"
        "\n",
        "reply Error Message Parma",
        R"(reply {"data":null,"ret":400000})"
        "\n",
    };
    EXPECT_TRUE(WaitFor([&] { return Seen(browser).size() >= expected.size(); }));
    Spin(300);  // nothing more arrives for the object and the plain object
    EXPECT_EQ(Seen(browser), expected);

    // Events outside a command reach the pane's page too.
    UserSignOutEvent(app).Send();
    EXPECT_TRUE(WaitFor([&] { return Seen(browser).size() == expected.size() + 1; }));
}

TEST_F(PaneDialogTest, NavigationOffTheAllowedAddressesShowsTheBlockedText) {
    PublishTemplate(pageAddress);
    CWebBrowser& browser = OpenPane();
    Evaluate(browser, QStringLiteral("location.href = 'http://page.invalid/';"));
    EXPECT_TRUE(WaitFor([&] {
        return Evaluate(browser, QStringLiteral("document.body ? document.body.innerText : ''"))
            .toString()
            .startsWith(QStringLiteral("Domain Blocked"));
    }));
    EXPECT_EQ(browser.GetLocationURL(), L"");  // the text is shown on about:blank

    // The allowed kinds of address still load, and a bare one is completed and refused.
    browser.Navigate(FromUtf8(pageAddress));
    EXPECT_TRUE(WaitFor([&] { return browser.GetLocationURL() == FromUtf8(pageAddress); }));
    browser.Navigate(L"page.invalid");
    EXPECT_TRUE(WaitFor([&] { return browser.GetLocationURL().empty(); }));
}

TEST_F(PaneDialogTest, WithoutANetworkOrWithoutATemplateTheOfflinePageShows) {
    PublishTemplate(pageAddress);
    platform.connected = false;
    CWebBrowser& browser = OpenPane();
    const std::wstring folder = app.config->serviceFolder();
    EXPECT_EQ(browser.GetLocationURL(), FileAddress(folder + L"/offline.html"));
    EXPECT_TRUE(WaitFor([&] {
        return Evaluate(browser, QStringLiteral("document.body.innerText"))
            .toString()
            .contains(QStringLiteral("No network is available"));
    }));
    EXPECT_FALSE(dialog->url().empty());
    for (const char* name : {"offline.html", "upgrade.html", "IE.png", "tips.png"})
        EXPECT_TRUE(QFile::exists(QDir(QString::fromStdWString(folder)).filePath(name))) << name;

    // With the network but no service document the address stays empty: offline again.
    platform.connected = true;
    platform.httpBodies.clear();
    app.serviceConfig->Load();
    CWebBrowser& second = OpenPane();
    EXPECT_TRUE(dialog->url().empty());
    EXPECT_EQ(second.GetLocationURL(), FileAddress(folder + L"/offline.html"));
}

TEST_F(PaneDialogTest, TheBatchDialogRunsModallyUntilEndedAlsoWhileHidden) {
    PublishTemplate(pageAddress + "?x=1");
    CProfileHtmlDlg batch(app.pageDialogServices(), &window);
    EXPECT_EQ(batch.windowTitle(), QStringLiteral("Batch Redaction"));

    // Inside the modal run: wait for the page, hide the window, then end the run.
    int step = 0;
    bool hiddenRunGoesOn = false;
    QTimer driver;
    QObject::connect(&driver, &QTimer::timeout, [&] {
        CWebBrowser* browser = batch.browser();
        if (step == 0 && browser != nullptr && browser->isVisible() &&
            !browser->GetLocationURL().empty()) {
            batch.SetVisible(false);
            step = 1;
        } else if (step == 1) {
            hiddenRunGoesOn = batch.isHidden();
            batch.EndModal(1);
            step = 2;
        }
    });
    driver.start(50);
    QTimer::singleShot(20000, &batch, [&] { batch.EndModal(-1); });
    EXPECT_EQ(batch.RunModal(), 1);
    EXPECT_TRUE(hiddenRunGoesOn);
    EXPECT_EQ(batch.url(), FromUtf8(pageAddress) +
                               L"?x=1&pluginversion=2026.1.0.0&ThemeColor=000000"
                               L"&batchRedaction=true&theme=win_native&isChannelPackage=false");
    EXPECT_EQ(batch.browser()->GetLocationURL(), batch.url());
}

}  // namespace
