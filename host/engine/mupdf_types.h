#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include "engine/mupdf_ptr.h"

namespace pdfhost::engine {

namespace detail {
inline void DropPdfPage(fz_context* ctx, pdf_page* page) {
    fz_drop_page(ctx, &page->super);
}
}  // namespace detail

// Owning handles of the MuPDF objects the engine uses.
using ObjPtr = MupdfPtr<pdf_obj, pdf_drop_obj>;
using BufferPtr = MupdfPtr<fz_buffer, fz_drop_buffer>;
using PixmapPtr = MupdfPtr<fz_pixmap, fz_drop_pixmap>;
using ImagePtr = MupdfPtr<fz_image, fz_drop_image>;
using ProcessorPtr = MupdfPtr<pdf_processor, pdf_drop_processor>;
using PagePtr = MupdfPtr<pdf_page, detail::DropPdfPage>;
using DocumentPtr = MupdfPtr<pdf_document, pdf_drop_document>;

}  // namespace pdfhost::engine
