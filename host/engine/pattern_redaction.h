#pragma once

#include "engine/redaction_areas.h"

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Removes from the tiling patterns of a page's resource dictionary the glyphs and images of
// which any tile's copy falls under an area (PDF page space). Each changed pattern becomes a
// new object in `resources`, since the old one may serve other pages. Throws Error.
void RedactTilingPatterns(fz_context* ctx, pdf_document* pdf, pdf_obj* resources,
                          const RedactionAreas& areas);

}  // namespace pdfhost::engine
