// The characters of a page as a reader reads them, for matching and for the page's plain text.
#pragma once

#include <string>
#include <vector>

#include "engine/text_folding.h"
#include "engine/text_page.h"

namespace pdfhost::engine {

// One folded code point and the character of the page it comes from.
struct ReadingUnit {
    char32_t code = 0;
    int source = 0;          // index into PageText::Chars()
    bool space = false;      // the character is whitespace
    bool lineStart = false;  // the first unit of a line that does not continue the one before
    bool optional = false;   // read past when it does not match: see ReadingText
    bool shown = false;      // an optional line-end hyphen that the lines keep: see Lines()
};

// A page's characters as a sequence of folded code points, each keeping the index of the
// character it comes from, so that whatever is matched maps back to the page's own characters
// and their boxes.
//
// - Lines keep their order; within a line, right-to-left text stored in visual order is put in
//   logical order (see ReadingOrderOf).
// - Every character is folded (see AppendFolded); one may give several units (a ligature) or
//   none (a soft hyphen inside a line).
// - A word hyphenated at a line end is joined: when a line ends in a hyphen (or soft hyphen)
//   after a letter and the next line begins with a letter, the hyphen is optional and the next
//   line continues this one, so "confiden-" / "tiality" reads as "confidentiality" and still
//   as "confiden-tiality". Whether the hyphen belongs to the word ("e-" / "mail") is not told
//   by the break itself: Lines() drops it only where the break is plainly hyphenation.
// - A space that stands between two characters of a line with no visible gap between their
//   glyphs (less than a tenth of the font size, narrower than any word gap the text extraction
//   inserts a space for) is stored inside a word, as in "Erfi nder" written with a ligature
//   whose text carries a space: it is optional.
class ReadingText {
  public:
    static ReadingText Of(const PageText& text, Folding folding);

    const std::vector<ReadingUnit>& Units() const { return units_; }

    // The lines as a reader reads them: optional units left out, joined lines one line. A hyphen
    // that joins two lines is left out when it is a soft hyphen, or when the page writes the
    // joined word elsewhere whole and nowhere with a hyphen; otherwise it is kept ("e-mail"), as
    // the word may be written with it. Matching takes both spellings either way.
    std::vector<std::u32string> Lines() const;

  private:
    explicit ReadingText(std::vector<ReadingUnit> units) : units_(std::move(units)) {}

    std::vector<ReadingUnit> units_;
};

}  // namespace pdfhost::engine
