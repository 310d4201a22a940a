// Pages and the object numbers of their dictionaries, both ways. With the document's pages
// indexed, MuPDF's page lookup gives the dictionary itself rather than the reference to it;
// these read the number either way.
#pragma once

#include "engine/document.h"

namespace pdfhost::engine {

// Throws Error for a page out of range.
int PageObjectNumber(const Document& document, int page);

// The index of the page whose dictionary is `dict` (a reference to it or the dictionary), or
// -1 when it is no page of the document. Through the page map this costs one search of the
// map; a dictionary the map does not know is compared with every page.
int PageIndexOf(const Document& document, pdf_obj* dict);

}  // namespace pdfhost::engine
