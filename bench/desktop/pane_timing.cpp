// Times pdfhost's desktop as a person uses it on one document: the press of Auto Redaction until
// the status bar has painted its "Opening…" text, until the press returns, and until the task pane
// shows the page naming the document; then the pane's scan (Scan pressed in the page until the
// findings are listed) and "Scan again". Prints one JSON line of seconds.
//   pane_timing --profile DIR --plugins DIR --account-server URL FILE.pdf
// The profile must hold the developers' file that points the plug-in at the reference page
// (pane_timing.py writes it).
#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStatusBar>
#include <QWebEngineView>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "host_app.h"
#include "ui/main_window.h"
#include "ui/web_page_view.h"

namespace {

bool WaitFor(const std::function<bool()>& done, int milliseconds = 600000) {
    QDeadlineTimer deadline(milliseconds);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

QVariant Evaluate(QWebEnginePage& page, const QString& script) {
    QVariant result;
    bool done = false;
    page.runJavaScript(script, [&](const QVariant& value) {
        result = value;
        done = true;
    });
    WaitFor([&] { return done; }, 30000);
    return result;
}

// Notes when the status bar first paints while `armed`.
class PaintClock : public QObject {
  public:
    PaintClock(const QElapsedTimer& clock) : clock_(clock) {}
    bool armed = false;
    qint64 paintedAt = -1;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (armed && paintedAt < 0 && event->type() == QEvent::Paint)
            paintedAt = clock_.nsecsElapsed();
        return QObject::eventFilter(watched, event);
    }

  private:
    const QElapsedTimer& clock_;
};

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

int Fail(const char* what) {
    std::fprintf(stderr, "pane_timing: %s\n", what);
    return 1;
}

double Seconds(qint64 nanoseconds) {
    return static_cast<double>(nanoseconds) / 1e9;
}

}  // namespace

int main(int argc, char** argv) {
    std::string profile;
    std::string plugins;
    std::string server;
    QString file;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--profile" && i + 1 < argc)
            profile = argv[++i];
        else if (argument == "--plugins" && i + 1 < argc)
            plugins = argv[++i];
        else if (argument == "--account-server" && i + 1 < argc)
            server = argv[++i];
        else
            file = QString::fromLocal8Bit(argv[i]);
    }
    if (profile.empty() || plugins.empty() || server.empty() || file.isEmpty())
        return Fail("usage: pane_timing --profile DIR --plugins DIR --account-server URL FILE");

    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    pdfhost::HostOptions options;
    options.profile = profile;
    options.plugins = plugins;
    pdfhost::HostApp host(options);
    host.Account().SignIn(server);
    pdfhost::ui::MainWindow window(host);
    if (host.LoadPlugins() != 1u)
        return Fail("the plug-in did not load");
    window.OpenFile(file);
    window.resize(1400, 900);
    window.show();
    WaitFor([] { return false; }, 1000);  // the first page drawn, the window idle

    QElapsedTimer clock;
    PaintClock paints(clock);
    window.statusBar()->installEventFilter(&paints);
    host.Answers().Queue("welcome", 0);
    host.Answers().Queue("signIn", true);
    QAction* entry = RibbonEntry(window, QStringLiteral("Auto Redaction"));
    if (entry == nullptr)
        return Fail("no Auto Redaction entry");
    const QString name = QFileInfo(file).fileName();

    qint64 messageAt = -1;
    const QMetaObject::Connection watch =
        QObject::connect(window.statusBar(), &QStatusBar::messageChanged, [&](const QString& text) {
            if (messageAt < 0 && !text.isEmpty())
                messageAt = clock.nsecsElapsed();
        });
    clock.start();
    paints.armed = true;
    entry->trigger();
    const qint64 pressReturned = clock.nsecsElapsed();
    QWebEngineView* browser = nullptr;
    const bool shown = WaitFor([&] {
        browser = PluginBrowser(window);
        return browser != nullptr && browser->url().fileName() == QLatin1String("index.html") &&
               Evaluate(*browser->page(), QStringLiteral("document.getElementById('doc-line')"
                                                         ".textContent"))
                   .toString()
                   .contains(name);
    });
    const qint64 paneShown = clock.nsecsElapsed();
    if (!shown)
        return Fail("the pane did not show the document");

    // One scan in the page: from the press of its button until it is idle with its list.
    auto scan = [&]() -> double {
        // The page shows its busy state on the body while it works: the scan has ended once
        // that state came and went.
        QElapsedTimer scanClock;
        scanClock.start();
        Evaluate(*browser->page(),
                 QStringLiteral("window.busySeen = false;"
                                "new MutationObserver(() => { if (document.body.classList"
                                ".contains('busy')) window.busySeen = true; })"
                                ".observe(document.body, {attributes: true});"
                                "document.getElementById('scan').click(), 0"));
        const bool ended = WaitFor([&] {
            return Evaluate(*browser->page(),
                            QStringLiteral("window.busySeen && "
                                           "!document.body.classList.contains('busy')"))
                .toBool();
        });
        return ended ? Seconds(scanClock.nsecsElapsed()) : -1;
    };
    const double first = scan();
    const double again = scan();
    const QString status =
        Evaluate(*browser->page(), QStringLiteral("document.getElementById('status').textContent"))
            .toString();
    std::printf(
        "{\"pressToStatusText\": %.4f, \"pressToStatusPainted\": %.4f, \"pressReturned\": %.4f, "
        "\"pressToPane\": %.4f, "
        "\"firstScan\": %.3f, \"scanAgain\": %.3f, \"status\": \"%s\"}\n",
        messageAt < 0 ? -1.0 : Seconds(messageAt),
        paints.paintedAt < 0 ? -1.0 : Seconds(paints.paintedAt), Seconds(pressReturned),
        Seconds(paneShown), first, again,
        status.toHtmlEscaped().replace(QLatin1Char('"'), QLatin1Char('\'')).toUtf8().constData());
    std::fflush(stdout);
    QObject::disconnect(watch);
    host.UnloadPlugins();
    return first < 0 || again < 0 ? 1 : 0;
}
