#pragma once

#include "engine/redaction_areas.h"

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Rewrites the content of a page without what the areas cover: glyphs, image pixels and
// vector art (see Redactor), into a new content stream and resource dictionary of the page.
// With `fill`, each area is then painted in its colour. Throws Error.
void RewriteWithout(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj,
                    const RedactionAreas& areas, bool fill);

}  // namespace pdfhost::engine
