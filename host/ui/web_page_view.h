// WebPageView: the web view that pdfhost lends to a plug-in through the browser table. It covers
// the plug-in's window, shows an address or HTML text, runs the plug-in's script calls, and gives
// its page window.external.DispatchFun(module, command, params): the call goes to the callback of
// the plug-in's record and the page gets the reply text. The web engine can't answer a page
// synchronously, so DispatchFun returns a Promise of the reply text.
#pragma once

#include <QString>
#include <QStringList>
#include <QWebEngineView>

#include "host_abi.h"

namespace pdfhost {

class WebPageView final : public QWebEngineView {
    Q_OBJECT

  public:
    static constexpr const char* kObjectName = "pdfhost.webPageView";

    // Covers `parent` and follows its size. The record's callback serves DispatchFun.
    WebPageView(QWidget* parent, const HostWebPageRecord& record);

    Q_INVOKABLE void navigate(const QString& url);
    Q_INVOKABLE void loadHtml(const QString& html, const QString& baseUrl);
    Q_INVOKABLE QString location() const;
    // The major version of the web engine (its Chromium version).
    Q_INVOKABLE int engineMajorVersion() const;
    // Calls the page's function `name` with string arguments, without waiting.
    Q_INVOKABLE void callScript(const QString& name, const QStringList& arguments);
    // The same, waiting for the call; its result as text.
    Q_INVOKABLE QString callScriptForResult(const QString& name, const QStringList& arguments);

    // Runs the plug-in's callback for one DispatchFun call and returns the reply text.
    QString Dispatch(const QString& module, const QString& command, const QString& params);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void* client_;
    HostWebPageDispatchFn dispatch_;
};

// The object the page reaches as "external" over the web channel.
class WebPageViewExternal final : public QObject {
    Q_OBJECT

  public:
    explicit WebPageViewExternal(WebPageView& view) : QObject(&view), view_(view) {}

  public slots:
    QString DispatchFun(const QString& module, const QString& command, const QString& params);

  private:
    WebPageView& view_;
};

}  // namespace pdfhost
