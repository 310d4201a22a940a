#include "doc_event_record.h"

#include "app/task_pane_state.h"
#include "bridge/page_events.h"
#include "document/document_registry.h"
#include "document/document_services.h"
#include "host/host_string.h"
#include "redaction/search_result_store.h"

namespace {

DocEventRecord& RecordOf(void* client) {
    return *static_cast<DocEventRecord*>(client);
}

std::wstring FilePathOf(HostApi& host, HostDoc doc) {
    HostWide path(host);
    host.HostDocGetFilePath(doc, path);
    return path.Text();
}

}  // namespace

DocEventRecord::DocEventRecord(const DocumentServices& services, TaskPaneState& pane)
    : services_(services), pane_(pane) {
    record_.setWord(kDocEventClientData, this);
    record_.setWord(kDocEventWillOpen, HookWord<HostDocHookNoDoc>(&OnDocWillOpen));
    record_.setWord(kDocEventDidOpen, HookWord<HostDocHook>(&OnDocDidOpen));
    record_.setWord(kDocEventActivate, HookWord<HostDocHook>(&OnDocActivate));
    record_.setWord(kDocEventDidSave, HookWord<HostDocSaveHook>(&OnDocDidSave));
    record_.setWord(kDocEventClosing, HookWord<HostDocHook>(&OnDocClosing));
    record_.setWord(kDocEventModified, HookWord<HostDocHook>(&OnDocModified));
    record_.setWord(kDocEventOtherTab, HookWord<HostDocHookNoDoc>(&OnOtherTabActivate));
    record_.setWord(kDocEventFieldChanged, HookWord<HostDocFieldHook>(&OnFormFieldChanged));
    record_.setWord(kDocEventReserved79, HookWord<HostDocHookNoDoc>(&Ignore));
    services_.host.HostAppRegisterDocEvents(&record_);
}

DocEventRecord::~DocEventRecord() {
    services_.host.HostAppUnregisterDocEvents(&record_);
}

void DocEventRecord::RegisterDocument(HostDoc doc) {
    DocumentRegistry* documents = services_.documents.registry();
    if (doc == nullptr || documents == nullptr)
        return;
    std::wstring id;
    if (documents->findIdByDoc(doc, id))
        return;
    id = NewGuidText();
    documents->bindDoc(id, doc);
    if (services_.host.HostDocIsTemporary(doc) == 0) {
        documents->bindPath(id, FilePathOf(services_.host, doc));
    }
}

void BREVAN_HOSTCALL DocEventRecord::OnDocWillOpen(void* client) {
    DocBeforeOpenEvent(RecordOf(client).services_.page).Send();
}

void BREVAN_HOSTCALL DocEventRecord::OnDocDidOpen(void* client, HostDoc doc) {
    DocEventRecord& self = RecordOf(client);
    self.RegisterDocument(doc);
    DocOpenSuccessEvent(self.services_.page, doc).Send();
}

// The pane follows the user's last choice from one PDF tab to the next.
void BREVAN_HOSTCALL DocEventRecord::OnDocActivate(void* client, HostDoc doc) {
    DocEventRecord& self = RecordOf(client);
    DocActivateEvent(self.services_.page, doc).Send();
    self.services_.host.HostAppShowPane(kTaskPaneName, self.pane_.shownFlag());
}

void BREVAN_HOSTCALL DocEventRecord::OnDocDidSave(void* client, HostDoc doc, int result) {
    const DocumentServices& services = RecordOf(client).services_;
    DocSavedEvent(services.page, doc).Send();
    DocumentRegistry* documents = services.documents.registry();
    std::wstring id;
    if (result != 0 && documents != nullptr && documents->findIdByDoc(doc, id)) {
        documents->bindPath(id, FilePathOf(services.host, doc));
    }
    // A save the user cancelled reports 0 and does not count as the save of a temporary document.
    services.temporarySave.OnSaved(result != 0);
}

// The page hears of the close while the registry still knows the document. A close that the
// save of a temporary document causes leaves the pane open.
void BREVAN_HOSTCALL DocEventRecord::OnDocClosing(void* client, HostDoc doc) {
    const DocumentServices& services = RecordOf(client).services_;
    DocClosedEvent(services.page, doc).Send();
    if (services.host.HostAppGetActiveDoc() == nullptr) {
        if (!services.temporarySave.underway())
            services.showTaskPane(false);
        services.temporarySave.End();
    }
    DocumentRegistry* documents = services.documents.registry();
    std::wstring id;
    if (documents != nullptr && documents->findIdByDoc(doc, id)) {
        documents->forgetDoc(id);
        if (SearchResultStore* store = services.documents.searchResults()) {
            store->EraseAnnotsOfFile(id);
            store->RemoveFile(id);
        }
    }
}

// Changes of a batch's documents are the batch's own business.
void BREVAN_HOSTCALL DocEventRecord::OnDocModified(void* client, HostDoc doc) {
    const DocumentServices& services = RecordOf(client).services_;
    if (!services.documents.batch().running)
        DocModifiedEvent(services.page, doc).Send();
}

// A tab without a PDF document hides the pane and forgets that it was open.
void BREVAN_HOSTCALL DocEventRecord::OnOtherTabActivate(void* client) {
    DocEventRecord& self = RecordOf(client);
    OtherDocActivateEvent(self.services_.page).Send();
    self.pane_.HideByPlugin([&self] { self.services_.showTaskPane(false); });
}

void BREVAN_HOSTCALL DocEventRecord::OnFormFieldChanged(void* client, HostDoc doc,
                                                        NdxFormField field) {
    const DocumentServices& services = RecordOf(client).services_;
    HostApi& host = services.host;
    HostWide name(host);
    HostWide value(host);
    host.NDXFormFieldGetFullName(field, name);
    host.NDXFormFieldGetValue(field, value);
    DocFormFieldChangedEvent(services.page, doc, name.Text(), value.Text()).Send();
}

void BREVAN_HOSTCALL DocEventRecord::Ignore(void*) {}
