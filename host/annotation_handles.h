// Annotations handed out as handles. One annotation always gets the same handle, which serves
// both as the editor's annotation (HostAnnot) and as the PDF annotation (NdxAnnot). A handle
// stays valid until its document closes, also after the annotation left its page (it is then
// no longer alive). NDXAnnotNew makes a pending annotation: entries not yet on any page, until
// an annotation list inserts it.
#pragma once

#include <map>
#include <optional>
#include <utility>

#include "engine/annotations.h"
#include "engine/pdf_value.h"
#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

struct AnnotationRecord {
    HostDoc document = nullptr;
    engine::AnnotationId id;  // page and object once on a page
    // The entries of a pending annotation.
    std::optional<engine::PdfValue> pending;
    // How the annotation last left its page, so that undo can put it back.
    std::optional<engine::RemovedAnnotation> removal;
    // Where its page's /Annots held it when last seen: where a check of it looks first.
    int slot = -1;

    bool IsPending() const { return pending.has_value(); }
};

// The annotation list of one page of a document.
struct AnnotationListRecord {
    HostDoc document = nullptr;
    int page = -1;
};

class AnnotationHandles {
  public:
    // The handle of the annotation, made on first use.
    HostAnnot HandleOf(HostDoc document, const engine::AnnotationId& id);
    // A pending annotation; `document` (may be null) is the one its entries refer to.
    HostAnnot NewPending(HostDoc document, engine::PdfValue entries);
    // Turns a pending annotation into the one now standing at `id`.
    void Place(HostAnnot handle, HostDoc document, const engine::AnnotationId& id);

    AnnotationRecord* Find(HostAnnot handle) const { return records_.Find(handle); }
    AnnotationRecord* Find(NdxAnnot handle) const {
        return records_.Find(reinterpret_cast<HostAnnot>(handle));
    }

    // The list of a page, made on first use.
    NdxAnnotList ListOf(HostDoc document, int page);
    const AnnotationListRecord* FindList(NdxAnnotList list) const { return lists_.Find(list); }

    // Forgets an annotation that left its document for good; its handle is then stale.
    void Forget(HostAnnot handle);
    // Forgets the annotations and lists of a closing document.
    void ForgetDocument(HostDoc document);

  private:
    HandlePool<HostAnnot, AnnotationRecord> records_;
    std::map<std::pair<HostDoc, int>, HostAnnot> byObject_;
    HandlePool<NdxAnnotList, AnnotationListRecord> lists_;
    std::map<std::pair<HostDoc, int>, NdxAnnotList> listIndex_;
};

}  // namespace pdfhost
