#pragma once

#include <vector>

#include "engine/document.h"
#include "engine/redaction_areas.h"

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// Takes off a page what its annotations hold under the areas (PDF page space):
//   - links, and any other annotation except Redact ones, whose /Rect meets an area go, with
//     their popups (their appearance, /Contents, /RC, /T and actions go with them);
//   - a form field with a widget that meets an area loses its value, default value, rich
//     value and options (export values) up its /Parent chain, and every widget of it loses its
//     appearance; the widgets under the areas go, and a field left without widgets leaves the
//     form. Signature fields go whole.
//   - text markups (Highlight, Underline, StrikeOut, Squiggly) stay, since others may keep
//     records of them: they and their popups lose /Contents, /RC, /T and /Subj, and their
//     object numbers are returned, for RebuildAppearances.
// Redact annotations stay as they are (their overlay text is theirs). Throws Error.
std::vector<int> RemoveCoveredAnnotations(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj,
                                          const RedactionAreas& areas);

// Replaces the appearance of the annotations `objects` of page `page` (0-based) with one
// MuPDF builds from their own geometry and colour; their /Rect stays as it was. Throws Error.
void RebuildAppearances(const Document& document, int page, const std::vector<int>& objects);

}  // namespace pdfhost::engine
