#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pdfhost::engine {

// A span [first, first + count) of code points.
struct TextSpan {
    std::size_t first = 0;
    std::size_t count = 0;
    friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

// Finds the texts that a redaction removed inside other texts, without regard to case; a run
// of whitespace in a removed text matches any run of whitespace (line breaks included).
// Leading and trailing whitespace of a removed text is ignored; texts that are empty then are
// dropped.
class RemovedTextMatcher {
  public:
    explicit RemovedTextMatcher(const std::vector<std::u32string>& texts);

    bool Empty() const { return needles_.empty(); }

    // The occurrences in `text`, in order, without overlap; at each place the longest removed
    // text that matches wins.
    std::vector<TextSpan> Find(std::u32string_view text) const;
    // `text` with every occurrence cut out.
    std::u32string Erase(std::u32string_view text) const;

    // Whether raw bytes (a file's content) hold a removed text as UTF-8, as PDFDocEncoding /
    // Latin-1, or as UTF-16 in either byte order.
    bool OccursInBytes(std::string_view bytes) const;

  private:
    std::size_t MatchAt(std::u32string_view text, std::size_t at,
                        const std::u32string& needle) const;

    std::vector<std::u32string> needles_;  // folded, whitespace collapsed, longest first
    // Indexes into needles_ by their first character, longest first.
    std::unordered_map<char32_t, std::vector<std::size_t>> byFirst_;
};

}  // namespace pdfhost::engine
