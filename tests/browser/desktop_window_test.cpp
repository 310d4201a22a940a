// pdfhost's desktop window with the plug-in: the ribbon shows the three entries, Auto Redaction
// opens the task pane with the reference page, which scans the open document for review. The
// window is saved as a picture under the build's artifacts folder.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QUrl>
#include <QWebEngineView>
#include <atomic>

#include "host_app.h"
#include "local_http_server.h"
#include "ui/main_window.h"
#include "ui/web_page_view.h"
#include "web_test_support.h"

namespace {

// The account server's service document: the page itself comes from the developers' file, the
// account domain is this server.
HttpAnswer ServiceDocument(const HttpRequestSeen& request, unsigned short port) {
    HttpAnswer answer;
    if (!request.target.ends_with("/txdfApi.json")) {
        answer.status = 404;
        answer.reason = "Not Found";
        return answer;
    }
    answer.body = R"({"url":{"qvd_brevan_plugin_domain":"http://127.0.0.1/p?platform=%s",)"
                  R"("qvd_domain":"http://127.0.0.1:)" +
                  std::to_string(port) + R"("},"size":2,"dsvConfig":{}})";
    return answer;
}

void WriteDevelopersFile(const QString& profile) {
    const QString folder = profile + QStringLiteral("/userdata/sblm.io");
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile file(folder + QStringLiteral("/brevan.config"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString page =
        QUrl::fromLocalFile(QStringLiteral(BREVAN_WEB_DIR "/index.html")).toString();
    file.write(
        QStringLiteral(R"({"custom_url": "%1", "internet_connection": true})").arg(page).toUtf8());
}

QAction* RibbonEntry(QWidget& window, const QString& text) {
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->text().remove(QLatin1Char('&')) == text)
            return action;
    }
    return nullptr;
}

QWebEngineView* PluginBrowser(QWidget& window) {
    for (QWebEngineView* view : window.findChildren<QWebEngineView*>()) {
        if (view->objectName() != QLatin1String(pdfhost::WebPageView::kObjectName) &&
            view->isVisible())
            return view;
    }
    return nullptr;
}

TEST(DesktopWindowTest, AutoRedactionShowsThePageInTheTaskPaneBesideTheDocument) {
    std::atomic<unsigned short> port = 0;
    LocalHttpServer server(
        [&](const HttpRequestSeen& request) { return ServiceDocument(request, port.load()); });
    port = server.port();
    QTemporaryDir profile;
    WriteDevelopersFile(profile.path());
    pdfhost::HostOptions options;
    options.profile = profile.path().toStdString();
    options.plugins = BREVAN_PLUGIN_DIR;
    pdfhost::HostApp host(options);
    host.Account().SignIn("http://127.0.0.1:" + std::to_string(server.port()));

    pdfhost::ui::MainWindow window(host);
    ASSERT_EQ(host.LoadPlugins(), 1u);
    window.OpenFile(QStringLiteral(BREVAN_SAMPLE_PDF));
    window.resize(1400, 900);
    window.show();

    for (const char* entry : {"Auto Redaction", "Batch Redaction", "Profile"})
        ASSERT_NE(RibbonEntry(window, QString::fromUtf8(entry)), nullptr) << entry;
    host.Answers().Queue("welcome", 0);
    host.Answers().Queue("signIn", true);
    RibbonEntry(window, QStringLiteral("Auto Redaction"))->trigger();

    auto* dock = window.findChild<QDockWidget*>(QStringLiteral("BrevanTaskPane"));
    ASSERT_NE(dock, nullptr);
    EXPECT_TRUE(WaitFor([&] { return dock->isVisible(); }));
    QWebEngineView* browser = nullptr;
    ASSERT_TRUE(WaitFor([&] {
        browser = PluginBrowser(window);
        return browser != nullptr && browser->url().fileName() == QLatin1String("index.html");
    }));
    // The page knows the document, then scans it and lists what it found.
    ASSERT_TRUE(WaitFor([&] {
        return Evaluate(*browser->page(), QStringLiteral("document.getElementById('doc-line')."
                                                         "innerText"))
            .toString()
            .contains(QStringLiteral("sample.pdf"));
    }));
    Evaluate(*browser->page(), QStringLiteral("document.getElementById('scan').click(), 0"));
    EXPECT_TRUE(WaitFor([&] {
        return Evaluate(*browser->page(),
                        QStringLiteral("document.querySelectorAll('#findings li.finding').length"))
                   .toInt() > 0;
    }));
    // The header names the signed-in user.
    EXPECT_TRUE(WaitFor([&] {
        return Evaluate(*browser->page(), QStringLiteral("document.getElementById('account')."
                                                         "textContent"))
                   .toString() == QStringLiteral("Local User");
    }));
    Spin(500);  // let the page paint

    const QImage picture = window.grab().toImage();
    ASSERT_FALSE(picture.isNull());
    ASSERT_TRUE(QDir().mkpath(QStringLiteral(BREVAN_ARTIFACT_DIR)));
    EXPECT_TRUE(picture.save(QStringLiteral(BREVAN_ARTIFACT_DIR "/desktop_task_pane.png")));
    // The pane's part of the picture is not one flat colour: the page was drawn.
    const QRect pane = dock->geometry();
    const QRgb first = picture.pixel(pane.center());
    bool varied = false;
    for (int y = pane.top(); y < pane.bottom() && !varied; y += 4) {
        for (int x = pane.left(); x < pane.right() && !varied; x += 4)
            varied = picture.pixel(x, y) != first;
    }
    EXPECT_TRUE(varied);
    host.UnloadPlugins();
}

}  // namespace
