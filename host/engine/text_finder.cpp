#include "engine/text_finder.h"

#include <algorithm>
#include <limits>

namespace pdfhost::engine {
namespace {

bool LineBreakBefore(const std::vector<TextChar>& chars, std::size_t at) {
    return at > 0 && at < chars.size() && chars[at].line != chars[at - 1].line;
}

}  // namespace

std::optional<TextPattern> TextPattern::Compile(std::u32string_view needle, FindOptions options) {
    std::vector<Element> elements;
    const Folding folding = options.matchCase ? Folding::kCaseKept : Folding::kCaseless;
    bool hasText = false;
    std::u32string folded;
    for (const char32_t code : needle) {
        if (IsSpaceChar(code)) {
            if (elements.empty() || !elements.back().space)
                elements.push_back(Element{true, 0});
            continue;
        }
        folded.clear();
        AppendFolded(code, folding, folded);
        for (const char32_t unit : folded)
            elements.push_back(Element{false, unit});
        hasText = hasText || !folded.empty();
    }
    if (!hasText)
        return std::nullopt;
    return TextPattern(std::move(elements), options);
}

std::vector<TextMatch> TextPattern::FindAll(const PageText& text, int start) const {
    return FindAll(ReadingText::Of(text, ReadingFolding()), text, start);
}

std::vector<TextMatch> TextPattern::FindAll(const ReadingText& reading, const PageText& text,
                                            int start) const {
    std::vector<TextMatch> matches;
    const std::vector<ReadingUnit>& units = reading.Units();
    const Element& lead = elements_.front();
    TextMatch taken{0, 0};  // the previous match: a match never opens inside it
    for (std::size_t at = 0; at < units.size();) {
        const ReadingUnit& unit = units[at];
        // A match that opens with whitespace opens where the page's whitespace run does: from
        // within the run it would end at the same place.
        const bool candidate =
            unit.source >= start &&
            (unit.source < taken.first || unit.source >= taken.first + taken.count) &&
            (lead.space ? at == 0 || !units[at - 1].space || unit.lineStart
                        : unit.code == lead.code);
        const std::optional<UnitMatch> found =
            candidate ? MatchAt(units, at) : std::optional<UnitMatch>{};
        if (!found || found->match.first < start ||
            (options_.wholeWord && Touches(text.Chars(), found->match))) {
            ++at;
            continue;
        }
        matches.push_back(found->match);
        taken = found->match;
        at = found->end;
    }
    return matches;
}

std::optional<TextPattern::UnitMatch> TextPattern::MatchAt(const std::vector<ReadingUnit>& units,
                                                           std::size_t at) const {
    std::size_t pos = at;
    int low = std::numeric_limits<int>::max();
    int high = -1;
    bool afterSpace = false;
    auto take = [&](const ReadingUnit& unit) {
        low = std::min(low, unit.source);
        high = std::max(high, unit.source);
    };
    for (const Element& element : elements_) {
        if (element.space) {
            const std::size_t from = pos;
            while (pos < units.size() && units[pos].space)
                take(units[pos++]);
            if (pos == from && !(pos > 0 && pos < units.size() && units[pos].lineStart))
                return std::nullopt;
            afterSpace = true;
            continue;
        }
        while (pos < units.size() && units[pos].optional && units[pos].code != element.code)
            ++pos;
        if (pos >= units.size())
            return std::nullopt;
        const ReadingUnit& unit = units[pos];
        if (unit.code != element.code || (high >= 0 && !afterSpace && unit.lineStart))
            return std::nullopt;
        take(unit);
        ++pos;
        afterSpace = false;
    }
    if (high < 0)
        return std::nullopt;
    return UnitMatch{TextMatch{low, high - low + 1}, pos};
}

// Whether a letter or digit stands right before or after the match on the same line.
bool TextPattern::Touches(const std::vector<TextChar>& chars, const TextMatch& match) const {
    const auto first = static_cast<std::size_t>(match.first);
    const auto end = static_cast<std::size_t>(match.first + match.count);
    const bool before =
        first > 0 && !LineBreakBefore(chars, first) && IsWordChar(chars[first - 1].code);
    const bool after =
        end < chars.size() && !LineBreakBefore(chars, end) && IsWordChar(chars[end].code);
    return before || after;
}

}  // namespace pdfhost::engine
