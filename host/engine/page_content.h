#pragma once

#include <string>
#include <string_view>

#include "engine/mupdf_types.h"

namespace pdfhost::engine {

// Adding drawings on top of a page. Every function throws Error("<what>: <reason>") when MuPDF
// fails.

// The page's own resource dictionary of `kind` (Font, XObject, ...), made when missing. A page
// that inherits its resources gets a copy of them first, so the inherited ones stay usable.
pdf_obj* OwnPageResources(fz_context* ctx, pdf_document* doc, pdf_obj* page, pdf_obj* kind,
                          std::string_view what);

// An unused name for a new entry of `resources`: `prefix` followed by a number.
std::string FreeResourceName(fz_context* ctx, pdf_obj* resources, std::string_view prefix,
                             std::string_view what);

// Makes `page` draw `operators` after its content. The old content is wrapped in q ... Q, so that
// its graphics state cannot leak into the new operators.
void AppendPageContent(fz_context* ctx, pdf_document* doc, pdf_obj* page,
                       const std::string& operators, std::string_view what);

// A number as content-stream operators take it: plain decimal, at most four places.
std::string PdfNumber(float value);

// A new Type1 font dictionary of a standard font in WinAnsiEncoding.
ObjPtr NewStandardFont(fz_context* ctx, pdf_document* doc, const char* baseFont,
                       std::string_view what);

}  // namespace pdfhost::engine
