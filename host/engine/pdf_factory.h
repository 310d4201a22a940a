#pragma once

#include <string>

#include "engine/context.h"
#include "engine/document.h"
#include "engine/pdf_description.h"

namespace pdfhost::engine {

// Builds PDF files from a PdfDescription, for tests and the bundled sample. Throws Error on failure
// (also for a description with no pages).
class PdfFactory {
  public:
    explicit PdfFactory(Context& context) : context_(context) {}

    // Writes the described file (encrypted if so described) to `path`.
    void Write(const PdfDescription& recipe, const std::string& path) const;

    // The described document in memory, unencrypted and unsaved (Path() empty).
    Document Build(const PdfDescription& recipe) const;

  private:
    Context& context_;
};

}  // namespace pdfhost::engine
