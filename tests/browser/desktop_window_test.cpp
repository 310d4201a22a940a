// pdfhost's desktop window with the plug-in: the ribbon shows the three entries, Auto Redaction
// opens the task pane with the reference page, which scans the open document for review. The
// window is saved as pictures under the build's artifacts folder: the pane beside the document,
// mid-scan, after a review, and the account page that Profile shows. Marks undone in the editor
// between scan and apply are named by the page and never reach the saved copy unredacted.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QWebEngineView>
#include <algorithm>
#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>

#include "host_app.h"
#include "leak_check.h"
#include "local_http_server.h"
#include "ui/document_view.h"
#include "ui/main_window.h"
#include "ui/web_page_view.h"
#include "web_test_support.h"

namespace {

// The account server: its service document (the page itself comes from the developers' file,
// the account domain is this server), the token request of getUserJWT, and the usage API, which
// counts the redactions the page reports.
class AccountService {
  public:
    HttpAnswer Answer(const HttpRequestSeen& request, unsigned short port) {
        HttpAnswer answer;
        answer.headers = {{"Access-Control-Allow-Origin", "*"}};
        const std::string address = "http://127.0.0.1:" + std::to_string(port);
        if (request.method == "OPTIONS") {
            answer.status = 204;
            answer.headers.emplace_back("Access-Control-Allow-Headers",
                                        "Authorization, Content-Type");
            answer.headers.emplace_back("Access-Control-Allow-Methods", "GET, POST");
        } else if (request.target.ends_with("/txdfApi.json")) {
            answer.body = R"({"url":{"qvd_brevan_plugin_domain":"http://127.0.0.1/p?platform=%s",)"
                          R"("qvd_domain":")" +
                          address + R"(","qvd_brevan_user_jwt":")" + address +
                          R"(/jwt?token=%s%s"},"size":3,"dsvConfig":{}})";
        } else if (request.target.starts_with("/jwt?token=")) {
            answer.body = R"({"ret":0,"data":{"jwtResult":"service-token"}})";
        } else if (request.target.starts_with("/api/v1/usage")) {
            const auto authorization = request.headers.find("authorization");
            if (authorization == request.headers.end() ||
                authorization->second != "Bearer service-token") {
                answer.status = 401;
                return answer;
            }
            if (request.method == "POST")
                ++documents_;
            answer.body = R"({"ret":0,"data":{"month":"2026-11","documentsRedacted":)" +
                          std::to_string(documents_.load()) + R"(,"findingsRedacted":0}})";
        } else {
            answer.status = 404;
            answer.reason = "Not Found";
        }
        return answer;
    }

  private:
    std::atomic<int> documents_ = 2;
};

