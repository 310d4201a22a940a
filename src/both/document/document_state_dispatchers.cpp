#include "document_state_dispatchers.h"

#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_services.h"

Json::Value IsCurrentDocModifiedDispatcher::Run() {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    return MakeResult(err::kOk, Json::Value(services_.host.HostDocIsModified(doc) != 0));
}

Json::Value GetFilePageCountDispatcher::Run() {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents, {.pdf = true});
    if (!checked)
        return Fail(checked.error);
    Json::Value data(Json::objectValue);
    data["pageCount"] = services_.host.NDXDocGetPageCount(checked.pdf);
    return MakeResult(err::kOk, data);
}

Json::Value CheckFilePermissionDispatcher::Run() {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    const uint32_t granted =
        services_.host.HostDocGetPermissions(doc) & (kHostPermCopy | kHostPermAnnotate);
    const char* reason = nullptr;
    switch (granted) {
        case kHostPermCopy | kHostPermAnnotate:
            return MakeResult(err::kOk, Json::Value());
        case kHostPermAnnotate:
            reason = "Document content is not allowed to be copied";
            break;
        case kHostPermCopy:
            reason = "Annot is not allowed to be modified";
            break;
        default:
            reason =
                "Document content is not allowed to be copied and nnnot is not allowed to be "
                "modified";
            break;
    }
    Json::Value data(Json::objectValue);
    data["reason"] = reason;
    return MakeResult(err::kPermissionDenied, data);
}
