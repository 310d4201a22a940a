// The opening check that most commands share: the document they work on, its PDF, its registry
// id and the search result store, each checked in that order and only when the command needs it.
#pragma once

#include <cstdint>
#include <string>

#include "bridge/error_codes.h"
#include "host/host_api.h"

class DocumentAccess;
class SearchResultStore;

// Which of the later steps a command needs; the document itself is always checked.
struct DocumentNeeds {
    bool pdf = false;
    bool fileId = false;
    bool store = false;
};

// The resolved document, or the error code of the first step that failed: closed document,
// no PDF document, no id from the document, no result store.
struct CheckedDocument {
    int32_t error = err::kOk;
    HostDoc doc = nullptr;
    NdxDoc pdf = nullptr;
    std::wstring fileId;
    SearchResultStore* store = nullptr;

    explicit operator bool() const { return error == err::kOk; }
};

// The check on `doc`.
CheckedDocument CheckDocument(const DocumentAccess& documents, HostDoc doc, DocumentNeeds needs);
// The check on the current document: the batch's during a batch run, otherwise the active one.
CheckedDocument CheckCurrentDocument(const DocumentAccess& documents, DocumentNeeds needs = {});
