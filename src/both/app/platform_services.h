// What the portable plug-in needs from the platform it runs on. The Linux layer (src/qt)
// implements it; tests give their own.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "account/http_client.h"
#include "batch/batch_choice.h"
#include "bridge/page_dialog.h"
#include "bridge/page_endpoint.h"
#include "host/host_abi.h"

class HostApi;
struct PageDialogServices;

// A file dialog of the platform. The handle is what the host's file-dialog operations take
// while the dialog lives.
struct FileDialogSettings {
    bool save = false;              // a save dialog, else an open dialog
    std::wstring defaultExtension;  // without or with the leading "."
    std::wstring initialName;       // offered file name, or a pattern such as "*.pdf"
    std::wstring filter;            // "Label (*.pdf)|*.pdf||" pairs
    unsigned flags = 0;             // 0x200 allows several files; 0x1000 files must exist
    HostWindow parent = nullptr;
};

class FileDialog {
  public:
    virtual ~FileDialog() = default;
    virtual HostFileDialog Handle() = 0;
    // Shows the dialog modally; true when the user ended it with OK.
    virtual bool Run() = 0;
    // The chosen paths, in the dialog's order.
    virtual std::vector<std::wstring> Paths() = 0;
};

// Progress of a download: statuses 4 (begin), 5 (data), 6 (end), like the platform's binding
// callbacks; `progress` and `maximum` are byte counts (maximum 0 when unknown).
class DownloadProgress {
  public:
    virtual ~DownloadProgress() = default;
    virtual void OnProgress(unsigned long progress, unsigned long maximum, int status) = 0;
};

class PlatformServices : public HttpClient {
  public:
    virtual ~PlatformServices() = default;
    // The file of this plug-in library.
    virtual std::wstring ModulePath() = 0;
    // The page channel the host offers in its scripted mode, or null when it offers none.
    virtual std::unique_ptr<PageConnection> ConnectHostPageChannel() = 0;

    // The system's temporary folder, with a trailing separator.
    virtual std::wstring TempFolder() = 0;
    // Runs the host's command `command` in the main window `window` and returns when it is done,
    // as the platform's command message does (0xE103 is the host's Save).
    virtual void SendWindowCommand(HostWindow window, unsigned command) = 0;
    // Opens an address in the user's default browser; false when the platform refuses.
    virtual bool OpenUrlExternally(const std::wstring& url) = 0;
    virtual std::unique_ptr<FileDialog> MakeFileDialog(const FileDialogSettings& settings) = 0;
    // The welcome dialog before a first use, modal over `parent`: 0 the user chose to sign in,
    // 1 to sign up, 2 not now (also when the dialog was closed). `channelPackage` picks the
    // description for a host of a channel package.
    virtual int ShowWelcomeDialog(HostWindow parent, bool channelPackage) = 0;
    // The info dialog, modal over `parent`: 3 the user goes on, 2 not now.
    virtual int ShowInfoDialog(HostWindow parent) = 0;

    // The page dialog that fills a main window's task pane, made as a child of `parent`.
    virtual std::unique_ptr<PageDialog> MakeTaskPaneDialog(const PageDialogServices& services,
                                                           HostWindow parent) = 0;
    // The modal page dialog of a batch run, over `parent`.
    virtual std::unique_ptr<BatchPageDialog> MakeBatchDialog(const PageDialogServices& services,
                                                             HostWindow parent) = 0;
    // The batch's file list and output options, modal over `parent`, checking the files through
    // `host`; the choice when the user ends it with OK.
    virtual std::optional<BatchChoice> ChooseBatchFiles(HostApi& host, HostWindow parent) = 0;
    // The result of a batch run, modal over `parent`; 1 when the user ends it with OK.
    virtual int ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) = 0;
    // Whether the machine can reach the internet, as far as the platform can tell.
    virtual bool IsConnectedToInternet() = 0;

    // A repeating timer on the user-interface thread; the id is never 0. Killing an unknown id
    // does nothing.
    virtual unsigned StartTimer(unsigned periodMs, std::function<void()> tick) = 0;
    virtual void KillTimer(unsigned id) = 0;

    // Downloads `url` into the file `path`, blocking, reporting to `progress`. True when the
    // whole body was written; a failure leaves no file at `path`.
    virtual bool DownloadToFile(const std::wstring& url, const std::wstring& path,
                                DownloadProgress& progress, const HttpSettings& settings) = 0;
};

// Made by the platform layer the library is built with.
std::unique_ptr<PlatformServices> CreatePlatformServices();
