#include "current_document.h"

#include "app/brevan.h"

CheckedDocument CheckDocument(const Brevan& app, HostDoc doc, DocumentNeeds needs) {
    CheckedDocument checked;
    checked.doc = doc;
    if (doc == nullptr) {
        checked.error = err::kClosedDoc;
        return checked;
    }
    if (needs.pdf) {
        checked.pdf = app.host().HostDocGetPdfDoc(doc);
        if (checked.pdf == nullptr) {
            checked.error = err::kNoNdxDoc;
            return checked;
        }
    }
    if (needs.fileId && !app.FileIdOf(doc, checked.fileId)) {
        checked.error = err::kNoIdFromDoc;
        return checked;
    }
    if (needs.store) {
        checked.store = app.searchResults.get();
        if (checked.store == nullptr)
            checked.error = err::kNoResultForSearchKey;
    }
    return checked;
}

CheckedDocument CheckCurrentDocument(const Brevan& app, DocumentNeeds needs) {
    return CheckDocument(app, app.GetCurrentDoc(), needs);
}
