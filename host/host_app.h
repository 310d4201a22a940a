// The host application: one per process. It owns the open documents, the frames, the plug-ins,
// preferences and plug-in settings, and everything the function tables hand out. The table
// functions reach it through HostApp::Current() while it lives.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "account/account_service.h"
#include "annotation_handles.h"
#include "dialog_answers.h"
#include "document_observer.h"
#include "document_set.h"
#include "engine/context.h"
#include "event_hub.h"
#include "extension_registry.h"
#include "file_reader.h"
#include "host_options.h"
#include "page_handles.h"
#include "plugin_loader.h"
#include "profile.h"
#include "progress_window.h"
#include "settings_store.h"
#include "table_manager.h"
#include "text_handles.h"
#include "tool_box.h"
#include "ui/bubble_notices.h"
#include "ui/ribbon_model.h"
#include "ui/task_panes.h"
#include "undo_stack.h"
#include "usage_log.h"
#include "value_handles.h"

class QMainWindow;

namespace pdfhost::engine {
class OcrRecognizer;
}

namespace pdfhost {

class FileDialogAnswers;
class HeadlessUrlHandlers;
class WelcomeDialogAnswers;
class JsonLineWriter;

class HostApp {
  public:
    // Makes the profile folders, reads the settings and fills the function tables. Creates the
    // Qt application object if the process has none (offscreen when headless). Throws
    // std::logic_error if another HostApp lives, std::runtime_error if the profile cannot be
    // made.
    explicit HostApp(HostOptions options);
    // Unloads the plug-ins, then closes all documents without hooks.
    ~HostApp();
    HostApp(const HostApp&) = delete;
    HostApp& operator=(const HostApp&) = delete;

    // The living host, or null.
    static HostApp* Current();

    const HostOptions& Options() const { return options_; }
    const Profile& ProfileFolder() const { return profile_; }

    // ---- Plug-ins and frames
    // Loads the plug-ins of the plugins folder, unless some are loaded already. Without a frame,
    // an invisible main window is made first, so that every plug-in sees one main frame. Returns
    // how many plug-ins are loaded.
    std::size_t LoadPlugins();
    void UnloadPlugins();
    const PluginLoader& Plugins() const { return loader_; }
    // The plug-in whose call is being served (from the table lookup), or null.
    const LoadedPlugin* CallingPlugin() const;

    // A main window; the frame must stay alive until RemoveFrame or UnloadPlugins. Loaded
    // plug-ins are told of it.
    void AddFrame(QMainWindow& frame);
    void RemoveFrame(QMainWindow& frame);
    std::vector<HostFrame> Frames() const;
    // The first main window, or null.
    QMainWindow* MainWindow() const;
    // The main window whose opening or closing the plug-ins are being told of, or null.
    QMainWindow* AnnouncedFrame() const { return announcedFrame_; }
    static HostFrame FrameHandle(QMainWindow& frame);

    // ---- What the user (or a plug-in through the tables) does with documents.
    struct OpenResult {
        HostDocument* document = nullptr;
        std::string error;           // "cannot open <path>: <reason>" when document is null
        bool needsPassword = false;  // the file is encrypted and the password missing or wrong
    };
    // Opens a file in a new tab: will-open, did-open, then the tab becomes active. A file that
    // cannot be opened changes nothing and fires nothing.
    OpenResult OpenDocument(const std::string& path, const std::string& password = {});
    // Opens a file without a tab. Unless `quiet`, the will-open and did-open hooks fire.
    OpenResult OpenHidden(const std::string& path, const std::string& password, bool quiet);
    // A new temporary document of one empty page, in a new active tab, with the open hooks.
    HostDocument& NewDocument();
    // Makes the document's tab active and fires activate, unless it already is. A hidden
    // document cannot be activated.
    bool Activate(HostDocument& document);
    // A tab that holds no document becomes active: no active document; other-tab fires.
    void ActivateOtherTab();
    // Fires closing, then removes the document; if it was active, the next tab (else the
    // previous one) becomes active.
    void CloseDocument(HostDocument& document);
    // Full save in place; fires did-save with the result (1 saved, 0 failed). A document that
    // has no file fails.
    int SaveDocument(HostDocument& document);
    // Full save to `path`; the document then belongs to that file (a temporary one stops being
    // temporary). Fires did-save with the result. A failed save leaves no file behind and the
    // document as it was.
    int SaveDocumentAs(HostDocument& document, const std::string& path);
    // Marks the document modified; fires modified when it was not.
    void MarkModified(HostDocument& document);

