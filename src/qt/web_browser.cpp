#include "web_browser.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaObject>
#include <QPointer>
#include <QResizeEvent>
#include <QWebChannel>
#include <QWebEngineHistory>
#include <QWebEngineHttpRequest>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include "app/page_dialog_services.h"
#include "bridge/browser_navigation.h"
#include "bridge/browser_status.h"
#include "bridge/web_message_channel.h"
#include "browser_page.h"
#include "web_view_bridge.h"
#include "webengine_environment.h"

namespace {

QString ResourceText(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The web channel's client library and the window.chrome.webview shim, run in the page before
// any of its own scripts.
QWebEngineScript WebViewScript() {
    QWebEngineScript script;
    script.setName(QStringLiteral("tarvosablemark-webview"));
    script.setSourceCode(
        ResourceText(QStringLiteral(":/qtwebchannel/qwebchannel.js")) + QLatin1Char('\n') +
        ResourceText(QStringLiteral(":/tarvosablemark/browser/webview_bridge.js")));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(false);
    return script;
}

// `text` as a script string literal.
QString ScriptLiteral(const QString& text) {
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QUrl AddressOf(const std::wstring& url) {
    return QUrl(QString::fromStdWString(NormalizeUrl(url)));
}

}  // namespace

// Replies go to the browser while it lives.
struct CWebBrowser::MessageRoute final : PageEndpoint {
    MessageRoute(const PageDialogServices& services, CWebBrowser& browser)
        : browser(&browser), channel(services.commands, *this, services.browserStream) {}
    void PostWebMessageAsString(const std::wstring& text) override {
        if (browser)
            browser->PostWebMessageAsString(text);
    }
    void ExecuteScript(const std::wstring& script) override {
        if (browser)
            browser->ExecuteScript(script);
    }

    QPointer<CWebBrowser> browser;
    WebMessageChannel channel;
};

CWebBrowser::CWebBrowser(const PageDialogServices& services) : services_(services) {
    callbacks_[kCreationCompleted] = {};
    callbacks_[kNavigationCompleted] = {};
}

CWebBrowser::~CWebBrowser() {
    CloseWebView();
}

bool CWebBrowser::CreateAsync(QWidget* parent, const QRect& rect, Callback created) {
    callbacks_[kCreationCompleted] = std::move(created);
    return Create(parent, rect);
}

bool CWebBrowser::Create(QWidget* parent, const QRect& rect) {
    setParent(parent);
    setGeometry(rect);
    show();
    return InitializeWebView();
}

bool CWebBrowser::InitializeWebView() {
    CloseWebView();
    PrepareWebEngineEnvironment();
    QMetaObject::invokeMethod(
        this, [this] { OnEngineReady(); }, Qt::QueuedConnection);
    return true;
}

void CWebBrowser::OnEngineReady() {
    if (view_ != nullptr)
        return;
    view_ = new QWebEngineView(this);
    page_ = new BrowserPage(QWebEngineProfile::defaultProfile(), view_);
    view_->setPage(page_);
    view_->setVisible(true);

    QWebEngineSettings* settings = page_->settings();
    settings->setAttribute(QWebEngineSettings::JavascriptEnabled, true);
    // A page opened from a file (the developers' custom_url) still asks the service's API.
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    page_->EnableScriptDialogs();

    channel_ = new QWebChannel(this);
    bridge_ = new WebViewBridge(
        [this](const QString& text, bool isString) { OnWebMessage(text, isString); }, this);
    channel_->registerObject(QStringLiteral("webview"), bridge_);
    page_->setWebChannel(channel_, QWebEngineScript::MainWorld);
    page_->scripts().insert(WebViewScript());
    messages_ = std::make_shared<MessageRoute>(services_, *this);
    ResizeToClientArea();
    connect(page_, &QWebEnginePage::loadFinished, this, [this](bool) { OnNavigationCompleted(); });

    // The creation callback runs from the event loop, after this step has returned.
    Callback created = callbacks_[kCreationCompleted];
    if (created)
        QMetaObject::invokeMethod(this, std::move(created), Qt::QueuedConnection);
}

void CWebBrowser::CloseWebView() {
    if (view_ == nullptr)
        return;
    disconnect(page_, nullptr, this, nullptr);
    messages_.reset();
    delete page_;
    page_ = nullptr;
    delete view_;
    view_ = nullptr;
    delete channel_;
    channel_ = nullptr;
    delete bridge_;
    bridge_ = nullptr;
}

void CWebBrowser::Navigate(const std::wstring& url, Callback done) {
    if (view_ == nullptr)
        return;
    callbacks_[kNavigationCompleted] = std::move(done);
    page_->load(AddressOf(url));
}

void CWebBrowser::NavigateToString(const std::wstring& html, Callback done) {
    if (view_ == nullptr)
        return;
    callbacks_[kNavigationCompleted] = std::move(done);
    page_->ShowHtml(QString::fromStdWString(html));
}

void CWebBrowser::NavigatePost(const std::wstring& url, const std::string& content,
                               const std::wstring& headers, Callback done) {
    if (view_ == nullptr)
        return;
    callbacks_[kNavigationCompleted] = std::move(done);
    QWebEngineHttpRequest request(AddressOf(url), QWebEngineHttpRequest::Post);
    request.setPostData(QByteArray::fromStdString(content));
    for (const QString& line :
         QString::fromStdWString(headers).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        const qsizetype colon = line.indexOf(QLatin1Char(':'));
        if (colon > 0) {
            request.setHeader(line.left(colon).trimmed().toUtf8(),
                              line.mid(colon + 1).trimmed().toUtf8());
        }
    }
    page_->load(request);
}

int CWebBrowser::ExecuteScript(const std::wstring& script, ScriptHandler handler) {
    if (view_ == nullptr)
        return kStatusNotUp;
    if (script.empty())
        return kStatusEmptyScript;
    if (!handler)
        handler = [](const QVariant&) {};
    page_->runJavaScript(QString::fromStdWString(script), handler);
    return kStatusOk;
}

void CWebBrowser::ExecuteScript(const std::wstring& script) {
    ExecuteScript(script, ScriptHandler());
}

void CWebBrowser::PostWebMessageAsString(const std::wstring& text) {
    // Replies travel the same road as event scripts, so they reach the page in the order given.
    ExecuteScript(L"(function (webview) { if (webview && webview.__receive) webview.__receive(" +
                      ScriptLiteral(QString::fromStdWString(text)).toStdWString() +
                      L"); })(window.chrome && window.chrome.webview);",
                  ScriptHandler());
}

void CWebBrowser::Print() {
    ExecuteScript(L"window.print();", ScriptHandler());
}

void CWebBrowser::GoBack() {
    if (view_ != nullptr && page_->history()->canGoBack())
        page_->triggerAction(QWebEnginePage::Back);
}

void CWebBrowser::GoForward() {
    if (view_ != nullptr && page_->history()->canGoForward())
        page_->triggerAction(QWebEnginePage::Forward);
}

std::wstring CWebBrowser::GetLocationURL() const {
    if (view_ == nullptr)
        return {};
    const QString url = page_->url().toString(QUrl::FullyEncoded);
    return url == QLatin1String("about:blank") ? std::wstring() : url.toStdWString();
}

QRect CWebBrowser::GetBounds() const {
    return view_ != nullptr ? view_->geometry() : QRect();
}

void CWebBrowser::ResizeToClientArea() {
    if (view_ != nullptr)
        view_->setGeometry(rect());
}

void CWebBrowser::EnableScriptDialogs() {
    if (page_ != nullptr)
        page_->EnableScriptDialogs();
}

void CWebBrowser::RegisterCallback(int kind, Callback callback) {
    callbacks_[kind] = std::move(callback);
}

void CWebBrowser::OnWebMessage(const QString& text, bool isString) {
    if (!isString) {
        // The page posted something other than a string: not served.
        CHECK_BROWSER_STATUS(kBrowserStatusInvalidArgument);
        return;
    }
    // Served from the event loop, in the order posted, rather than inside the web channel's own
    // delivery, which must not see its objects go while it runs.
    QMetaObject::invokeMethod(
        this,
        [route = messages_, utf8 = text.toUtf8()] {
            route->channel.OnWebMessage(
                std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
        },
        Qt::QueuedConnection);
}

void CWebBrowser::OnNavigationCompleted() {
    show();
    if (navigationCompleted_)
        navigationCompleted_();
}

void CWebBrowser::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!event->size().isEmpty())
        ResizeToClientArea();
}
