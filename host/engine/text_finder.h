#pragma once

#include <optional>
#include <string_view>
#include <vector>

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
// Whitespace: every run of whitespace in the needle (spaces, tabs, CR/LF, ...) matches one or
// more whitespace characters of the page, or a line break with or without whitespace around
// it; so a phrase is found across the end of a line. Other characters must follow each other
// on one line. A match always begins and ends on characters, which it counts: a line break
// matched at the very edge of a needle adds none.
// Letter ligatures in the needle are expanded, as the page's own are.
class TextPattern {
  public:
    // Nothing to find (an empty needle, or only whitespace): nullopt.
    static std::optional<TextPattern> Compile(std::u32string_view needle, FindOptions options);

    // The matches from character `start` on, in numbering order; they do not overlap, each
    // search going on after the previous match.
    std::vector<TextMatch> FindAll(const PageText& text, int start = 0) const;

  private:
    struct Element {
        bool space = false;
        char32_t code = 0;  // folded unless the case must match
    };

    TextPattern(std::vector<Element> elements, FindOptions options)
        : elements_(std::move(elements)), options_(options) {}

    std::optional<TextMatch> MatchAt(const std::vector<TextChar>& chars, int at) const;
    bool Touches(const std::vector<TextChar>& chars, const TextMatch& match) const;

    std::vector<Element> elements_;
    FindOptions options_;
};

}  // namespace pdfhost::engine
