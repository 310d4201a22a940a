#pragma once

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Takes out of a page's own content stream every inline image (BI ... ID ... EI) that MuPDF
// cannot read: such an image stops MuPDF's content filter, so the page could not be redacted
// at all, and what it holds cannot be checked against the boxes. Each goes whole, from BI to
// its EI (to the end of the content when no EI follows). Readable images and everything else
// are kept byte for byte. When something was taken out, the page gets a new content stream
// (the old one may be shared). Returns how many images went. Throws Error.
int RemoveUnreadableInlineImages(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj);

}  // namespace pdfhost::engine
