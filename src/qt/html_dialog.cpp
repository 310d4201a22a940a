#include "html_dialog.h"

#include <QResizeEvent>

#include "app/page_dialog_services.h"
#include "logging/async_logger.h"
#include "page_files.h"
#include "util/utf.h"
#include "web_browser.h"

namespace {

// The host's view needs at least this engine version for the page.
constexpr int kMinimumHostEngineVersion = 11;

}  // namespace

CHtmlDlg::CHtmlDlg(const PageDialogServices& services, QWidget* parent)
    : HtmlPageDialog(services, PageDialogKind::TaskPane, *this, services.paneViewStream, parent) {
    setWindowFlags(Qt::Widget);
    EnsurePageFiles();
    if (!hostView_.IsSet())
        OpenHostView();
    StartBrowser();
}

void CHtmlDlg::ShowOnline() {
    if (!hostView_.IsSet()) {
        OpenHostView();
        hostView_.Navigate(url_);
    } else if (hostView_.EngineMajorVersion() < kMinimumHostEngineVersion) {
        hostView_.Navigate(FileAddress(PageFilePath(PageFile::Upgrade)));
    } else {
        hostView_.Navigate(url_);
    }
    services_.logger.Log(kLogInfo, "Brevan Auto redact ShowOnlineHtml: %",
                         ToUtf8(hostView_.Location()));
}

// The browser follows the pane's size, without moving.
void CHtmlDlg::resizeEvent(QResizeEvent* event) {
    HtmlPageDialog::resizeEvent(event);
    if (webViewStarted() && browser() != nullptr)
        browser()->resize(event->size());
}
