#pragma once

#include <cstddef>

#include <mupdf/pdf.h>

namespace pdfhost::engine {

// The head of a content processor that hands every operator on to `next`. Processors that
// change a few operators start with this head, override those operators and keep the rest.
struct ForwardingProcessor {
    pdf_processor super;
    pdf_processor* next;
};

// A processor of `size` bytes (at least sizeof(ForwardingProcessor), zeroed) whose every
// operator passes to `next` unchanged; closing or dropping it leaves `next` alone. Throws a
// MuPDF error; call inside CallMupdf.
ForwardingProcessor* NewForwardingProcessor(fz_context* ctx, std::size_t size, pdf_processor* next);

inline pdf_processor* NextOf(pdf_processor* proc) {
    return reinterpret_cast<ForwardingProcessor*>(proc)->next;
}

}  // namespace pdfhost::engine
