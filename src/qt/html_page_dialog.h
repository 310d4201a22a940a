// HtmlPageDialog: what the two page dialogs share. A dialog builds the page's address, chooses
// between the online page and the offline page, shows it in its own CWebBrowser or, when that
// can't start, in a web view the host lends, and carries script calls to whichever is in use.
// While the host's scripted page channel stands in for the page (for the batch page, its batch
// page channel), the dialog shows nothing and only keeps the address.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "bridge/host_view_channel.h"
#include "config/page_address.h"
#include "lent_web_view.h"
#include "page_files.h"

class CWebBrowser;
class PageDialog;
struct ChannelFileStream;
struct PageDialogServices;

class HtmlPageDialog : public QDialog {
  public:
    // `self` is the dialog as the rest of the plug-in knows it; `viewStream` is the file stream
    // of its host web view channel.
    HtmlPageDialog(const PageDialogServices& services, PageDialogKind kind, PageDialog& self,
                   ChannelFileStream& viewStream, QWidget* parent);
    // Takes the browser down and gives the host its web view back.
    ~HtmlPageDialog() override;

    // Builds the address when `rebuild` is set or none was built, logs it and shows it.
    void Reload(bool rebuild);
    // In the browser when it was started; otherwise online or offline in the host's view.
    void ShowPage(const std::wstring& address);
    void CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                    std::wstring* result);
    void HideHostView();
    HostWindow WindowHandle() const;

    const std::wstring& url() const { return url_; }
    bool webViewStarted() const { return webViewStarted_; }
    CWebBrowser* browser() const { return browser_.get(); }

  protected:
    // Writes the offline and upgrade pages unless they are there.
    void EnsurePageFiles();
    // Opens the host's web view on `url`; returns the host's answer, 0 when it has no view.
    int OpenHostView();
    // Makes a new browser over the dialog and begins its start-up.
    void StartBrowser();
    void ShowOffline();
    virtual void ShowOnline() = 0;
    // The file's path in the service folder, written there first when missing.
    std::wstring PageFilePath(PageFile file) const;
    // "Brevan Auto redact" or "Brevan Batch redact".
    const char* LogPrefix() const;

    const PageDialogServices& services_;
    const PageDialogKind kind_;
    std::wstring url_;
    LentWebView hostView_;

  private:
    void OnBrowserCreated();

    PageDialog& self_;
    HostViewChannel viewChannel_;
    std::unique_ptr<CWebBrowser> browser_;
    bool webViewStarted_ = false;
    // The host's scripted channel is the page: no browser and no host view.
    const bool scripted_;
};
