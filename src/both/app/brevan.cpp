#include "brevan.h"

#include <iostream>

#include "account/account_change.h"
#include "account/account_commands.h"
#include "account/usage_report.h"
#include "app/app_event_record.h"
#include "app/batch_session_host.h"
#include "app/doc_event_record.h"
#include "app/greeting_notifier.h"
#include "app/ribbon_commands.h"
#include "app/task_pane_host.h"
#include "batch/batch_commands.h"
#include "batch/batch_redaction.h"
#include "bridge/page_dialog.h"
#include "bridge/page_script.h"
#include "bridge/table_page_connection.h"
#include "bridge/web_message_channel.h"
#include "config/brevan_config.h"
#include "config/service_config.h"
#include "document/document_commands.h"
#include "document/document_registry.h"
#include "document/progress_bar_host.h"
#include "host/host_string.h"
#include "logging/async_logger.h"
#include "redaction/redaction_commands.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"

namespace {

constexpr int kLogRetentionDays = 30;

template <typename T>
void Delete(std::unique_ptr<T>& field) {
    std::unique_ptr<T> taken = std::move(field);
}

// What the task pane of a main window uses of `app`.
TaskPaneParts PanePartsOf(Brevan& app) {
    return TaskPaneParts{
        .host = app.host(),
        .pane = app.pane,
        .browserExt = app.browserExt,
        .dialogs = app.paneDialogs,
        .makeDialog =
            [&app](HostWindow parent) {
                return app.platform().MakeTaskPaneDialog(app.pageDialogServices(), parent);
            },
    };
}

}  // namespace

Brevan::Brevan() : logger(AsyncLogger::Instance()) {
    commands_.SetActivityWatch(
        [this] { return progressBar ? &progressBar->activity : static_cast<bool*>(nullptr); });
}

Brevan::~Brevan() {
    if (accountServices_)
        StopListeningToAccountChanges(*accountServices_);
    if (ribbonServices_)
        UnbindRibbonProcedures(*ribbonServices_);
    hostPageChannel_.reset();
    hostPage_.reset();
    Delete(browserExt);
    Delete(cloudLogin);
    Delete(appEvents);
    batchSession = nullptr;
    Delete(batch);
    Delete(batchHost);
    Delete(progressBar);
    Delete(documents);
    Delete(docEvents);
    panes.clear();
    Delete(greeting);
    Delete(serviceConfig);
    Delete(config);
    Delete(searchResults);
    interfaceResources_.reset();
}

void Brevan::Attach(HostApi& host, PlatformServices& platform) {
    host_ = &host;
    platform_ = &platform;
    pageDialogServices_.emplace(PageDialogServices{
        .host = host,
        .platform = platform,
        .commands = commands_,
        .logger = logger,
        .config = config,
        .serviceConfig = serviceConfig,
        .browserExt = browserExt,
        .accountPage = accountPage,
        .hostPage = hostPage_,
        .browserStream = browserStream,
        .paneViewStream = paneViewStream,
        .batchViewStream = batchViewStream,
    });
    signInGateServices_.emplace(SignInGateServices{
        .host = host,
        .platform = platform,
        .config = config,
        .signInTable = [this] { return signInTable(); },
    });
    ribbonServices_.emplace(RibbonServices{
        .host = host,
        .signIn = *signInGateServices_,
        .pane = pane,
        .accountPage = accountPage,
        .page = *this,
        .batch = batch,
    });
    AddBatchSession();
    AddFeatureCommands();
}

void Brevan::AddBatchSession() {
    batchHost = std::make_unique<BatchSessionHost>(BatchSessionServices{
        .host = *host_,
        .platform = *platform_,
        .pageDialogs = *pageDialogServices_,
        .config = config,
        .batchMode = batchMode,
        .batchDocument = batchDocument,
    });
    batch = std::make_unique<BatchRedaction>(*batchHost);
    batchSession = batch.get();
    AddBatchCommands(commands_, *batch);
}

void Brevan::AddFeatureCommands() {
    HostApi& host = *host_;
    PlatformServices& platform = *platform_;
    documentAccess_.emplace(host, BatchState{batchMode, batchDocument, batchSession}, documents,
                            searchResults);
    accountServices_.emplace(AccountServices{
        .host = host,
        .http = platform,
        .logger = logger,
        .page = *this,
        .config = config,
        .serviceConfig = serviceConfig,
        .signInTable = [this] { return signInTable(); },
        .reloadPanes = [this](bool rebuild) { ReloadPanes(rebuild); },
    });
    documentServices_.emplace(DocumentServices{
        .host = host,
        .platform = platform,
        .documents = *documentAccess_,
        .page = *this,
        .config = config,
        .progressBar = progressBar,
        .temporarySave = temporarySave,
        .showTaskPane = [this](bool show) { ShowTaskPane(show); },
    });
    redactionServices_.emplace(
        RedactionServices{.host = host, .documents = *documentAccess_, .logger = logger});
    AddAccountCommands(commands_, *accountServices_);
    AddDocumentCommands(commands_, *documentServices_);
    AddRedactionCommands(commands_, *redactionServices_);
}