void WriteDevelopersFile(const QString& profile, unsigned short port) {
    const QString folder = profile + QStringLiteral("/userdata/sblm.io");
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile file(folder + QStringLiteral("/brevan.config"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString page =
        QUrl::fromLocalFile(QStringLiteral(BREVAN_WEB_DIR "/index.html")).toString() +
        QStringLiteral("?ai_domain=http://127.0.0.1:%1").arg(port);
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

// The desktop window on a copy of the sample, signed in to a local account server, with the
// reference page open in the task pane and showing the document.
class DesktopWindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        server_.emplace([this](const HttpRequestSeen& request) {
            return service_.Answer(request, port_.load());
        });
        port_ = server_->port();
        ASSERT_TRUE(QFile::copy(QStringLiteral(BREVAN_SAMPLE_PDF), SamplePath()));
        WriteDevelopersFile(profile_.path(), port_);
        pdfhost::HostOptions options;
        options.profile = profile_.path().toStdString();
        options.plugins = BREVAN_PLUGIN_DIR;
        host_ = std::make_unique<pdfhost::HostApp>(options);
        host_->Account().SignIn("http://127.0.0.1:" + std::to_string(port_.load()));
        window_ = std::make_unique<pdfhost::ui::MainWindow>(*host_);
        ASSERT_EQ(host_->LoadPlugins(), 1u);
        window_->OpenFile(SamplePath());
        window_->resize(1400, 900);
        window_->show();
    }

    void TearDown() override {
        if (host_)
            host_->UnloadPlugins();
    }

    QString SamplePath() const { return files_.filePath(QStringLiteral("sample.pdf")); }

    // Auto Redaction from the ribbon: the task pane shows the page, which names the document.
    void OpenThePane() {
        host_->Answers().Queue("welcome", 0);
        host_->Answers().Queue("signIn", true);
        QAction* entry = RibbonEntry(*window_, QStringLiteral("Auto Redaction"));
        ASSERT_NE(entry, nullptr);
        entry->trigger();
        ASSERT_TRUE(WaitFor([&] {
            dock_ = window_->findChild<QDockWidget*>(QStringLiteral("BrevanTaskPane"));
            return dock_ != nullptr && dock_->isVisible();
        }));
        ASSERT_TRUE(WaitFor([&] {
            browser_ = PluginBrowser(*window_);
            return browser_ != nullptr && browser_->url().fileName() == QLatin1String("index.html");
        }));
        ASSERT_TRUE(
            WaitFor([&] { return Text("doc-line").contains(QStringLiteral("sample.pdf")); }));
    }

    // Scan in the page, until it lists what it found.
    void Scan() {
        Click("scan");
        ASSERT_TRUE(WaitFor([&] { return Listed(); }));
    }
    // The page lists findings and is not busy.
    bool Listed() {
        return Page("document.querySelectorAll('#findings li.finding').length").toInt() > 0 &&
               !Busy();
    }
    bool Busy() { return Page("document.body.classList.contains('busy')").toBool(); }

    QVariant Page(const std::string& script) {
        return Evaluate(*browser_->page(), QString::fromStdString(script));
    }
    QVariant Element(const char* id, const char* property) {
        return Page(std::string("document.getElementById('") + id + "')." + property);
    }
    QString Text(const char* id) { return Element(id, "textContent").toString(); }
    void Click(const char* id) { Element(id, "click(), 0"); }
    QString Status() { return Text("status"); }

    // Saves the window as build/artifacts/<name>.png and gives the picture.
    QImage SavePicture(const char* name) {
        const QImage picture = window_->grab().toImage();
        EXPECT_FALSE(picture.isNull());
        EXPECT_TRUE(QDir().mkpath(QStringLiteral(BREVAN_ARTIFACT_DIR)));
        EXPECT_TRUE(picture.save(QStringLiteral(BREVAN_ARTIFACT_DIR "/%1.png").arg(name)));
        return picture;
    }

    std::atomic<unsigned short> port_ = 0;
    AccountService service_;
    std::optional<LocalHttpServer> server_;
    QTemporaryDir profile_;
    QTemporaryDir files_;
    std::unique_ptr<pdfhost::HostApp> host_;
    std::unique_ptr<pdfhost::ui::MainWindow> window_;
    QDockWidget* dock_ = nullptr;
    QWebEngineView* browser_ = nullptr;
};

TEST_F(DesktopWindowTest, AutoRedactionShowsThePageInTheTaskPaneBesideTheDocument) {
    for (const char* entry : {"Auto Redaction", "Batch Redaction", "Profile"})
        ASSERT_NE(RibbonEntry(*window_, QString::fromUtf8(entry)), nullptr) << entry;
    ASSERT_NO_FATAL_FAILURE(OpenThePane());
    ASSERT_NO_FATAL_FAILURE(Scan());
    // The header names the signed-in user.
    EXPECT_TRUE(WaitFor([&] { return Text("account") == QStringLiteral("Local User"); }));
    Spin(500);  // let the page paint

    const QImage picture = SavePicture("desktop_task_pane");
    ASSERT_FALSE(picture.isNull());
    // The pane's part of the picture is not one flat colour: the page was drawn.
    const QRect pane = dock_->geometry();
    const QRgb first = picture.pixel(pane.center());
    bool varied = false;
    for (int y = pane.top(); y < pane.bottom() && !varied; y += 4) {
        for (int x = pane.left(); x < pane.right() && !varied; x += 4)
            varied = picture.pixel(x, y) != first;
    }
    EXPECT_TRUE(varied);
}

// Pictures of the pane as the user goes through it: mid-scan, after dropping a finding in the
// review, and the account page that Profile opens after the apply, with the service's usage.
TEST_F(DesktopWindowTest, PicturesOfTheScanTheReviewAndTheAccountPage) {
    ASSERT_NO_FATAL_FAILURE(OpenThePane());
    Click("scan");
    EXPECT_TRUE(WaitFor([&] { return Busy(); }));
    Spin(150);  // the pane paints its busy state
    SavePicture("desktop_mid_scan");
    ASSERT_TRUE(WaitFor([&] { return Listed(); }));

    // The review: the first finding dropped, the second shown in the document.
    Page("document.querySelector('#findings input[data-finding]').click(), 0");
    ASSERT_TRUE(WaitFor([&] {
        return !Page("document.querySelector('#findings input[data-finding]').checked").toBool() &&
               !Busy();
    }));
    Page("document.querySelectorAll('#findings button[data-show]')[1].click(), 0");
    ASSERT_TRUE(WaitFor([&] { return Status().startsWith(QStringLiteral("Showing")); }));
    Spin(500);
    SavePicture("desktop_review");

    // Apply & save: the page reports the redaction to the service, and the account page shows
    // the service's count.
    host_->Answers().Queue("messageBox", 1);
    host_->Answers().Queue("fileSave",
                           files_.filePath(QStringLiteral("sample_redacted.pdf")).toStdString());
    Click("apply");
    ASSERT_TRUE(WaitFor([&] {
        return Status() == QStringLiteral("Redaction applied, the copy saved and checked.");
    })) << Status().toStdString();

    QAction* profile = RibbonEntry(*window_, QStringLiteral("Profile"));
    ASSERT_NE(profile, nullptr);
    profile->trigger();
    ASSERT_TRUE(WaitFor([&] {
        return !Element("account-view", "hidden").toBool() &&
               Text("account-who").startsWith(QStringLiteral("Signed in as")) &&
               Text("account-usage")
                   .contains(QStringLiteral("November 2026: 3 document(s) redacted"));
    })) << Text("account-usage").toStdString();
    EXPECT_EQ(Text("account-service"),
              QStringLiteral("Service: http://127.0.0.1:%1").arg(port_.load()));
    Spin(500);
    SavePicture("desktop_profile");
}

// The user scans, presses Ctrl+Z in the document a few times (the editor takes the newest marks
// away), then Apply & save: the page says which ticked findings are no longer marked and saves
// nothing; "Mark again & apply" then saves a copy that holds none of the findings.
TEST_F(DesktopWindowTest, MarksUndoneBeforeTheApplyAreNamedAndMarkedAgainBeforeTheSave) {
    ASSERT_NO_FATAL_FAILURE(OpenThePane());
    ASSERT_NO_FATAL_FAILURE(Scan());
    std::vector<std::string> findings;
    for (const QVariant& text :
         Page("[...document.querySelectorAll('#findings li.finding:not(.missing) .finding-text')]"
              ".map((b) => b.textContent)")
             .toList())
        findings.push_back(text.toString().toStdString());
    ASSERT_FALSE(findings.empty());

    pdfhost::HostDocument* document = host_->Documents().Active();
    ASSERT_NE(document, nullptr);
    auto* view = window_->findChild<pdfhost::ui::DocumentView*>();
    ASSERT_NE(view, nullptr);
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    view->setFocus();
    const std::size_t marks = host_->Undo().Count(document->Handle());
    constexpr std::size_t kUndone = 3;
    ASSERT_GT(marks, kUndone);
    for (std::size_t i = 0; i < kUndone; ++i)
        QTest::keyClick(view, Qt::Key_Z, Qt::ControlModifier);
    ASSERT_EQ(host_->Undo().Count(document->Handle()), marks - kUndone);

    const std::string saved = files_.filePath(QStringLiteral("sample_redacted.pdf")).toStdString();
    host_->Answers().Queue("messageBox", 1);  // the editor's "apply the redaction?" prompt
    host_->Answers().Queue("fileSave", saved);
    Click("apply");
    ASSERT_TRUE(WaitFor([&] { return Status().contains(QStringLiteral("no longer marked")); }))
        << Status().toStdString();
    const QString notices = Text("notices");
    EXPECT_TRUE(notices.contains(QStringLiteral("are no longer marked"))) << notices.toStdString();
    EXPECT_TRUE(std::any_of(findings.begin(), findings.end(), [&](const std::string& text) {
        return notices.contains(QString::fromStdString('"' + text + '"'));
    })) << notices.toStdString();
    EXPECT_FALSE(Element("remark", "hidden").toBool());
    EXPECT_EQ(host_->Answers().Pending("fileSave"), 1u);
    EXPECT_FALSE(std::filesystem::exists(saved));

    host_->Answers().Queue("messageBox", 1);
    Click("remark");
    ASSERT_TRUE(WaitFor([&] {
        return Status() == QStringLiteral("Redaction applied, the copy saved and checked.");
    })) << Status().toStdString();
    EXPECT_TRUE(Element("remark", "hidden").toBool());
    ASSERT_TRUE(std::filesystem::exists(saved));
    EXPECT_EQ(leak_check::Leaks(saved, findings), "");
}

}  // namespace
