#pragma once

#include <string>
#include <vector>

#include "engine/annotations.h"
#include "engine/document.h"
#include "engine/redaction_areas.h"

namespace pdfhost::engine {

struct RedactionOptions {
    // Fill each applied area with its annotation's interior colour (/IC), black without one.
    bool fillAreas = true;
};

// A page on which an apply met trouble: its boxes, and what went wrong.
struct RedactionProblem {
    int page = -1;
    std::vector<Rect> boxes;
    std::string reason;
};

struct RedactionReport {
    int applied = 0;  // annotations applied
    // The pages that could not be done: each stays as it was, its Redact annotations standing.
    std::vector<RedactionProblem> problems;
};

// Applies Redact annotations: what lies under them is removed from the page content itself.
//   - text: glyph by glyph (see RedactionAreas::CoversGlyph), in form XObjects and tiling
//     patterns too (Type 3 and invisible text alike);
//   - images, inline ones too: the covered pixels are blanked (white); an image wholly
//     covered, one with a mask, or one that cannot be decoded goes entirely; an inline image
//     of the page content that MuPDF cannot read at all goes wherever it stands, since the
//     page cannot be rewritten around it (see RemoveUnreadableInlineImages);
//   - vector art, in the page content, form XObjects and tiling patterns: paths that meet an
//     area are cut to what lies outside it (clipping paths too), those wholly inside go (see
//     CoveredPathFilter); curves that meet an area are cut as short straight segments;
//   - annotations and form fields under an area lose what they hold (see
//     RemoveCoveredAnnotations), and the applied annotations go with their popups;
//   - the page's thumbnail and the private application data of the page, its forms and the
//     document (see DropPrivatePageData).
// Each page is done on its own: a page whose content cannot be rewritten is left as it was
// (the report names it with its boxes) while the other pages are done. Afterwards the document must
// be saved in full with garbage collection (Document::SaveFull), never incrementally.
class Redactor {
  public:
    explicit Redactor(Document& document) : document_(document) {}

    // The Redact annotations of the document, page by page, in /Annots order.
    std::vector<AnnotationId> RedactAnnotations() const;

    // Applies `targets`, each of which must be a Redact annotation standing on its page; one
    // that is not throws Error before anything changes.
    RedactionReport Apply(const std::vector<AnnotationId>& targets,
                          const RedactionOptions& options);

  private:
    // With `withoutUnreadableImages`, the inline images MuPDF cannot read are taken out of the
    // page content first; false (nothing done) when there were none.
    bool ApplyOnPage(int page, const std::vector<int>& objects, const RedactionAreas& areas,
                     const RedactionOptions& options, bool withoutUnreadableImages);

    Document& document_;
};

}  // namespace pdfhost::engine
