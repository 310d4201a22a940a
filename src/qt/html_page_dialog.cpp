#include "html_page_dialog.h"

#include "app/brevan.h"
#include "bridge/page_script.h"
#include "config/brevan_config.h"
#include "config/internet_connection.h"
#include "host_page_connection.h"
#include "logging/async_logger.h"
#include "page_files.h"
#include "util/utf.h"
#include "web_browser.h"

HtmlPageDialog::HtmlPageDialog(Brevan& app, PageDialogKind kind, PageDialog& self,
                               ChannelFileStream& viewStream, QWidget* parent)
    : QDialog(parent),
      app_(app),
      kind_(kind),
      self_(self),
      viewChannel_(app.host(), app.commands(), self, viewStream),
      scripted_(app.HasHostPageChannel() || (kind == PageDialogKind::Batch &&
                                             HostPageConnection::FindBatchChannel() != nullptr)) {}

HtmlPageDialog::~HtmlPageDialog() {
    if (webViewStarted_)
        browser_.reset();
    if (app_.browserExt && app_.browserExt->table != nullptr)
        app_.host().BrowserExtCloseWebPage(app_.browserExt->table, WindowHandle());
}

HostWindow HtmlPageDialog::WindowHandle() const {
    return reinterpret_cast<HostWindow>(const_cast<QWidget*>(static_cast<const QWidget*>(this)));
}

const char* HtmlPageDialog::LogPrefix() const {
    return kind_ == PageDialogKind::TaskPane ? "Brevan Auto redact" : "Brevan Batch redact";
}

std::wstring HtmlPageDialog::PageFilePath(PageFile file) const {
    const std::wstring folder = app_.config ? app_.config->serviceFolder() : std::wstring();
    return EnsurePageFile(folder, file);
}

void HtmlPageDialog::EnsurePageFiles() {
    PageFilePath(PageFile::Offline);
    PageFilePath(PageFile::Upgrade);
}

int HtmlPageDialog::OpenHostView() {
    if (scripted_ || !app_.browserExt || app_.browserExt->table == nullptr)
        return 0;
    HostWebView view = nullptr;
    const int opened = app_.host().BrowserExtOpenWebPage(
        app_.browserExt->table, url_.c_str(), WindowHandle(), &viewChannel_.record(), &view);
    hostView_ = LentWebView(view);
    return opened;
}

void HtmlPageDialog::StartBrowser() {
    browser_.reset();
    if (scripted_)
        return;
    browser_ = std::make_unique<CWebBrowser>(app_);
    QRect area = rect();
    if (QWidget* parent = parentWidget(); parent != nullptr && !isWindow())
        area = QRect(mapFrom(parent, QPoint(0, 0)), parent->size());
    webViewStarted_ = browser_->CreateAsync(this, area, [this] { OnBrowserCreated(); });
}

void HtmlPageDialog::OnBrowserCreated() {
    browser_->SetNavigationCompleted([this] { HideHostView(); });
    browser_->EnableScriptDialogs();
    BuildPageUrl(app_, kind_, url_);
    if (IsConnectedToInternet(app_) && !url_.empty()) {
        // Shown once loaded; meanwhile the host's view, if any, stays in front.
        browser_->hide();
        browser_->Navigate(url_);
    } else {
        browser_->Navigate(FileAddress(PageFilePath(PageFile::Offline)));
    }
}

void HtmlPageDialog::Reload(bool rebuild) {
    // The scripted channel's page needs no address, and the service is not asked for one.
    if (!scripted_ && (url_.empty() || rebuild))
        BuildPageUrl(app_, kind_, url_);
    if (kind_ == PageDialogKind::TaskPane)
        app_.logger.Log(kLogInfo, "Brevan Auto redact reload page: %", ToUtf8(url_));
    else
        app_.logger.Log(kLogInfo, "Brevan Batch redact Reload page :: %", ToUtf8(url_));
    ShowPage(url_);
}

void HtmlPageDialog::ShowPage(const std::wstring& address) {
    if (scripted_) {
        url_ = address;
        return;
    }
    if (webViewStarted_ && browser_) {
        browser_->Navigate(address);
        return;
    }
    url_ = address;
    if (IsConnectedToInternet(app_) && !url_.empty())
        ShowOnline();
    else
        ShowOffline();
}

void HtmlPageDialog::ShowOffline() {
    app_.logger.Log(kLogInfo, "% ShowOfflineHtml.", LogPrefix());
    if (hostView_.IsSet()) {
        const std::wstring folder = app_.config ? app_.config->serviceFolder() : std::wstring();
        hostView_.LoadHtml(PageResource(PageFile::Offline), folder);
    }
}

void HtmlPageDialog::CallScript(const std::wstring& name,
                                const std::vector<std::wstring>& arguments, std::wstring* result) {
    if (webViewStarted_ && browser_) {
        browser_->ExecuteScript(DispatchEventScript(arguments), CWebBrowser::ScriptHandler());
        return;
    }
    if (hostView_.IsSet())
        hostView_.CallScript(name, arguments, result);
}

void HtmlPageDialog::HideHostView() {
    hostView_.Hide();
    hostView_.Reset();
}
