#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"

namespace pdfhost::engine {

// What replacing a match needs to know, taken when it was found, in PDF page space.
struct MatchPlacement {
    // Per line of the match, the band of its glyphs from a quarter to a half of the font size
    // above the baseline, along the matched characters: what it touches are the match's glyphs
    // and none of the lines above or below, even on a tight line pitch.
    std::vector<Rect> bands;
    PdfPoint origin{};         // baseline origin of the first character
    PdfPoint direction{1, 0};  // along that baseline
    float size = 0;
    std::uint32_t color = 0;  // 0xRRGGBB
    std::uint8_t style = kFontPlain;
};

MatchPlacement PlacementOf(const PageText& text, const TextMatch& match);

// Replaces a match on page `page`: the glyphs under its bands are removed from the content
// (text only; images, vector art and annotations stay), then `utf8` is drawn at the first
// character's origin along its baseline in a standard font of the same size, colour and
// weight (Helvetica, Times or Courier; characters outside Latin-1 become '?'). The text that
// follows is not moved. Other Redact annotations of the page stay as they are. Throws Error
// when the document forbids changes or MuPDF fails.
void ReplaceMatch(Document& document, int page, const MatchPlacement& placement,
                  std::string_view utf8);

}  // namespace pdfhost::engine
