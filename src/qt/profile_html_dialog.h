// CProfileHtmlDlg: the modal page dialog of a batch run ("Batch Redaction"). Its modal run keeps
// going while the window is hidden, until the run is ended. When the host publishes a batch page
// channel, that channel is the page: its messages are served here instead of a web view's.
#pragma once

#include <QEventLoop>
#include <QPointer>
#include <memory>

#include "bridge/page_dialog.h"
#include "html_page_dialog.h"

class HostPageConnection;
class WebMessageChannel;

class CProfileHtmlDlg final : public HtmlPageDialog, public BatchPageDialog {
    Q_OBJECT
    // The page address the dialog built, "" when none.
    Q_PROPERTY(QString url READ urlText)

  public:
    // A window over `parent`; starts the browser, or the host's view when it can't.
    CProfileHtmlDlg(const PageDialogServices& services, QWidget* parent);
    ~CProfileHtmlDlg() override;

    HostWindow Window() const override { return WindowHandle(); }
    void Show() override { show(); }
    void Reload(bool rebuild) override { HtmlPageDialog::Reload(rebuild); }
    void CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                    std::wstring* result) override {
        HtmlPageDialog::CallScript(name, arguments, result);
    }
    void HideHostView() override { HtmlPageDialog::HideHostView(); }

    int RunModal() override;
    void EndModal(int result) override { done(result); }
    void SetVisible(bool visible) override { setVisible(visible); }

    // Ends the modal run with `result`; the window closes.
    void done(int result) override;
    // Closing the window (its close button, Escape) ends the run as closed.
    void reject() override;

    QString urlText() const { return QString::fromStdWString(url()); }

  protected:
    void ShowOnline() override;

  private:
    QPointer<QEventLoop> modalLoop_;
    int modalResult_ = 0;
    std::unique_ptr<HostPageConnection> batchPage_;
    std::unique_ptr<WebMessageChannel> batchChannel_;
};
