#pragma once

#include <string>

#include <mupdf/pdf.h>

namespace pdfhost::engine {

// Writes `doc` with `options` to a new temporary file in the folder of `path`, then renames it
// over `path`. On any failure the temporary file is removed, `path` is left as it was, and
// Error is thrown. The new file keeps the mode of the file it replaces.
void SaveReplacing(fz_context* ctx, pdf_document* doc, const std::string& path,
                   const pdf_write_options& options);

}  // namespace pdfhost::engine
