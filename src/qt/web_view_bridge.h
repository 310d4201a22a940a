// WebViewBridge: the object the page reaches as "webview" over the web channel. The injected
// window.chrome.webview.postMessage calls postMessage with the message's text and whether the
// page gave a string.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

class WebViewBridge final : public QObject {
    Q_OBJECT

  public:
    using Handler = std::function<void(const QString& text, bool isString)>;

    explicit WebViewBridge(Handler handler, QObject* parent = nullptr)
        : QObject(parent), handler_(std::move(handler)) {}

  public slots:
    void postMessage(const QString& text, bool isString);

  private:
    Handler handler_;
};
