#pragma once

#include "engine/redaction_areas.h"

struct fz_context;
struct fz_image;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Rewrites the content of a page without what the areas cover: glyphs, image pixels and
// vector art (see Redactor), into a new content stream and resource dictionary of the page.
// With `fill`, each area is then painted in its colour. Throws Error.
void RewriteWithout(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj,
                    const RedactionAreas& areas, bool fill);

// What an image filter callback returns to keep `image` as it is. MuPDF's content filter drops
// the image a callback returns for an inline image (named "<inline>"), but not the same image
// of an XObject: an inline one needs a reference of its own.
fz_image* UnchangedImage(fz_context* ctx, const char* name, fz_image* image);

}  // namespace pdfhost::engine
