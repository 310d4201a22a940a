#include "browser_page.h"

#include <QMetaObject>
#include <QUrl>
#include <iostream>

#include "bridge/browser_navigation.h"
#include "logging/async_logger.h"

void BrowserPage::ShowHtml(const QString& html) {
    htmlPending_ = true;
    setHtml(html, QUrl(QStringLiteral("about:blank")));
}

bool BrowserPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
    if (!isMainFrame)
        return true;
    // Shown text arrives as a data: address of its own.
    if (htmlPending_ && url.scheme() == QLatin1String("data")) {
        htmlPending_ = false;
        return true;
    }
    if (IsNavigationAllowed(url.toString().toStdWString()))
        return QWebEnginePage::acceptNavigationRequest(url, type, isMainFrame);
    // Not from inside the request: the page is in the middle of deciding on a navigation.
    QMetaObject::invokeMethod(
        this, [this] { ShowHtml(QString::fromWCharArray(kBlockedDomainHtml)); },
        Qt::QueuedConnection);
    return false;
}

void BrowserPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message,
                                           int, const QString&) {
    const std::string text = message.toStdString();
    AsyncLogger::Instance().Log(kLogInfo, "page: %", text);
    std::cerr << "page: " << text << std::endl;
}

void BrowserPage::javaScriptAlert(const QUrl& origin, const QString& message) {
    if (scriptDialogs_)
        QWebEnginePage::javaScriptAlert(origin, message);
}

bool BrowserPage::javaScriptConfirm(const QUrl& origin, const QString& message) {
    return scriptDialogs_ && QWebEnginePage::javaScriptConfirm(origin, message);
}

bool BrowserPage::javaScriptPrompt(const QUrl& origin, const QString& message, const QString& value,
                                   QString* result) {
    return scriptDialogs_ && QWebEnginePage::javaScriptPrompt(origin, message, value, result);
}
