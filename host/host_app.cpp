#include "host_app.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QString>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "annotation_editor.h"
#include "automation/json_line_writer.h"
#include "automation/welcome_dialog_answers.h"
#include "batch_watch.h"
#include "engine/error.h"
#include "engine/ocr_recognizer.h"
#include "file_dialog_answers.h"
#include "headless_url_handlers.h"
#include "tables/host_tables.h"
#include "window_commands.h"

namespace pdfhost {
namespace {

HostApp* g_current = nullptr;

// Table functions and widgets need a Qt application object; tests and embedders may not have
// made one. It stays for the rest of the process, as Qt expects.
void EnsureQtApplication(bool headless) {
    if (QCoreApplication::instance() != nullptr)
        return;
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    static int argc = 1;
    static char name[] = "pdfhost";
    static char* argv[] = {name, nullptr};
    // Before the application object, for the web engine (see main.cpp).
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    new QApplication(argc, argv);
}

// Documents keep absolute paths, as the plug-ins expect of a file path.
std::string AbsolutePath(const std::string& path) {
    if (path.empty())
        return path;
    std::error_code ignored;
    const std::filesystem::path absolute = std::filesystem::absolute(path, ignored);
    return absolute.empty() ? path : absolute.lexically_normal().string();
}

std::string OpenError(const std::string& path, const std::exception& error) {
    const std::string what = error.what();
    return what.starts_with("cannot open ") ? what : "cannot open " + path + ": " + what;
}

}  // namespace

HostApp::HostApp(HostOptions options)
    : options_(std::move(options)),
      profile_(options_.profile),
      preferences_(profile_.PreferencesFile()),
      pluginSettings_(profile_.PluginSettingsFile()),
      account_(profile_.Folder() / "account.json", options_),
      usage_(profile_.Folder() / "usage.jsonl"),
      loader_([this](uint32_t pluginId) {
          events_.RemovePlugin(pluginId);
          account_.RemovePlugin(pluginId);
          ribbons_.RemovePlugin(pluginId);
          taskPanes_.RemovePlugin(pluginId);
          bubbles_.RemovePlugin(pluginId);
      }) {
    if (g_current != nullptr)
        throw std::logic_error("a HostApp already lives in this process");
    EnsureQtApplication(options_.headless);
    RegisterHostTables(tables_);
    RegisterLoginTable(extensions_);
    RegisterBrowserExtension(extensions_);
    RegisterOcrExtension(extensions_);
    if (options_.headless) {
        fileDialogAnswers_ = std::make_unique<FileDialogAnswers>(*this);
        urlHandlers_ = std::make_unique<HeadlessUrlHandlers>();
        welcomeAnswers_ = std::make_unique<WelcomeDialogAnswers>(*this);
    }
    undo_.OnEvicted(
        [this](const UndoStack::Entry& entry) { AnnotationEditor(*this).Forget(entry); });
    tables_.Activate();
    g_current = this;
}

HostApp::~HostApp() {
    UnloadPlugins();
    progressWindows_.Clear();
    scriptWriter_ = nullptr;
    observers_.clear();
    for (const auto& document : documents_.All()) {
        pages_.ForgetDocument(document->Handle());
        annotations_.ForgetDocument(document->Handle());
    }
    documents_.Clear();
    g_current = nullptr;
}

HostApp* HostApp::Current() {
    return g_current;
}

// ---- Plug-ins and frames -----------------------------------------------------------------------

std::size_t HostApp::LoadPlugins() {
    if (frames_.empty()) {
        hiddenFrame_ = std::make_unique<QMainWindow>();
        hiddenFrame_->setWindowTitle("pdfhost");
        new WindowCommands(*this, *hiddenFrame_);
        frames_.push_back(hiddenFrame_.get());
    }
    // Loaded plug-ins stay; a second call does not load them again.
    if (options_.plugins.empty() || !loader_.Plugins().empty())
        return loader_.Plugins().size();
    const std::size_t loaded = loader_.LoadFolder(options_.plugins, Frames());
    // The host is up: the notification surface tells the plug-ins so.
    bubbles_.SurfaceReady();
    return loaded;
}

void HostApp::UnloadPlugins() {
    // The plug-ins' pane windows go before the plug-ins do.
    taskPanes_.TearDownAll();
    loader_.UnloadAll(Frames());
}

const LoadedPlugin* HostApp::CallingPlugin() const {
    return loader_.Find(TableManager::CallingPlugin());
}

void HostApp::AddFrame(QMainWindow& frame) {
    if (std::find(frames_.begin(), frames_.end(), &frame) != frames_.end())
        return;
    frames_.push_back(&frame);
    if (frame.findChild<WindowCommands*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        new WindowCommands(*this, frame);
    announcedFrame_ = &frame;
    loader_.FrameCreated(FrameHandle(frame));
    announcedFrame_ = nullptr;
}

void HostApp::RemoveFrame(QMainWindow& frame) {
    const auto it = std::find(frames_.begin(), frames_.end(), &frame);
    if (it == frames_.end())
        return;
    taskPanes_.TearDownFrame(&frame);
    announcedFrame_ = &frame;
    loader_.FrameClosing(FrameHandle(frame));
    announcedFrame_ = nullptr;
    // The hooks may have changed the list.
    std::erase(frames_, &frame);
    ribbons_.ForgetFrame(FrameHandle(frame));
}

std::vector<HostFrame> HostApp::Frames() const {
    std::vector<HostFrame> frames;
    for (QMainWindow* frame : frames_)
        frames.push_back(FrameHandle(*frame));
    return frames;
}

QMainWindow* HostApp::MainWindow() const {
    return frames_.empty() ? nullptr : frames_.front();
}

HostFrame HostApp::FrameHandle(QMainWindow& frame) {
    return reinterpret_cast<HostFrame>(&frame);
}

// ---- Documents ---------------------------------------------------------------------------------

HostApp::OpenResult HostApp::OpenDocument(const std::string& path, const std::string& password) {
    OpenResult result = Open(path, password, DocumentKind::kFile, true);
    if (result.document == nullptr)
        return result;
    const int number = result.document->Number();
    Activate(*result.document);
    // The activate hooks may have closed it again.
    result.document = documents_.FindByNumber(number);
    if (result.document == nullptr)
        result.error = "cannot open " + path + ": closed while opening";
    return result;
}

HostApp::OpenResult HostApp::OpenHidden(const std::string& path, const std::string& password,
                                        bool quiet) {
    return Open(path, password, DocumentKind::kHidden, !quiet);
}

HostApp::OpenResult HostApp::Open(const std::string& path, const std::string& password,
                                  DocumentKind kind, bool fireHooks) {
    OpenResult result;
    try {
        engine::Document opened = engine::Document::Open(context_, AbsolutePath(path), password);
        if (fireHooks)
            events_.WillOpen();
        result.document = &documents_.Add(std::move(opened), kind);
    } catch (const std::exception& error) {
        result.error = OpenError(path, error);
        result.needsPassword = dynamic_cast<const engine::PasswordError*>(&error) != nullptr;
        return result;
    }
    const int number = result.document->Number();
    if (kind != DocumentKind::kHidden)
        Announce(*result.document);
    if (fireHooks)
        events_.DidOpen(result.document->Handle());
    result.document = documents_.FindByNumber(number);
    if (result.document == nullptr)
        result.error = "cannot open " + path + ": closed while opening";
    return result;
}

HostDocument& HostApp::NewDocument() {
    engine::Document blank = engine::Document::CreateBlank(context_);
    events_.WillOpen();
    HostDocument& document = documents_.Add(std::move(blank), DocumentKind::kTemporary);
    const int number = document.Number();
    Announce(document);
    events_.DidOpen(document.Handle());
    if (HostDocument* still = documents_.FindByNumber(number)) {
        Activate(*still);
        return *still;
    }
    return document;
}

void HostApp::Announce(HostDocument& document) {
    Notify([&](DocumentObserver& observer) { observer.DocumentAdded(document); });
}

bool HostApp::Activate(HostDocument& document) {
    if (document.IsHidden() || document.IsClosing())
        return false;
    if (documents_.Active() == &document)
        return true;
    documents_.SetActive(&document);
    Notify([&](DocumentObserver& observer) { observer.ActiveChanged(&document); });
    events_.Activate(document.Handle());
    return true;
}

void HostApp::ActivateOtherTab() {
    documents_.SetActive(nullptr);
    Notify([](DocumentObserver& observer) { observer.ActiveChanged(nullptr); });
    events_.OtherTab();
}

void HostApp::CloseDocument(HostDocument& document) {
    if (document.IsClosing())
        return;
    document.MarkClosing();
    const HostDoc handle = document.Handle();
    events_.Closing(handle);
    const bool wasActive = documents_.Active() == &document;
    HostDocument* next = wasActive ? documents_.NeighbourTab(document) : nullptr;
    const int nextNumber = next != nullptr ? next->Number() : 0;
    if (!document.IsHidden()) {
        Notify([&](DocumentObserver& observer) { observer.DocumentRemoving(document); });
    }
    pages_.ForgetDocument(handle);
    annotations_.ForgetDocument(handle);
    undo_.ForgetDocument(handle);
    documents_.Remove(document);
    if (HostDocument* successor = documents_.FindByNumber(nextNumber))
        Activate(*successor);
}

int HostApp::SaveDocument(HostDocument& document) {
    int result = 0;
    if (!document.IsTemporary() && !document.Path().empty()) {
        try {
            document.Engine().SaveFull(document.Path());
            document.SetModified(false);
            result = 1;
        } catch (const std::exception& error) {
            std::cerr << "pdfhost: " << error.what() << '\n';
        }
    }
    return SaveFinished(document, result);
}

int HostApp::SaveFinished(HostDocument& document, int result) {
    if (!document.IsHidden()) {
        Notify([&](DocumentObserver& observer) { observer.DocumentChanged(document); });
    }
    events_.DidSave(document.Handle(), result);
    return result;
}

int HostApp::SaveDocumentAs(HostDocument& document, const std::string& path) {
    int result = 0;
    const std::string source = document.Path();
    const std::string target = AbsolutePath(path);
    try {
        document.Engine().SaveFull(target);
        document.SavedToFile();
        document.SetModified(false);
        result = 1;
    } catch (const std::exception& error) {
        std::cerr << "pdfhost: " << error.what() << '\n';
    }
    if (BatchWatch* watch = CurrentBatchWatch())
        watch->SavedAs(source, target, result == 1);
    return SaveFinished(document, result);
}

void HostApp::MarkModified(HostDocument& document) {
    document.Engine().MarkChanged();
    if (!document.SetModified(true))
        return;
    if (!document.IsHidden()) {
        Notify([&](DocumentObserver& observer) { observer.DocumentChanged(document); });
    }
    events_.Modified(document.Handle());
}

void HostApp::AddObserver(DocumentObserver* observer) {
    if (observer != nullptr &&
        std::find(observers_.begin(), observers_.end(), observer) == observers_.end()) {
        observers_.push_back(observer);
    }
}

void HostApp::RemoveObserver(DocumentObserver* observer) {
    std::erase(observers_, observer);
}

template <typename Call>
void HostApp::Notify(Call call) {
    const std::vector<DocumentObserver*> snapshot = observers_;
    for (DocumentObserver* observer : snapshot) {
        if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end()) {
            call(*observer);
        }
    }
}

// ---- Services ----------------------------------------------------------------------------------

void HostApp::ShowMessage(const std::string& text, const std::string& title) {
    if (!options_.headless) {
        QMessageBox::information(MainWindow(),
                                 QString::fromStdString(title.empty() ? "pdfhost" : title),
                                 QString::fromStdString(text));
        return;
    }
    if (scriptWriter_ != nullptr) {
        Json::Value line(Json::objectValue);
        line["dialog"] = "message";
        line["text"] = text;
        if (!title.empty())
            line["title"] = title;
        scriptWriter_->Write(line);
        return;
    }
    std::cerr << "pdfhost: message: " << text << '\n';
}

engine::OcrRecognizer& HostApp::Ocr() {
    if (ocr_ == nullptr)
        ocr_ = std::make_unique<engine::OcrRecognizer>("eng");
    return *ocr_;
}

bool HostApp::AnyPaneShown() const {
    return std::any_of(panes_.begin(), panes_.end(), [](const auto& pane) { return pane.second; });
}

}  // namespace pdfhost
