#include "doc_event_record.h"

#include "app/brevan.h"
#include "bridge/page_events.h"
#include "document/document_registry.h"
#include "host/host_string.h"
#include "redaction/search_result_store.h"

namespace {

Brevan& AppOf(void* client) {
    return *static_cast<Brevan*>(client);
}

template <typename Fn>
void* AsWord(Fn fn) {
    return reinterpret_cast<void*>(fn);
}

std::wstring FilePathOf(HostApi& host, HostDoc doc) {
    HostWide path(host);
    host.HostDocGetFilePath(doc, path);
    return path.Text();
}

}  // namespace

DocEventRecord::DocEventRecord(Brevan& app) : app_(app) {
    record_.setWord(kDocEventClientData, &app_);
    record_.setWord(kDocEventWillOpen, AsWord(&OnDocWillOpen));
    record_.setWord(kDocEventDidOpen, AsWord(&OnDocDidOpen));
    record_.setWord(kDocEventActivate, AsWord(&OnDocActivate));
    record_.setWord(kDocEventDidSave, AsWord(&OnDocDidSave));
    record_.setWord(kDocEventClosing, AsWord(&OnDocClosing));
    record_.setWord(kDocEventModified, AsWord(&OnDocModified));
    record_.setWord(kDocEventOtherTab, AsWord(&OnOtherTabActivate));
    record_.setWord(kDocEventFieldChanged, AsWord(&OnFormFieldChanged));
    record_.setWord(kDocEventReserved79, AsWord(&Ignore));
    app_.host().HostAppRegisterDocEvents(&record_);
}

DocEventRecord::~DocEventRecord() {
    app_.host().HostAppUnregisterDocEvents(&record_);
}

void DocEventRecord::RegisterDocument(Brevan& app, HostDoc doc) {
    if (doc == nullptr || !app.documents)
        return;
    std::wstring id;
    if (app.documents->findIdByDoc(doc, id))
        return;
    id = NewGuidText();
    app.documents->bindDoc(id, doc);
    if (app.host().HostDocIsTemporary(doc) == 0) {
        app.documents->bindPath(id, FilePathOf(app.host(), doc));
    }
}

void DocEventRecord::OnDocWillOpen(void* client) {
    DocBeforeOpenEvent(AppOf(client)).Send();
}

void DocEventRecord::OnDocDidOpen(void* client, HostDoc doc) {
    Brevan& app = AppOf(client);
    RegisterDocument(app, doc);
    DocOpenSuccessEvent(app, doc).Send();
}

// The pane follows the user's last choice from one PDF tab to the next.
void DocEventRecord::OnDocActivate(void* client, HostDoc doc) {
    Brevan& app = AppOf(client);
    DocActivateEvent(app, doc).Send();
    app.host().HostAppShowPane(Brevan::kTaskPaneName, app.pane.shownFlag());
}

void DocEventRecord::OnDocDidSave(void* client, HostDoc doc, int result) {
    Brevan& app = AppOf(client);
    DocSavedEvent(app, doc).Send();
    std::wstring id;
    if (result != 0 && app.documents && app.documents->findIdByDoc(doc, id)) {
        app.documents->bindPath(id, FilePathOf(app.host(), doc));
    }
    // A save the user cancelled reports 0 and does not count as the save of a temporary document.
    app.temporarySave.OnSaved(result != 0);
}

// The page hears of the close while the registry still knows the document. A close that the
// save of a temporary document causes leaves the pane open.
void DocEventRecord::OnDocClosing(void* client, HostDoc doc) {
    Brevan& app = AppOf(client);
    DocClosedEvent(app, doc).Send();
    if (app.host().HostAppGetActiveDoc() == nullptr) {
        if (!app.temporarySave.underway())
            app.ShowTaskPane(false);
        app.temporarySave.End();
    }
    std::wstring id;
    if (app.documents && app.documents->findIdByDoc(doc, id)) {
        app.documents->forgetDoc(id);
        if (app.searchResults) {
            app.searchResults->EraseAnnotsOfFile(id);
            app.searchResults->RemoveFile(id);
        }
    }
}

// Changes of a batch's documents are the batch's own business.
void DocEventRecord::OnDocModified(void* client, HostDoc doc) {
    Brevan& app = AppOf(client);
    if (!app.batchMode)
        DocModifiedEvent(app, doc).Send();
}

// A tab without a PDF document hides the pane and forgets that it was open.
void DocEventRecord::OnOtherTabActivate(void* client) {
    Brevan& app = AppOf(client);
    OtherDocActivateEvent(app).Send();
    app.pane.HideByPlugin([&app] { app.ShowTaskPane(false); });
}

void DocEventRecord::OnFormFieldChanged(void* client, HostDoc doc, NdxFormField field) {
    Brevan& app = AppOf(client);
    HostWide name(app.host());
    HostWide value(app.host());
    app.host().NDXFormFieldGetFullName(field, name);
    app.host().NDXFormFieldGetValue(field, value);
    DocFormFieldChangedEvent(app, doc, name.Text(), value.Text()).Send();
}

void DocEventRecord::Ignore(void*) {}
