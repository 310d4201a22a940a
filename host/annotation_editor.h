// What the editor does with annotations for the function tables, the scripted user and the
// desktop. Every change marks the document modified (which moves its revision) and asks its
// view to repaint; a document whose permissions forbid the change is left alone.
#pragma once

#include <vector>

#include "engine/annotations.h"
#include "engine/pdf_value.h"
#include "host_abi.h"
#include "undo_stack.h"

namespace pdfhost {

class HostApp;
class HostDocument;
struct AnnotationRecord;

class AnnotationEditor {
  public:
    explicit AnnotationEditor(HostApp& app) : app_(app) {}

    // Adds an annotation made of `entries` (see engine::Annotations::Create) to `page` at
    // `index` of its annotations (-1 appends). Null when annotating is forbidden or the entries
    // cannot make one.
    HostAnnot Add(HostDocument& document, int page, const engine::PdfValue& entries, int index);
    // Puts a pending annotation (made by NDXAnnotNew) on `page` at `index`.
    bool Place(HostDocument& document, HostAnnot pending, int page, int index);
    // Takes an annotation of the document off its page, with its popups.
    bool Delete(HostDocument& document, HostAnnot annot);
    // Whether the annotation belongs to the document and stands on its page.
    bool IsAlive(HostDocument& document, HostAnnot annot) const;
    // Undoes the newest recorded addition or deletion of the document that can still be
    // undone; false when there is none.
    bool UndoLast(HostDocument& document);
    // The history let go of `entry`: a deletion it named can no longer be undone, so the
    // removed annotation's objects are deleted from the document and, unless the history names
    // it again, its handle's record is dropped.
    void Forget(const UndoStack::Entry& entry);

    // Applies the given Redact annotations of the document, or every one with `only` null.
    // False with the document unchanged when one is no live Redact annotation of the document
    // or when changing the content is forbidden. Each page is done on its own: a page the
    // engine could not do at all stays as it was (false, while the other pages are applied);
    // each page's trouble is written to the log with its boxes. An apply that changed any page
    // cannot be undone, and clears the document's undo history.
    bool ApplyRedactions(HostDocument& document, const std::vector<HostAnnot>* only, bool fill);

    // Called before a page's annotations change: gives the page an annotation array of its own.
    void Touch(HostDocument& document, int page);
    // Repaints the annotation's area in the document's view.
    void Redraw(HostDocument& document, HostAnnot annot);

    // The placed annotation of the document behind the handle, or null.
    AnnotationRecord* PlacedOf(const HostDocument& document, HostAnnot annot) const;

    // The tag that references to the document carry in a PdfValue.
    static std::uintptr_t TagOf(const HostDocument& document);

  private:
    void Changed(HostDocument& document, int page);
    // Notes where a new annotation, asked for at `index`, stands in its page's /Annots.
    void Remember(const engine::Annotations& annotations, HostAnnot annot, int index);

    HostApp& app_;
};

}  // namespace pdfhost
