// BrowserPage: the web page of the embedded browser. It lets a main-frame navigation through only
// when the address passes the browser's rule, and shows the blocked text in place of one that
// doesn't; it sends the page's console to the log and to stderr; it holds script dialogs back
// until they are enabled.
#pragma once

#include <QWebEnginePage>

class BrowserPage final : public QWebEnginePage {
  public:
    explicit BrowserPage(QWebEngineProfile* profile, QObject* parent = nullptr)
        : QWebEnginePage(profile, parent) {}

    // Shows `html`; this one navigation bypasses the address rule.
    void ShowHtml(const QString& html);
    void EnableScriptDialogs() { scriptDialogs_ = true; }

  protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                  int line, const QString& source) override;
    void javaScriptAlert(const QUrl& origin, const QString& message) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& value,
                          QString* result) override;

  private:
    bool htmlPending_ = false;
    bool scriptDialogs_ = false;
};
