#include "profile_html_dialog.h"

#include "app/brevan.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

constexpr int kWidth = 1100;
constexpr int kHeight = 760;

}  // namespace

CProfileHtmlDlg::CProfileHtmlDlg(Brevan& app, QWidget* parent)
    : HtmlPageDialog(app, PageDialogKind::Batch, *this, app.batchViewStream, parent) {
    setWindowTitle(QStringLiteral("Batch Redaction"));
    setFixedSize(kWidth, kHeight);
    EnsurePageFiles();
    StartBrowser();
    if (!webViewStarted() && !hostView_.IsSet()) {
        OpenHostView();
        Reload(false);
    }
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

void CProfileHtmlDlg::ShowOnline() {
    app_.logger.Log(kLogInfo, "Brevan Batch redact start ShowOnlineHtml.");
    if (!hostView_.IsSet()) {
        app_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml OpenWebPage start.");
        if (OpenHostView() == 0 || !hostView_.IsSet()) {
            app_.logger.Log(kLogError, "Brevan Batch redact ShowOnlineHtml OpenWebPage error.");
            return;
        }
        hostView_.Navigate(url_);
        app_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml OpenWebPage done.");
    } else {
        hostView_.Navigate(url_);
    }
    app_.logger.Log(kLogInfo, "Brevan Batch redact ShowOnlineHtml :%",
                    ToUtf8(hostView_.Location()));
}
