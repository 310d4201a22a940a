// The plug-in loaded into pdfhost without the scripted channel, as on the desktop: pressing the
// ribbon entry opens the task pane, whose dialog starts the embedded browser over the web view
// that pdfhost lends; once the browser has shown its page the lent view is hidden.
#include <gtest/gtest.h>

#include <json/value.h>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QWebEngineView>

#include "automation/ribbon_press.h"
#include "host_app.h"
#include "ui/web_page_view.h"
#include "web_test_support.h"

namespace {

// The web views under the main window: the plug-in's browser and the view pdfhost lent it.
struct PaneViews {
    QWebEngineView* browser = nullptr;
    QWebEngineView* lent = nullptr;
};

PaneViews FindViews(QMainWindow& window) {
    PaneViews views;
    for (QWebEngineView* view : window.findChildren<QWebEngineView*>()) {
        if (view->objectName() == QLatin1String(pdfhost::WebPageView::kObjectName))
            views.lent = view;
        else
            views.browser = view;
    }
    return views;
}

TEST(PluginPaneInHostTest, ThePaneShowsItsPageInTheBrowserAndTheLentViewGoes) {
    QTemporaryDir profile;
    pdfhost::HostOptions options;
    options.profile = profile.path().toStdString();
    options.plugins = BREVAN_PLUGIN_DIR;
    pdfhost::HostApp host(options);
    // An account server that refuses at once: no service document, so the offline page.
    host.Account().SignIn("http://127.0.0.1:9");
    ASSERT_EQ(host.LoadPlugins(), 1u);
    ASSERT_NE(host.OpenDocument(BREVAN_SAMPLE_PDF).document, nullptr);

    host.Answers().Queue("welcome", 0);
    host.Answers().Queue("signIn", true);
    Json::Value press;
    press["item"] = "AutoRedaction";
    ASSERT_EQ(pdfhost::PressRibbonEntry(host, press), "");

    QMainWindow& window = *host.MainWindow();
    ASSERT_TRUE(WaitFor([&] {
        const PaneViews views = FindViews(window);
        return views.browser != nullptr &&
               views.browser->url().toString().endsWith(QStringLiteral("/offline.html"));
    }));
    const PaneViews views = FindViews(window);
    ASSERT_NE(views.lent, nullptr);
    EXPECT_TRUE(WaitFor([&] { return views.lent->isHidden(); }));
    EXPECT_TRUE(WaitFor([&] {
        return Evaluate(*views.browser->page(), QStringLiteral("document.body.innerText"))
            .toString()
            .contains(QStringLiteral("No network is available"));
    }));
    host.UnloadPlugins();
}

}  // namespace
