// The Linux platform layer of the plug-in, over Qt and libcurl.
#include <dlfcn.h>

#include <QDesktopServices>
#include <QDir>
#include <QMetaObject>
#include <QUrl>
#include <memory>

#include "app/platform_services.h"
#include "batch/batch_result_dialog.h"
#include "batch/multi_files_dialog.h"
#include "curl_download.h"
#include "curl_http.h"
#include "host_page_connection.h"
#include "html_dialog.h"
#include "info_dialog.h"
#include "network_reachability.h"
#include "profile_html_dialog.h"
#include "qt_file_dialog.h"
#include "qt_timers.h"
#include "util/utf.h"
#include "welcome_dialog.h"

namespace {

// The child object through which a pdfhost main window takes commands, as a window of the
// platform takes its command messages.
constexpr const char* kWindowCommandsName = "pdfhost.windowCommands";

class QtPlatformServices final : public PlatformServices {
  public:
    std::wstring ModulePath() override {
        Dl_info info{};
        if (dladdr(reinterpret_cast<void*>(&CreatePlatformServices), &info) == 0 ||
            info.dli_fname == nullptr) {
            return {};
        }
        return FromUtf8(info.dli_fname);
    }

    std::unique_ptr<PageConnection> ConnectHostPageChannel() override {
        QObject* channel = HostPageConnection::FindHostChannel();
        if (channel == nullptr)
            return nullptr;
        return std::make_unique<HostPageConnection>(channel);
    }

    std::wstring TempFolder() override {
        return (QDir::tempPath() + QLatin1Char('/')).toStdWString();
    }

    void SendWindowCommand(HostWindow window, unsigned command) override {
        auto* target = reinterpret_cast<QObject*>(window);
        if (target == nullptr)
            return;
        QObject* commands = target->findChild<QObject*>(QString::fromLatin1(kWindowCommandsName),
                                                        Qt::FindDirectChildrenOnly);
        if (commands != nullptr) {
            QMetaObject::invokeMethod(commands, "command", Qt::DirectConnection,
                                      Q_ARG(int, static_cast<int>(command)));
        }
    }

    bool OpenUrlExternally(const std::wstring& url) override {
        const QUrl address(QString::fromStdWString(url));
        return address.isValid() && QDesktopServices::openUrl(address);
    }

    std::unique_ptr<FileDialog> MakeFileDialog(const FileDialogSettings& settings) override {
        return std::make_unique<QtFileDialog>(settings);
    }

    int ShowWelcomeDialog(HostWindow parent, bool channelPackage) override {
        CSablemarkWelcomeDlg dialog(reinterpret_cast<QWidget*>(parent), channelPackage);
        return dialog.Run();
    }

    int ShowInfoDialog(HostWindow parent) override {
        CSablemarkInfoDlg dialog(reinterpret_cast<QWidget*>(parent));
        return dialog.Run();
    }

    std::unique_ptr<PageDialog> MakeTaskPaneDialog(const PageDialogServices& services,
                                                   HostWindow parent) override {
        return std::make_unique<CHtmlDlg>(services, reinterpret_cast<QWidget*>(parent));
    }

    std::unique_ptr<BatchPageDialog> MakeBatchDialog(const PageDialogServices& services,
                                                     HostWindow parent) override {
        return std::make_unique<CProfileHtmlDlg>(services, reinterpret_cast<QWidget*>(parent));
    }

    std::optional<BatchChoice> ChooseBatchFiles(HostApi& host, HostWindow parent) override {
        CMultiFilesDlg dialog(host, reinterpret_cast<QWidget*>(parent));
        if (dialog.exec() != QDialog::Accepted)
            return std::nullopt;
        return dialog.choice();
    }

    int ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) override {
        BatchRedactionResultDlg dialog(outcome, reinterpret_cast<QWidget*>(parent));
        return dialog.exec() == QDialog::Accepted ? 1 : 0;
    }

    bool IsConnectedToInternet() override { return SystemReachesInternet(); }

    unsigned StartTimer(unsigned periodMs, std::function<void()> tick) override {
        return timers_.Start(periodMs, std::move(tick));
    }

    void KillTimer(unsigned id) override { timers_.Kill(id); }

    int HttpGet(const std::wstring& url, std::string& body, const HttpSettings& settings) override {
        return ::HttpGet(url, body, settings);
    }

    bool DownloadToFile(const std::wstring& url, const std::wstring& path,
                        DownloadProgress& progress, const HttpSettings& settings) override {
        return DownloadUrlToFile(url, path, progress, settings);
    }

  private:
    QtTimers timers_;
};

}  // namespace

std::unique_ptr<PlatformServices> CreatePlatformServices() {
    return std::make_unique<QtPlatformServices>();
}
