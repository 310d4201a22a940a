#include "web_page_view.h"

#include <unistd.h>

#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QRegularExpression>
#include <QWebChannel>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include "host_app.h"

namespace pdfhost {
namespace {

// window.external.DispatchFun over the web channel; calls made before the channel is up wait.
constexpr const char* kExternalScript = R"JS(
(function () {
    'use strict';
    const waiting = [];
    let host = null;
    function call(module, command, params, resolve) {
        host.DispatchFun(String(module), String(command), params == null ? '' : String(params),
                         resolve);
    }
    const external = {
        DispatchFun(module, command, params) {
            return new Promise(function (resolve) {
                if (host)
                    call(module, command, params, resolve);
                else
                    waiting.push([module, command, params, resolve]);
            });
        },
    };
    Object.defineProperty(window, 'external', {value: external, configurable: true});
    new QWebChannel(qt.webChannelTransport, function (channel) {
        host = channel.objects.external;
        for (const args of waiting.splice(0))
            call.apply(null, args);
    });
})();
)JS";

QString ResourceText(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The script of a call of window[name] with string arguments.
QString CallText(const QString& name, const QStringList& arguments) {
    QJsonArray list;
    for (const QString& argument : arguments)
        list.append(argument);
    const QString nameLiteral = QString::fromUtf8(
        QJsonDocument(QJsonArray{name}).toJson(QJsonDocument::Compact).chopped(1).mid(1));
    return QStringLiteral("window[%1].apply(window, %2)")
        .arg(nameLiteral, QString::fromUtf8(QJsonDocument(list).toJson(QJsonDocument::Compact)));
}

void PrepareEngine() {
    if (geteuid() == 0 && qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", QByteArray("1"));
}

}  // namespace

WebPageView::WebPageView(QWidget* parent, const HostWebPageRecord& record)
    : QWebEngineView((PrepareEngine(), parent)),
      client_(record.word(kWebPageClientData)),
      dispatch_(reinterpret_cast<HostWebPageDispatchFn>(record.word(kWebPageDispatch))) {
    setObjectName(QString::fromLatin1(kObjectName));
    auto* channel = new QWebChannel(this);
    channel->registerObject(QStringLiteral("external"), new WebPageViewExternal(*this));
    page()->setWebChannel(channel, QWebEngineScript::MainWorld);
    QWebEngineScript script;
    script.setName(QStringLiteral("pdfhost-external"));
    script.setSourceCode(ResourceText(QStringLiteral(":/qtwebchannel/qwebchannel.js")) +
                         QString::fromUtf8(kExternalScript));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(false);
    page()->scripts().insert(script);
    if (parent != nullptr) {
        setGeometry(parent->rect());
        parent->installEventFilter(this);
    }
}

void WebPageView::navigate(const QString& url) {
    load(QUrl::fromUserInput(url));
}

void WebPageView::loadHtml(const QString& html, const QString& baseUrl) {
    setHtml(html, QUrl(baseUrl));
}

QString WebPageView::location() const {
    return url().toString();
}

int WebPageView::engineMajorVersion() const {
    static const QRegularExpression chrome(QStringLiteral("Chrome/(\\d+)"));
    const QRegularExpressionMatch match =
        chrome.match(QWebEngineProfile::defaultProfile()->httpUserAgent());
    return match.hasMatch() ? match.captured(1).toInt() : 0;
}

void WebPageView::callScript(const QString& name, const QStringList& arguments) {
    page()->runJavaScript(CallText(name, arguments));
}

QString WebPageView::callScriptForResult(const QString& name, const QStringList& arguments) {
    QEventLoop loop;
    QPointer<QEventLoop> waiting(&loop);
    QString result;
    bool done = false;
    page()->runJavaScript(CallText(name, arguments), [&, waiting](const QVariant& value) {
        if (!waiting)
            return;
        result = value.toString();
        done = true;
        waiting->quit();
    });
    if (!done)
        loop.exec();
    return result;
}

QString WebPageView::Dispatch(const QString& module, const QString& command,
                              const QString& params) {
    HostApp* app = HostApp::Current();
    if (dispatch_ == nullptr || app == nullptr)
        return {};
    const HostWideString reply = app->Values().wideStrings.Emplace();
    dispatch_(client_, module.toStdWString().c_str(), command.toStdWString().c_str(),
              params.toStdWString().c_str(), reply);
    // The plug-in's callback may have ended the host.
    app = HostApp::Current();
    if (app == nullptr)
        return {};
    QString text;
    if (const WideStringValue* value = app->Values().wideStrings.Find(reply))
        text = QString::fromStdWString(value->text);
    app->Values().wideStrings.Erase(reply);
    return text;
}

bool WebPageView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWebEngineView::eventFilter(watched, event);
}

QString WebPageViewExternal::DispatchFun(const QString& module, const QString& command,
                                         const QString& params) {
    return view_.Dispatch(module, command, params);
}

}  // namespace pdfhost
