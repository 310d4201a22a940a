#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"

struct fz_context;
struct pdf_annot;

namespace pdfhost::engine {

// How a character's font looks, as far as a standard font can imitate it.
enum FontStyle : std::uint8_t {
    kFontPlain = 0,
    kFontBold = 1,
    kFontItalic = 2,
    kFontSerif = 4,
    kFontMonospaced = 8,
};

// A point or direction in PDF page space.
struct PdfPoint {
    float x = 0;
    float y = 0;
};

// One numbered character. Geometry is in PDF page space (y up).
struct TextChar {
    char32_t code = 0;
    char32_t folded = 0;      // `code` in lower case, for matching without case
    int line = 0;             // index into PageText::Lines()
    Rect box{};               // the ascender-to-descender box of the glyph
    PdfPoint origin{};        // where the glyph stands on its baseline
    float size = 0;           // font size in points
    std::uint32_t color = 0;  // sRGB as 0xRRGGBB
    std::uint8_t style = kFontPlain;
};

// A run of characters on one baseline.
struct TextLine {
    int first = 0;  // index of its first character
    int count = 0;
    PdfPoint direction{1, 0};  // unit vector along the baseline, PDF page space
};

// The text of a page as a fixed sequence of characters.
//
// Numbering: characters are numbered from 0 in MuPDF's structured-text order (block by block,
// line by line, character by character: the order of the content stream, not a visual order),
// built with fixed options: ligatures expanded into their letters, every kind of horizontal
// whitespace turned into a space, spaces inserted where glyphs stand apart by a word gap, no
// dehyphenation. Only the page's own content counts; annotations and form fields are not part
// of it, so adding or removing annotations leaves the numbering as it was.
//
// Line breaks take no index: nothing is inserted between lines, a line ends where the next
// character has another `line` (whitespace in a search may match a line break, see
// TextPattern). Building the text again from unchanged content gives the same numbering.
class PageText {
  public:
    PageText() = default;

    // The page's own content. Throws Error for a page out of range or a damaged page.
    static PageText OfPage(const Document& document, int page);
    // The text that an annotation's appearance shows (a form field's visible text, for one),
    // in PDF page space of its page.
    static PageText OfAnnotation(fz_context* ctx, pdf_annot* annot);
    // A plain text as one line without geometry, for matching in texts that are not drawn.
    static PageText OfPlainText(std::u32string_view text);

    const std::vector<TextChar>& Chars() const { return chars_; }
    const std::vector<TextLine>& Lines() const { return lines_; }
    int CharCount() const { return static_cast<int>(chars_.size()); }

    // The characters [first, first + count) as code points.
    std::u32string Slice(int first, int count) const;
    // One rectangle per line touched by [first, first + count): the union of those characters'
    // boxes, in numbering order.
    std::vector<Rect> LineBoxes(int first, int count) const;

  private:
    PageText(std::vector<TextChar> chars, std::vector<TextLine> lines)
        : chars_(std::move(chars)), lines_(std::move(lines)) {}

    std::vector<TextChar> chars_;
    std::vector<TextLine> lines_;
};

// Lower case of a code point, as the finder compares letters without case.
char32_t FoldCase(char32_t code);
// Letters, marks and digits of every script: what a whole word may not touch.
bool IsWordChar(char32_t code);
// Spaces, tabs, line breaks and the other Unicode spaces.
bool IsSpaceChar(char32_t code);
// Decodes UTF-8 (malformed bytes become U+FFFD).
std::u32string DecodeUtf8(std::string_view utf8);
std::string EncodeUtf8(std::u32string_view text);

}  // namespace pdfhost::engine
