#pragma once

#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/glyph_centres.h"
#include "engine/redaction_areas.h"
#include "engine/text_page.h"

namespace pdfhost::engine {

// The areas of one Redact annotation: each quadrilateral of /QuadPoints, else /Rect.
// Throws Error when the object cannot be read.
RedactionAreas AreasOfRedaction(const Document& document, int object);

// The text that applying `areas` removes from a page whose text is `text`: the characters whose
// glyphs the areas cover, one text per run of consecutive characters, in numbering order.
std::vector<std::u32string> TextsUnder(const PageText& text, const RedactionAreas& areas);
// The same, looking only at the characters `centres` (made from `text`) places in the areas'
// bounds.
std::vector<std::u32string> TextsUnder(const PageText& text, const RedactionAreas& areas,
                                       const GlyphCentres& centres);

}  // namespace pdfhost::engine
