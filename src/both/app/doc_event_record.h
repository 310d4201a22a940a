// DocEventRecord: the document callbacks the plug-in registers with the host. They keep the
// document registry true to the host's documents and the task pane in step with the active tab,
// and tell the page what happened.
#pragma once

#include "host/host_abi.h"

struct DocumentServices;
class TaskPaneState;

class DocEventRecord {
  public:
    // Registers with the host. `pane` is the user's choice of the task pane, which the pane follows
    // from one PDF tab to the next.
    DocEventRecord(const DocumentServices& services, TaskPaneState& pane);
    // Unregisters.
    ~DocEventRecord();
    DocEventRecord(const DocEventRecord&) = delete;
    DocEventRecord& operator=(const DocEventRecord&) = delete;

    const HostDocEventRecord& record() const { return record_; }

    // Registers a document the registry does not know yet: a new id bound to the handle, and
    // unless the document is temporary, its file path.
    void RegisterDocument(HostDoc doc);

  private:
    static void BREVAN_HOSTCALL OnDocWillOpen(void* client);
    static void BREVAN_HOSTCALL OnDocDidOpen(void* client, HostDoc doc);
    static void BREVAN_HOSTCALL OnDocActivate(void* client, HostDoc doc);
    static void BREVAN_HOSTCALL OnDocDidSave(void* client, HostDoc doc, int result);
    static void BREVAN_HOSTCALL OnDocClosing(void* client, HostDoc doc);
    static void BREVAN_HOSTCALL OnDocModified(void* client, HostDoc doc);
    static void BREVAN_HOSTCALL OnOtherTabActivate(void* client);
    static void BREVAN_HOSTCALL OnFormFieldChanged(void* client, HostDoc doc, NdxFormField field);
    static void BREVAN_HOSTCALL Ignore(void* client);

    const DocumentServices& services_;
    TaskPaneState& pane_;
    HostDocEventRecord record_;
};