int Brevan::ImportTables() {
    if (!cloudLogin) {
        cloudLogin = std::make_unique<CCloudLogin>();
        cloudLogin->table = FindExtensionTable(host(), hostops::ExtTable::Login);
        ListenToAccountChanges(*accountServices_);
    }
    if (!browserExt) {
        browserExt = std::make_unique<CBrowser>();
        browserExt->table = FindExtensionTable(host(), hostops::ExtTable::BrowserExt);
    }
    return 1;
}

int Brevan::Init() {
    try {
        config = std::make_unique<BrevanConfig>(host(), cloudLogin ? cloudLogin->table : nullptr,
                                                platform().ModulePath());
    } catch (const ConfigError& e) {
        // A broken developers' file stops this plug-in only; the host goes on.
        std::cerr << "TarvoSablemark: " << e.what() << std::endl;
        host().HostMessageShow(FromUtf8(e.what()).c_str(), 0, 0, L"", 0, 0);
        return 0;
    }
    serviceConfig = std::make_unique<ServiceConfig>(config, platform());
    greeting = std::make_unique<GreetingNotifier>(host(), pluginId);
    docEvents = std::make_unique<DocEventRecord>(*documentServices_, pane);
    appEvents = std::make_unique<AppEventRecord>(host(), [this] { ReloadPanes(true); });
    searchResults = std::make_unique<SearchResultStore>();
    documents = std::make_unique<DocumentRegistry>();
    progressBar = std::make_unique<ProgressBarHost>(host(), platform());
    if (config->loggerOutput)
        StartLogger();
    else
        logger.Discard();  // nothing will write the lines: stop queueing them
    ReportFirstLoadOfVersion(host(), signInTable(), serviceConfig.get(), config->pluginVersion,
                             SystemFacts::OfThisSystem());
    return 1;
}

void Brevan::StartLogger() {
    const std::wstring base =
        config->loggerPath.empty() ? config->DefaultLogFolder() : config->loggerPath;
    logger.Start(ToUtf8(base), kLogRetentionDays, kLogInfo, config->loggerSize);
}

void Brevan::OnMainFrameCreated(HostFrame frame) {
    SetUpInterfaceLanguage();
    BuildRibbon(host(), frame, RibbonProceduresFor(*ribbonServices_));
    const HostWindow mainWindow = host().HostAppGetMainWindow();
    if (!panes.contains(mainWindow))
        panes.emplace(mainWindow, std::make_unique<TaskPaneHost>(PanePartsOf(*this), mainWindow));
    if (!hostPage_) {
        hostPage_ = platform().ConnectHostPageChannel();
        if (!hostPage_)
            hostPage_ = TablePageConnection::Connect(host());
        if (hostPage_) {
            hostPageChannel_ = std::make_unique<WebMessageChannel>(commands_, *hostPage_);
            hostPage_->SetMessageHandler([channel = hostPageChannel_.get()](std::string_view text) {
                channel->OnWebMessage(text);
            });
        }
    }
}

void Brevan::OnMainFrameClosing(HostFrame) {
    panes.erase(host().HostAppGetMainWindow());
}

void Brevan::SetUpInterfaceLanguage() {
    interfaceResources_.reset();
    interfaceResources_ =
        OwnedResources(host(), host().HostResourcesNew(platform().ModulePath().c_str()));
    if (interfaceResources_) {
        host().HostResourcesSetLanguage(interfaceResources_.get(),
                                        host().HostResourcesGetLanguage());
    }
}

int Brevan::Unload() {
    Delete(progressBar);
    Delete(docEvents);
    Delete(appEvents);
    Delete(greeting);
    Delete(config);
    Delete(searchResults);
    Delete(documents);
    return 1;
}

HostDoc Brevan::GetCurrentDoc() const {
    return documentAccess_->CurrentDoc();
}

std::wstring Brevan::EventFileIdOf(HostDoc doc) const {
    std::wstring id;
    if (!documents || documents->findIdByDoc(doc, id))
        return id;
    HostWide path(host());
    host().HostDocGetFilePath(doc, path);
    if (!documents->findIdByPath(path.Text(), id))
        id.clear();
    return id;
}

void Brevan::ShowTaskPane(bool show) {
    pane.SetShown(show);
    host().HostAppShowPane(kTaskPaneName, pane.shownFlag());
}

void Brevan::SendToTaskPane(const std::wstring& functionName,
                            const std::vector<std::wstring>& args) {
    if (hostPage_) {
        hostPage_->ExecuteScript(DispatchEventScript(args));
        return;
    }
    if (PageDialog* dialog = ActivePaneDialog())
        dialog->CallScript(functionName, args, nullptr);
}

PageDialog* Brevan::ActivePaneDialog() const {
    if (paneDialogs.empty() || !attached())
        return nullptr;
    const auto found = paneDialogs.find(host().HostAppGetMainWindow());
    return found != paneDialogs.end() ? found->second : nullptr;
}

void Brevan::ReloadPanes(bool rebuild) {
    if (PageDialog* dialog = ActivePaneDialog())
        dialog->Reload(rebuild);
    if (batchMode && batch && batch->dialog() != nullptr)
        batch->dialog()->Reload(rebuild);
}
