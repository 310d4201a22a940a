#include "document_state_dispatchers.h"

#include "app/brevan.h"
#include "bridge/error_codes.h"

Json::Value IsCurrentDocModifiedDispatcher::Run() {
    HostDoc doc = app_.GetCurrentDoc();
    if (doc == nullptr)
        return Fail(err::kClosedDoc);
    return MakeResult(err::kOk, Json::Value(app_.host().HostDocIsModified(doc) != 0));
}

Json::Value GetFilePageCountDispatcher::Run() {
    HostDoc doc = app_.GetCurrentDoc();
    if (doc == nullptr)
        return Fail(err::kClosedDoc);
    NdxDoc pdf = app_.host().HostDocGetPdfDoc(doc);
    if (pdf == nullptr)
        return Fail(err::kNoNdxDoc);
    Json::Value data(Json::objectValue);
    data["pageCount"] = app_.host().NDXDocGetPageCount(pdf);
    return MakeResult(err::kOk, data);
}

Json::Value CheckFilePermissionDispatcher::Run() {
    HostDoc doc = app_.GetCurrentDoc();
    if (doc == nullptr)
        return Fail(err::kClosedDoc);
    const uint32_t granted =
        app_.host().HostDocGetPermissions(doc) & (kHostPermCopy | kHostPermAnnotate);
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
