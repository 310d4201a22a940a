// The Windows platform layer of the plug-in.
#include <memory>

#include "app/page_dialog_services.h"
#include "app/platform_services.h"
#include "batch/batch_files_dialog.h"
#include "batch/batch_result_dialog.h"
#include "network_connectivity.h"
#include "shell_actions.h"
#include "system_browser_runtime.h"
#include "system_paths.h"
#include "task_dialogs.h"
#include "url_download.h"
#include "win_file_dialog.h"
#include "win_page_dialog.h"
#include "win_timers.h"
#include "winhttp_request.h"

namespace {

HWND WindowOf(HostWindow window) {
    return reinterpret_cast<HWND>(window);
}

class WinPlatformServices final : public PlatformServices {
  public:
    std::wstring ModulePath() override { return ThisModulePath(); }

    // A Windows host offers no scripted page channel.
    std::unique_ptr<PageConnection> ConnectHostPageChannel() override { return nullptr; }

    std::wstring TempFolder() override { return SystemTempFolder(); }

    void SendWindowCommand(HostWindow window, unsigned command) override {
        SendCommandMessage(window, command);
    }

    bool OpenUrlExternally(const std::wstring& url) override { return OpenWithShell(url); }

    std::unique_ptr<FileDialog> MakeFileDialog(const FileDialogSettings& settings) override {
        return std::make_unique<WinFileDialog>(settings);
    }

    int ShowWelcomeDialog(HostWindow parent, bool channelPackage) override {
        return ShowWelcomeTaskDialog(WindowOf(parent), channelPackage);
    }

    int ShowInfoDialog(HostWindow parent) override { return ShowInfoTaskDialog(WindowOf(parent)); }

    std::unique_ptr<PageDialog> MakeTaskPaneDialog(const PageDialogServices& services,
                                                   HostWindow parent) override {
        return std::make_unique<WinPageDialog>(services, runtime_, PageDialogKind::TaskPane,
                                               WindowOf(parent));
    }

    std::unique_ptr<BatchPageDialog> MakeBatchDialog(const PageDialogServices& services,
                                                     HostWindow parent) override {
        return std::make_unique<WinPageDialog>(services, runtime_, PageDialogKind::Batch,
                                               WindowOf(parent));
    }

    std::optional<BatchChoice> ChooseBatchFiles(HostApi& host, HostWindow parent) override {
        return ChooseBatchFilesWithDialog(host, WindowOf(parent));
    }

    int ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) override {
        return ShowBatchResultDialog(WindowOf(parent), outcome);
    }

    bool IsConnectedToInternet() override { return SystemReachesInternet(); }

    unsigned StartTimer(unsigned periodMs, std::function<void()> tick) override {
        return timers_.Start(periodMs, std::move(tick));
    }

    void KillTimer(unsigned id) override { timers_.Kill(id); }

    int HttpGet(const std::wstring& url, std::string& body, const HttpSettings& settings) override {
        return WinHttpGet(url, body, settings);
    }

    // The system's downloader takes the user's own settings; the certificate choice of
    // `settings` applies to the service requests only.
    bool DownloadToFile(const std::wstring& url, const std::wstring& path,
                        DownloadProgress& progress, const HttpSettings&) override {
        return DownloadUrlToFile(url, path, progress);
    }

  private:
    WinTimers timers_;
    SystemBrowserRuntime runtime_;
};

}  // namespace

std::unique_ptr<PlatformServices> CreatePlatformServices() {
    return std::make_unique<WinPlatformServices>();
}
