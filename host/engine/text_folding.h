// Folding of single code points for matching: what a reader takes as the same letter becomes the
// same code points, while letters a reader tells apart stay apart.
#pragma once

#include <string>
#include <string_view>

namespace pdfhost::engine {

enum class Folding {
    kCaseless,  // compatibility forms and case folded, then decomposed (marks kept as marks)
    kCaseKept,  // compatibility forms folded, then decomposed; case kept
    kReading,   // compatibility forms folded and composed: the text as a reader reads it
};

// Appends the folded form of `code` to `out`: ligatures become their letters, full-width and
// other compatibility forms their plain form, and (kCaseless) letters are case-folded by the
// Unicode rules ("STRASSE" and "Straße" fold alike). Diacritics are never dropped: in the
// decomposed foldings they follow their base letter as combining marks, so a precomposed letter
// and its decomposed spelling fold alike. Default-ignorable code points (the soft hyphen, joiners,
// the byte order mark) fold to nothing. Values that are no scalar value (lone surrogates, values
// past U+10FFFF) are appended as they are and match only themselves.
void AppendFolded(char32_t code, Folding folding, std::u32string& out);

std::u32string Folded(std::u32string_view text, Folding folding);

// Letters of every script (for the joining of a word hyphenated at a line end).
bool IsLetterChar(char32_t code);
// Whether the code point has a strong right-to-left direction (Hebrew, Arabic, ...).
bool IsRightToLeftChar(char32_t code);

}  // namespace pdfhost::engine
