// The object number of a page's dictionary. With the document's pages indexed, MuPDF's page
// lookup gives the dictionary itself rather than the reference to it; this reads the number
// either way.
#pragma once

#include "engine/document.h"

namespace pdfhost::engine {

// Throws Error for a page out of range.
int PageObjectNumber(const Document& document, int page);

}  // namespace pdfhost::engine
