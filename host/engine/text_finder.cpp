#include "engine/text_finder.h"

#include <algorithm>

namespace pdfhost::engine {
namespace {

// The letters of a Latin ligature code point, or an empty view for any other.
std::u32string_view LigatureLetters(char32_t code) {
    switch (code) {
        case 0xFB00:
            return U"ff";
        case 0xFB01:
            return U"fi";
        case 0xFB02:
            return U"fl";
        case 0xFB03:
            return U"ffi";
        case 0xFB04:
            return U"ffl";
        case 0xFB05:
        case 0xFB06:
            return U"st";
        default:
            return {};
    }
}

bool LineBreakBefore(const std::vector<TextChar>& chars, std::size_t at) {
    return at > 0 && at < chars.size() && chars[at].line != chars[at - 1].line;
}

}  // namespace

std::optional<TextPattern> TextPattern::Compile(std::u32string_view needle, FindOptions options) {
    std::vector<Element> elements;
    bool hasText = false;
    auto addChar = [&](char32_t code) {
        elements.push_back(Element{false, options.matchCase ? code : FoldCase(code)});
        hasText = true;
    };
    for (const char32_t code : needle) {
        if (IsSpaceChar(code)) {
            if (elements.empty() || !elements.back().space)
                elements.push_back(Element{true, 0});
            continue;
        }
        const std::u32string_view letters = LigatureLetters(code);
        if (letters.empty()) {
            addChar(code);
        } else {
            std::for_each(letters.begin(), letters.end(), addChar);
        }
    }
    if (!hasText)
        return std::nullopt;
    return TextPattern(std::move(elements), options);
}

std::vector<TextMatch> TextPattern::FindAll(const PageText& text, int start) const {
    std::vector<TextMatch> matches;
    const std::vector<TextChar>& chars = text.Chars();
    const int count = text.CharCount();
    const Element& lead = elements_.front();
    for (int at = std::max(start, 0); at < count;) {
        if (!lead.space) {
            const TextChar& ch = chars[static_cast<std::size_t>(at)];
            if ((options_.matchCase ? ch.code : ch.folded) != lead.code) {
                ++at;
                continue;
            }
        }
        const std::optional<TextMatch> match = MatchAt(chars, at);
        if (!match || (options_.wholeWord && Touches(chars, *match))) {
            ++at;
            continue;
        }
        matches.push_back(*match);
        at = match->first + match->count;
    }
    return matches;
}

std::optional<TextMatch> TextPattern::MatchAt(const std::vector<TextChar>& chars, int at) const {
    std::size_t pos = static_cast<std::size_t>(at);
    int first = -1;
    int last = -1;
    bool afterSpace = false;
    for (const Element& element : elements_) {
        if (element.space) {
            const std::size_t from = pos;
            while (pos < chars.size() && IsSpaceChar(chars[pos].code))
                ++pos;
            if (pos == from && !LineBreakBefore(chars, pos))
                return std::nullopt;
            if (pos > from) {
                first = first < 0 ? static_cast<int>(from) : first;
                last = static_cast<int>(pos) - 1;
            }
            afterSpace = true;
            continue;
        }
        if (pos >= chars.size())
            return std::nullopt;
        const TextChar& ch = chars[pos];
        if ((options_.matchCase ? ch.code : ch.folded) != element.code)
            return std::nullopt;
        if (first >= 0 && !afterSpace && LineBreakBefore(chars, pos))
            return std::nullopt;
        first = first < 0 ? static_cast<int>(pos) : first;
        last = static_cast<int>(pos);
        ++pos;
        afterSpace = false;
    }
    if (first < 0)
        return std::nullopt;
    return TextMatch{first, last - first + 1};
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
