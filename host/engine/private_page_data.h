#pragma once

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Takes from a redacted page what pictures or records its content as it was before:
//   - the embedded thumbnail (/Thumb), a small picture of the unredacted page;
//   - page-piece dictionaries (/PieceInfo) of the page and of the form XObjects it draws, where
//     applications keep private data, often a whole copy of the page's artwork in a form of
//     their own that nobody else can read or scrub.
// Form XObjects are followed through /Resources with a visited set and a depth limit. Throws
// Error.
void DropPrivatePageData(fz_context* ctx, pdf_obj* page_obj);

// The document's own page-piece dictionary (the catalog's /PieceInfo), for the same reason.
void DropPrivateDocumentData(fz_context* ctx, pdf_document* pdf);

}  // namespace pdfhost::engine
