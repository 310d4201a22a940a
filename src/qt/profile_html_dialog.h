// CProfileHtmlDlg: the modal page dialog of a batch run ("Batch Redaction"). Its modal run keeps
// going while the window is hidden, until the run is ended.
#pragma once

#include <QEventLoop>
#include <QPointer>

#include "bridge/page_dialog.h"
#include "html_page_dialog.h"

class CProfileHtmlDlg final : public BatchPageDialog, public HtmlPageDialog {
  public:
    // A window over `parent`; starts the browser, or the host's view when it can't.
    CProfileHtmlDlg(Brevan& app, QWidget* parent);

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

  protected:
    void ShowOnline() override;

  private:
    QPointer<QEventLoop> modalLoop_;
    int modalResult_ = 0;
};
