#include "current_document.h"

#include "document/document_access.h"

CheckedDocument CheckDocument(const DocumentAccess& documents, HostDoc doc, DocumentNeeds needs) {
    CheckedDocument checked;
    checked.doc = doc;
    if (doc == nullptr) {
        checked.error = err::kClosedDoc;
        return checked;
    }
    if (needs.pdf) {
        checked.pdf = documents.host().HostDocGetPdfDoc(doc);
        if (checked.pdf == nullptr) {
            checked.error = err::kNoNdxDoc;
            return checked;
        }
    }
    if (needs.fileId && !documents.FileIdOf(doc, checked.fileId)) {
        checked.error = err::kNoIdFromDoc;
        return checked;
    }
    if (needs.store) {
        checked.store = documents.searchResults();
        if (checked.store == nullptr)
            checked.error = err::kNoResultForSearchKey;
    }
    return checked;
}

CheckedDocument CheckCurrentDocument(const DocumentAccess& documents, DocumentNeeds needs) {
    return CheckDocument(documents, documents.CurrentDoc(), needs);
}
