#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "engine/reading_text.h"
#include "engine/text_page.h"

namespace pdfhost::engine {

struct FindOptions {
    bool matchCase = false;  // without it letters match whatever their case
    bool wholeWord = false;  // a match may not touch a letter or digit on either side
};

// A match: characters [first, first + count) of a PageText.
struct TextMatch {
    int first = 0;
    int count = 0;
    friend bool operator==(const TextMatch&, const TextMatch&) = default;
};

// A needle ready for matching against the numbered characters of a page.
//
// Needle and page are compared as a reader reads them (see ReadingText and AppendFolded):
// ligatures, compatibility and full-width forms folded, soft hyphens ignored, case folded by the
// Unicode rules unless the case must match, diacritics kept; right-to-left lines stored in
// visual order read in logical order; a word hyphenated at a line end found by its whole
// spelling; a space stored inside a word read past. A match is the range of the page's
// characters from the first to the last one it took (a word joined across a line end takes the
// hyphen's line too), so its boxes cover what was found.
//
// Whitespace: every run of whitespace in the needle (spaces, tabs, CR/LF, ...) matches one or
// more whitespace characters of the page, or a line break with or without whitespace around
// it; so a phrase is found across the end of a line. Other characters must follow each other
// on one line. A match always begins and ends on characters, which it counts: a line break
// matched at the very edge of a needle adds none.
class TextPattern {
  public:
    // Nothing to find (an empty needle, or only whitespace): nullopt.
    static std::optional<TextPattern> Compile(std::u32string_view needle, FindOptions options);

    // The matches from character `start` on, in numbering order; they do not overlap, each
    // search going on after the previous match.
    std::vector<TextMatch> FindAll(const PageText& text, int start = 0) const;
    // The same in a reading of `text` made with ReadingFolding(), for callers that search one
    // page for many needles.
    std::vector<TextMatch> FindAll(const ReadingText& reading, const PageText& text,
                                   int start = 0) const;

    // How the page is folded for this needle.
    Folding ReadingFolding() const {
        return options_.matchCase ? Folding::kCaseKept : Folding::kCaseless;
    }

  private:
    struct Element {
        bool space = false;
        char32_t code = 0;  // folded as the page is
    };

    // A match and the unit after the last one it took.
    struct UnitMatch {
        TextMatch match;
        std::size_t end = 0;
    };

    TextPattern(std::vector<Element> elements, FindOptions options)
        : elements_(std::move(elements)), options_(options) {}

    std::optional<UnitMatch> MatchAt(const std::vector<ReadingUnit>& units, std::size_t at) const;
    bool Touches(const std::vector<TextChar>& chars, const TextMatch& match) const;

    std::vector<Element> elements_;
    FindOptions options_;
};

}  // namespace pdfhost::engine
