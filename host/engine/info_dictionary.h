#pragma once

#include <string>

struct fz_context;
struct pdf_document;

namespace pdfhost::engine {

// Sets the string entry `key` of the trailer's Info dictionary to `bytes`, adding the dictionary
// as an indirect object when the document has none. Throws Error.
void PutInfoString(fz_context* ctx, pdf_document* doc, const std::string& key,
                   const std::string& bytes);

}  // namespace pdfhost::engine
