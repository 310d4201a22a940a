// The PDF objects of one document that have been handed out as NdxObject handles. Each handle
// holds a reference to its object until the document closes, so a borrowed handle stays valid as
// long as the document is open; one object always gets the same handle.
#pragma once

#include <unordered_map>

#include "engine/mupdf_types.h"
#include "host_abi.h"

namespace pdfhost {

class PdfObjectHandles {
  public:
    explicit PdfObjectHandles(fz_context* ctx) : ctx_(ctx) {}
    PdfObjectHandles(const PdfObjectHandles&) = delete;
    PdfObjectHandles& operator=(const PdfObjectHandles&) = delete;

    // The handle of `object` (null for null), made on first use.
    NdxObject HandleOf(pdf_obj* object);
    // The object behind a handle of this document, or null.
    pdf_obj* Find(NdxObject handle) const;

  private:
    fz_context* ctx_;
    std::unordered_map<uintptr_t, engine::ObjPtr> byHandle_;
    std::unordered_map<pdf_obj*, uintptr_t> byObject_;
};

}  // namespace pdfhost
