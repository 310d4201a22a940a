// The host application: one per process. It owns the open documents, the frames, the plug-ins,
// preferences and plug-in settings, and everything the function tables hand out. The table
// functions reach it through HostApp::Current() while it lives.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "annotation_handles.h"
#include "dialog_answers.h"
#include "document_observer.h"
#include "document_set.h"
#include "engine/context.h"
#include "event_hub.h"
#include "extension_registry.h"
#include "host_options.h"
#include "page_handles.h"
#include "plugin_loader.h"
#include "profile.h"
#include "settings_store.h"
#include "table_manager.h"
#include "text_handles.h"
#include "tool_box.h"
#include "undo_stack.h"
#include "value_handles.h"

class QMainWindow;

namespace pdfhost {

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
    static HostFrame FrameHandle(QMainWindow& frame);

    // ---- What the user (or a plug-in through the tables) does with documents.
    struct OpenResult {
        HostDocument* document = nullptr;
        std::string error;  // "cannot open <path>: <reason>" when document is null
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
    engine::Context& Engine() { return context_; }

    // Shows a message: a message box on the desktop; headless, a dialog line on the script
    // output, or stderr without one.
    void ShowMessage(const std::string& text, const std::string& title);

    // Where scripted mode writes its lines; null outside scripted mode.
    void SetScriptWriter(JsonLineWriter* writer) { scriptWriter_ = writer; }
    JsonLineWriter* ScriptWriter() const { return scriptWriter_; }

    // Named task panes and whether they are shown.
    void SetPaneShown(const std::string& name, bool shown) { panes_[name] = shown; }
    bool AnyPaneShown() const;

  private:
    OpenResult Open(const std::string& path, const std::string& password, DocumentKind kind,
                    bool fireHooks);
    void Announce(HostDocument& document);
    template <typename Call>
    void Notify(Call call);

    HostOptions options_;
    Profile profile_;
    SettingsStore preferences_;
    SettingsStore pluginSettings_;
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
};

}  // namespace pdfhost
