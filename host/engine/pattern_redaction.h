#pragma once

#include "engine/mupdf_types.h"
#include "engine/redaction_areas.h"

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Removes from the tiling patterns of a resource dictionary the glyphs and images of which any
// tile's copy falls under an area, and cuts their paths. `toAreas` maps the space of the
// content that uses the resources (a page's: identity; a form's: where it was drawn) to the
// areas' space. Each changed pattern becomes a new object in `resources`, since the old one may
// serve other pages. `depth` counts the forms and patterns already entered on the way down.
// Throws Error.
void RedactTilingPatterns(fz_context* ctx, pdf_document* pdf, pdf_obj* resources,
                          const RedactionAreas& areas, fz_matrix toAreas = fz_identity,
                          int depth = 0);

}  // namespace pdfhost::engine
