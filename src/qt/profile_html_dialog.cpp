#include "profile_html_dialog.h"

#include "app/page_dialog_services.h"
#include "bridge/web_message_channel.h"
#include "config/page_address.h"
#include "host_page_connection.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

constexpr int kWidth = 1100;
constexpr int kHeight = 760;
// The run's result when the window is closed rather than ended with OK.
constexpr int kClosed = 2;

}  // namespace

CProfileHtmlDlg::CProfileHtmlDlg(const PageDialogServices& services, QWidget* parent)
    : HtmlPageDialog(services, PageDialogKind::Batch, *this, services.batchViewStream, parent) {
    setObjectName(QStringLiteral("CProfileHtmlDlg"));
    setWindowTitle(QStringLiteral("Batch Redaction"));
    setFixedSize(kWidth, kHeight);
    if (QObject* channel = HostPageConnection::FindBatchChannel()) {
        PageDialog& self = *this;
        batchPage_ = std::make_unique<HostPageConnection>(channel);
        batchChannel_ = std::make_unique<WebMessageChannel>(services.commands, *batchPage_,
                                                            services.batchViewStream, &self);
        batchPage_->SetMessageHandler(
            [this](std::string_view text) { batchChannel_->OnWebMessage(text); });
        BuildPageUrl(services.host, services.config.get(), services.serviceConfig.get(), false,
                     PageDialogKind::Batch, url_);
        return;
    }
    EnsurePageFiles();
    StartBrowser();
    if (!webViewStarted() && !hostView_.IsSet()) {
        OpenHostView();
        Reload(false);
    }
}

CProfileHtmlDlg::~CProfileHtmlDlg() {
    if (batchPage_)
        batchPage_->SetMessageHandler({});
}

int CProfileHtmlDlg::RunModal() {
    // A loop of its own, so that hiding the window doesn't end the run.
    QEventLoop loop;
    modalLoop_ = &loop;
    modalResult_ = 0;
    setWindowModality(Qt::ApplicationModal);
    show();
    loop.exec(QEventLoop::DialogExec);
    return modalResult_;
}

void CProfileHtmlDlg::done(int result) {
    modalResult_ = result;
    QDialog::done(result);
    if (modalLoop_)
        modalLoop_->quit();
}

void CProfileHtmlDlg::reject() {
    done(kClosed);
}

void CProfileHtmlDlg::ShowOnline() {
    services_.logger.Log(kLogInfo, "Brevan Batch redact start ShowOnlineHtml.");
    if (!hostView_.IsSet()) {
        services_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml OpenWebPage start.");
        if (OpenHostView() == 0 || !hostView_.IsSet()) {
            services_.logger.Log(kLogError,
                                 "Brevan Batch redact ShowOnlineHtml OpenWebPage error.");
            return;
        }
        hostView_.Navigate(url_);
        services_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml OpenWebPage done.");
    } else {
        hostView_.Navigate(url_);
    }
    services_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml :%",
                         ToUtf8(hostView_.Location()));
}
