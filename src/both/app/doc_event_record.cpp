#include "doc_event_record.h"

#include "app/brevan.h"
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
    record_.setWord(kDocEventDidOpen, AsWord(&OnDocDidOpen));
    record_.setWord(kDocEventActivate, AsWord(&OnDocActivate));
    record_.setWord(kDocEventDidSave, AsWord(&OnDocDidSave));
    record_.setWord(kDocEventClosing, AsWord(&OnDocClosing));
    record_.setWord(kDocEventOtherTab, AsWord(&OnOtherTabActivate));
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
        app.documents->bindPath(id, FilePathOf(app.host(), doc), false);
    }
}

void DocEventRecord::OnDocDidOpen(void* client, HostDoc doc) {
    RegisterDocument(AppOf(client), doc);
}

void DocEventRecord::OnDocActivate(void* client, HostDoc) {
    Brevan& app = AppOf(client);
    app.host().HostAppShowPane(Brevan::kTaskPaneName, app.taskPaneShown);
}

void DocEventRecord::OnDocDidSave(void* client, HostDoc doc, int result) {
    Brevan& app = AppOf(client);
    std::wstring id;
    if (result != 0 && app.documents && app.documents->findIdByDoc(doc, id)) {
        app.documents->bindPath(id, FilePathOf(app.host(), doc), false);
    }
    if (app.saveOfTemporaryDoc != 0)
        app.temporaryDocSaved = 1;
}

void DocEventRecord::OnDocClosing(void* client, HostDoc doc) {
    Brevan& app = AppOf(client);
    if (app.host().HostAppGetActiveDoc() == nullptr) {
        if (app.saveOfTemporaryDoc == 0)
            app.ShowTaskPane(false);
        app.saveOfTemporaryDoc = 0;
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

void DocEventRecord::OnOtherTabActivate(void* client) {
    Brevan& app = AppOf(client);
    app.hidingPane = 1;
    app.ShowTaskPane(false);
    app.hidingPane = 0;
}
