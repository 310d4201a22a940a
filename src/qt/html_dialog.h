// CHtmlDlg: the page dialog that fills a main window's task pane and serves auto redaction of the
// current document.
#pragma once

#include "bridge/page_dialog.h"
#include "html_page_dialog.h"

class CHtmlDlg final : public PageDialog, public HtmlPageDialog {
  public:
    // Made as a child of `parent`; starts the browser at once.
    CHtmlDlg(const PageDialogServices& services, QWidget* parent);

    HostWindow Window() const override { return WindowHandle(); }
    void Show() override { show(); }
    void Reload(bool rebuild) override { HtmlPageDialog::Reload(rebuild); }
    void CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                    std::wstring* result) override {
        HtmlPageDialog::CallScript(name, arguments, result);
    }
    void HideHostView() override { HtmlPageDialog::HideHostView(); }

  protected:
    void ShowOnline() override;
    void resizeEvent(QResizeEvent* event) override;
};
