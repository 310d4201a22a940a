#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "engine/mupdf_types.h"
#include "engine/pdf_value.h"

namespace pdfhost::engine {

// An annotation: the page whose /Annots holds it and the object number of its dictionary.
// Annotations that stand in /Annots as direct dictionaries have no number and are not
// addressed (no common writer makes them).
struct AnnotationId {
    int page = -1;
    int object = 0;
    friend bool operator==(const AnnotationId&, const AnnotationId&) = default;
};

// An annotation taken off its page together with the popups that belonged to it, and where
// each stood in /Annots, so that it can be put back exactly.
struct RemovedAnnotation {
    struct Entry {
        int object = 0;
        int index = 0;
    };
    AnnotationId id;
    std::vector<Entry> entries;  // the annotation and its popups, by ascending index
};

// The annotations of one document's pages. Changes go straight to the page's /Annots array
// (no page stays loaded between calls) and move the document's revision. Every MuPDF failure
// throws Error; a page out of range throws Error.
class Annotations {
  public:
    explicit Annotations(Document& document) : document_(document) {}

    // Object numbers of the page's annotations, in /Annots order.
    std::vector<int> OnPage(int page) const;
    // Whether the page's /Annots holds the annotation.
    bool IsOnPage(const AnnotationId& id) const { return IndexOf(id) >= 0; }
    // Where the page's /Annots holds the annotation, or -1; from `hint` the search goes outwards
    // (the nearest place when it stands twice), so a remembered place finds it in a few steps; a
    // hint past the end searches from the last place, a negative one from the start.
    int IndexOf(const AnnotationId& id, int hint = -1) const;
    // The number of entries in the page's /Annots.
    int Count(int page) const;

    // Makes an annotation on `page` whose dictionary holds exactly `entries` (which must have
    // a /Subtype name) plus a generated appearance (/AP) so that it shows; /Rect keeps the value
    // given, even though building the appearance computes its own. It stands at `index` of
    // /Annots, or at the end when `index` is negative or past the end. References in `entries`
    // must carry `documentTag`.
    AnnotationId Create(int page, const PdfValue& entries, std::uintptr_t documentTag, int index);
    // Takes the annotation off its page, with the popups whose /Parent or /P is the
    // annotation and the one its /Popup names; nothing when it is not on the page. The objects
    // stay in the document, so Restore can put them back. `hint`: where it last stood (see
    // IndexOf).
    std::optional<RemovedAnnotation> Remove(const AnnotationId& id, int hint = -1);
    // Takes each of `objects` off page `page` as Remove does, in one walk of /Annots whatever
    // their number; those not on the page are skipped. Nothing is kept to put them back.
    void RemoveAll(int page, const std::vector<int>& objects);
    // Puts a removed annotation (and its popups) back where it stood; false when it is on the
    // page already.
    bool Restore(const RemovedAnnotation& removed);
    // Deletes the objects of a removed annotation that can no longer come back: its dictionary,
    // its popups' and the appearance streams they name. False, with nothing deleted, when it is
    // on the page again.
    bool Discard(const RemovedAnnotation& removed);

    // Gives the page an /Annots array of its own: an indirect array is replaced by a direct
    // copy, so that a change to this page's annotations cannot reach another page that shares
    // the array; one that Create made for this page stays. A missing array is made empty.
    void Detach(int page);

    // The dictionary of an annotation object (a new reference), or empty when the object is
    // no dictionary.
    ObjPtr Dictionary(int object) const;
    // The /Subtype name; empty when there is none.
    std::string Subtype(int object) const;
    // The /Rect, normalised (left <= right, bottom <= top); all zero when there is none.
    Rect RectOf(int object) const;

  private:
    void CheckPage(int page) const;
    ObjPtr PageObject(int page) const;

    Document& document_;
};

}  // namespace pdfhost::engine
