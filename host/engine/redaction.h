#pragma once

#include <vector>

#include "engine/annotations.h"
#include "engine/document.h"

namespace pdfhost::engine {

struct RedactionOptions {
    // Fill each applied area with its annotation's interior colour (/IC), black without one.
    bool fillAreas = true;
};

// Applies Redact annotations: what lies under them is removed from the page content itself.
//   - text: glyph by glyph (see RedactionAreas::CoversGlyph), in form XObjects too;
//   - images: the covered pixels are blanked (white); an image wholly covered, one with a
//     mask, or one that cannot be decoded goes entirely;
//   - vector art: paths painting wholly inside an area go (top-level page content);
//   - links under an area go, and so do the applied annotations with their popups.
// Other annotations, Redact ones included, stay as they are. All pages change or none: any
// failure throws Error and leaves the document as it was. Afterwards the document must be
// saved in full with garbage collection (Document::SaveFull), never incrementally.
class Redactor {
  public:
    explicit Redactor(Document& document) : document_(document) {}

    // The Redact annotations of the document, page by page, in /Annots order.
    std::vector<AnnotationId> RedactAnnotations() const;

    // Applies `targets`, each of which must be a Redact annotation standing on its page; one
    // that is not makes the whole apply fail. Returns how many were applied.
    int Apply(const std::vector<AnnotationId>& targets, const RedactionOptions& options);

  private:
    void ApplyOnPage(int page, const std::vector<int>& objects, const RedactionOptions& options);

    Document& document_;
};

}  // namespace pdfhost::engine