    DocumentSet& Documents() { return documents_; }
    const DocumentSet& Documents() const { return documents_; }
    void AddObserver(DocumentObserver* observer);
    void RemoveObserver(DocumentObserver* observer);

    // ---- Services of the function tables
    TableManager& Tables() { return tables_; }
    ValueHandles& Values() { return values_; }
    PageHandles& Pages() { return pages_; }
    TextHandles& Texts() { return texts_; }
    AnnotationHandles& Annotations() { return annotations_; }
    UndoStack& Undo() { return undo_; }
    ToolBox& Tools() { return tools_; }
    // Answers queued for headless dialogs.
    DialogAnswers& Answers() { return answers_; }
    EventHub& Events() { return events_; }
    ExtensionRegistry& Extensions() { return extensions_; }
    SettingsStore& Preferences() { return preferences_; }
    SettingsStore& PluginSettings() { return pluginSettings_; }
    // The local account behind the "login" table, and the usage reports' file.
    AccountService& Account() { return account_; }
    const UsageLog& Usage() const { return usage_; }
    engine::Context& Engine() { return context_; }
    // The progress windows that plug-ins made.
    HandlePool<HostProgress, ProgressWindow>& ProgressWindows() { return progressWindows_; }
    // The file readers and security handlers of document checks.
    HandlePool<HostReader, FileReader>& Readers() { return readers_; }
    HandlePool<HostSecurityHandler, SecurityHandler>& SecurityHandlers() {
        return securityHandlers_;
    }
    // Text recognition ("eng"), started on first use. Throws engine::Error without its data.
    engine::OcrRecognizer& Ocr();

    // Shows a message: a message box on the desktop; headless, a dialog line on the script
    // output, or stderr without one.
    void ShowMessage(const std::string& text, const std::string& title);

    // Where scripted mode writes its lines; null outside scripted mode.
    void SetScriptWriter(JsonLineWriter* writer) { scriptWriter_ = writer; }
    JsonLineWriter* ScriptWriter() const { return scriptWriter_; }

    // Named task panes and whether they are shown.
    void SetPaneShown(const std::string& name, bool shown) { panes_[name] = shown; }
    bool AnyPaneShown() const;

    // The ribbons of the main windows, the plug-ins' task panes and the notification surface.
    RibbonModel& Ribbons() { return ribbons_; }
    TaskPanes& Panes() { return taskPanes_; }
    BubbleNotices& Bubbles() { return bubbles_; }

  private:
    // After a save: the windows redraw the document, did-save fires; returns `result`.
    int SaveFinished(HostDocument& document, int result);
    OpenResult Open(const std::string& path, const std::string& password, DocumentKind kind,
                    bool fireHooks);
    void Announce(HostDocument& document);
    template <typename Call>
    void Notify(Call call);

    HostOptions options_;
    Profile profile_;
    SettingsStore preferences_;
    SettingsStore pluginSettings_;
    AccountService account_;
    UsageLog usage_;
    TableManager tables_;
    ValueHandles values_;
    ExtensionRegistry extensions_;
    EventHub events_;
    // The engine context outlives every document and page.
    engine::Context context_;
    DocumentSet documents_;
    PageHandles pages_;
    TextHandles texts_;
    AnnotationHandles annotations_;
    UndoStack undo_;
    ToolBox tools_;
    DialogAnswers answers_;
    std::vector<DocumentObserver*> observers_;
    std::unique_ptr<QMainWindow> hiddenFrame_;
    std::vector<QMainWindow*> frames_;
    PluginLoader loader_;
    JsonLineWriter* scriptWriter_ = nullptr;
    std::map<std::string, bool> panes_;
    RibbonModel ribbons_;
    TaskPanes taskPanes_{*this};
    BubbleNotices bubbles_{options_.headless};
    QMainWindow* announcedFrame_ = nullptr;
    HandlePool<HostProgress, ProgressWindow> progressWindows_;
    HandlePool<HostReader, FileReader> readers_;
    HandlePool<HostSecurityHandler, SecurityHandler> securityHandlers_;
    std::unique_ptr<engine::OcrRecognizer> ocr_;
    // Headless only: answers to file dialogs, and addresses printed instead of opened.
    std::unique_ptr<FileDialogAnswers> fileDialogAnswers_;
    std::unique_ptr<HeadlessUrlHandlers> urlHandlers_;
    // Headless only: answers to the welcome dialog of the plug-in.
    std::unique_ptr<WelcomeDialogAnswers> welcomeAnswers_;
};

}  // namespace pdfhost
