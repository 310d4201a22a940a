#include "html_page_dialog.h"

#include "app/page_dialog_services.h"
#include "bridge/page_script.h"
#include "config/brevan_config.h"
#include "config/internet_connection.h"
#include "config/service_config.h"
#include "host/extension_tables.h"
#include "host_page_connection.h"
#include "logging/async_logger.h"
#include "page_files.h"
#include "util/utf.h"
#include "web_browser.h"

HtmlPageDialog::HtmlPageDialog(const PageDialogServices& services, PageDialogKind kind,
                               PageDialog& self, ChannelFileStream& viewStream, QWidget* parent)
    : QDialog(parent),
      services_(services),
      kind_(kind),
      self_(self),
      viewChannel_(services.host, services.commands, self, viewStream),
      scripted_(
          services.hostPage != nullptr ||
          (kind == PageDialogKind::Batch && HostPageConnection::FindBatchChannel() != nullptr)) {}

HtmlPageDialog::~HtmlPageDialog() {
    if (webViewStarted_)
        browser_.reset();
    if (services_.browserExt && services_.browserExt->table != nullptr)
        services_.host.BrowserExtCloseWebPage(services_.browserExt->table, WindowHandle());
}

HostWindow HtmlPageDialog::WindowHandle() const {
    return reinterpret_cast<HostWindow>(const_cast<QWidget*>(static_cast<const QWidget*>(this)));
}

const char* HtmlPageDialog::LogPrefix() const {
    return kind_ == PageDialogKind::TaskPane ? "Brevan Auto redact" : "Brevan Batch redact";
}

std::wstring HtmlPageDialog::PageFilePath(PageFile file) const {
    const std::wstring folder =
        services_.config ? services_.config->serviceFolder() : std::wstring();
    return EnsurePageFile(folder, file);
}

void HtmlPageDialog::EnsurePageFiles() {
    PageFilePath(PageFile::Offline);
    PageFilePath(PageFile::Upgrade);
}

int HtmlPageDialog::OpenHostView() {
    if (scripted_ || !services_.browserExt || services_.browserExt->table == nullptr)
        return 0;
    HostWebView view = nullptr;
    const int opened = services_.host.BrowserExtOpenWebPage(
        services_.browserExt->table, url_.c_str(), WindowHandle(), &viewChannel_.record(), &view);
    hostView_ = LentWebView(view);
    return opened;
}

void HtmlPageDialog::StartBrowser() {
    browser_.reset();
    if (scripted_)
        return;
    browser_ = std::make_unique<CWebBrowser>(services_);
    QRect area = rect();
    if (QWidget* parent = parentWidget(); parent != nullptr && !isWindow())
        area = QRect(mapFrom(parent, QPoint(0, 0)), parent->size());
    webViewStarted_ = browser_->CreateAsync(this, area, [this] { OnBrowserCreated(); });
}

void HtmlPageDialog::OnBrowserCreated() {
    browser_->SetNavigationCompleted([this] { HideHostView(); });
    browser_->EnableScriptDialogs();
    BuildPageUrl(services_.host, services_.config.get(), services_.serviceConfig.get(),
                 services_.accountPage, kind_, url_);
    if (IsConnectedToInternet(services_.config.get(), services_.platform) && !url_.empty()) {
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
        BuildPageUrl(services_.host, services_.config.get(), services_.serviceConfig.get(),
                     services_.accountPage, kind_, url_);
    LogPageReload(services_.logger, kind_, url_);
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
    if (IsConnectedToInternet(services_.config.get(), services_.platform) && !url_.empty())
        ShowOnline();
    else
        ShowOffline();
}

void HtmlPageDialog::ShowOffline() {
    services_.logger.Log(kLogInfo, "% ShowOfflineHtml.", LogPrefix());
    if (hostView_.IsSet()) {
        const std::wstring folder =
            services_.config ? services_.config->serviceFolder() : std::wstring();
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
