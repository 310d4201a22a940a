// Brevan: the one application object of the plug-in. It owns every long-lived part, made in Init
// and taken down in Unload or in the destructor, and answers which document is current.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "account/account_services.h"
#include "account/sign_in_table.h"
#include "app/page_dialog_services.h"
#include "app/platform_services.h"
#include "app/ribbon_commands.h"
#include "app/sign_in_gate.h"
#include "app/task_pane_state.h"
#include "bridge/channel_file_stream.h"
#include "bridge/command_table.h"
#include "bridge/page_event_sink.h"
#include "config/plugin_sections.h"
#include "document/document_access.h"
#include "document/document_services.h"
#include "document/temporary_save.h"
#include "host/extension_tables.h"
#include "host/host_api.h"
#include "host/owned_resources.h"
#include "redaction/redaction_services.h"

class AsyncLogger;
class BrevanConfig;
class DocumentRegistry;
class DocEventRecord;
class SearchResultStore;
class AppEventRecord;
class WebMessageChannel;
class PageDialog;
class ProgressBarHost;
class BatchDocumentSession;
class BatchRedaction;
class BatchSessionHost;
class ServiceConfig;
class GreetingNotifier;
class TaskPaneHost;

class Brevan : public PageEventSink {
  public:
    static constexpr const wchar_t* kSettingsSection = kPluginSettingsSection;
    static constexpr const char* kTaskPaneName = ::kTaskPaneName;
    static constexpr const wchar_t* kPreferencesSection = kPluginPreferencesSection;

    Brevan();
    ~Brevan() override;
    Brevan(const Brevan&) = delete;
    Brevan& operator=(const Brevan&) = delete;

    // Binds the host's functions and the platform, and adds each feature's commands with the
    // parts they use; done once the handshake gave the table manager.
    void Attach(HostApi& host, PlatformServices& platform);
    bool attached() const { return host_ != nullptr; }
    HostApi& host() const { return *host_; }
    PlatformServices& platform() const { return *platform_; }

    // Load-time callbacks of the host.
    int ImportTables();
    // Returns 0 when the plug-in must not start (a broken configuration), 1 otherwise.
    int Init();
    void OnMainFrameCreated(HostFrame frame);
    void OnMainFrameClosing(HostFrame frame);
    int Unload();

    // The batch's document during a batch run, otherwise the host's active document (may be null).
    HostDoc GetCurrentDoc() const;

    // The host's sign-in table found at import, if any.
    SignInTable signInTable() const {
        return SignInTable(host(), cloudLogin ? cloudLogin->table : nullptr);
    }

    // Shows or hides the task pane and remembers the choice.
    void ShowTaskPane(bool show);

    // Hands a script call of the page's `functionName` to the task pane of the host's current
    // main window. While the host offers its scripted page channel, that channel is the pane's
    // page and takes the call, also while the pane is hidden; otherwise the pane's dialog runs
    // it, and without a dialog nothing happens.
    void SendToTaskPane(const std::wstring& functionName,
                        const std::vector<std::wstring>& args) override;
    std::wstring EventFileIdOf(HostDoc doc) const override;
    bool ShowsAccountPage() const override { return accountPage; }
    // The page dialog of the task pane of the host's current main window, or null.
    PageDialog* ActivePaneDialog() const;
    // Reloads the page of the active task pane, if it has a dialog, and of the batch dialog while
    // it is up.
    void ReloadPanes(bool rebuild);

    // The bridge's commands, each feature's added when the host is bound.
    const CommandTable& commands() const { return commands_; }
    // What the page dialogs and the sign-in gate use; valid once the host is bound.
    const PageDialogServices& pageDialogServices() const { return *pageDialogServices_; }
    const SignInGateServices& signInGateServices() const { return *signInGateServices_; }

    std::unique_ptr<SearchResultStore> searchResults;
    std::unique_ptr<BrevanConfig> config;
    std::unique_ptr<DocEventRecord> docEvents;
    std::unique_ptr<DocumentRegistry> documents;
    std::unique_ptr<AppEventRecord> appEvents;
    AsyncLogger& logger;
    std::unique_ptr<CCloudLogin> cloudLogin;
    std::unique_ptr<CBrowser> browserExt;
    TemporarySave temporarySave;
    TaskPaneState pane;
    HostDoc batchDocument = nullptr;
    bool accountPage = false;
    bool batchMode = false;
    std::unique_ptr<ServiceConfig> serviceConfig;
    std::unique_ptr<ProgressBarHost> progressBar;
    // The batch session's side of the save and close commands, while a session exists.
    BatchDocumentSession* batchSession = nullptr;
    // The batch session, from the binding of the host on, and its view of the application.
    std::unique_ptr<BatchSessionHost> batchHost;
    std::unique_ptr<BatchRedaction> batch;
    // The page dialog of each main window's task pane (keyed by HostAppGetMainWindow's handle);
    // the pane's host enters its dialog when it makes it and takes it out before deleting it.
    std::map<HostWindow, PageDialog*> paneDialogs;
    // The input files of the embedded browser's channel and of the two host web view channels,
    // one each for the plug-in's whole run.
    ChannelFileStream browserStream;
    ChannelFileStream paneViewStream;
    ChannelFileStream batchViewStream;
    std::unique_ptr<GreetingNotifier> greeting;
    // The task pane of each main window, keyed by HostAppGetMainWindow's handle at its creation.
    std::map<HostWindow, std::unique_ptr<TaskPaneHost>> panes;
    // The id the host gave this plug-in at the handshake.
    uint32_t pluginId = 0;

  private:
    void SetUpInterfaceLanguage();
    void StartLogger();

    void AddBatchSession();
    void AddFeatureCommands();

    CommandTable commands_;
    HostApi* host_ = nullptr;
    PlatformServices* platform_ = nullptr;
    OwnedResources interfaceResources_;
    // The page of the host's scripted channel, when the host offers one: the platform's own,
    // else the host's "pdfhost.pageChannel" table.
    std::unique_ptr<PageConnection> hostPage_;
    std::unique_ptr<WebMessageChannel> hostPageChannel_;
    // What each feature uses of the application; made when the host is bound.
    std::optional<DocumentAccess> documentAccess_;
    std::optional<DocumentServices> documentServices_;
    std::optional<RedactionServices> redactionServices_;
    std::optional<AccountServices> accountServices_;
    std::optional<PageDialogServices> pageDialogServices_;
    std::optional<SignInGateServices> signInGateServices_;
    std::optional<RibbonServices> ribbonServices_;
};
