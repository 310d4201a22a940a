#include "engine/reading_text.h"

#include <algorithm>
#include <array>
#include <set>

#include "engine/reading_order.h"

namespace pdfhost::engine {
namespace {

// Gaps between glyphs below this share of the font size are no word gap.
constexpr float kStoredSpaceGap = 0.1F;

bool IsHyphen(char32_t code) {
    return code == U'-' || code == 0x2010 || code == 0xAD;
}

// The extent of a box along a direction: the least and greatest projection of its corners.
std::pair<float, float> Extent(const Rect& box, const PdfPoint& direction) {
    const std::array<float, 4> along{
        box.left * direction.x + box.bottom * direction.y,
        box.right * direction.x + box.bottom * direction.y,
        box.left * direction.x + box.top * direction.y,
        box.right * direction.x + box.top * direction.y,
    };
    const auto [low, high] = std::minmax_element(along.begin(), along.end());
    return {*low, *high};
}

// Whether the space at `at` stands between two glyphs of its line that touch.
bool IsStoredSpace(const PageText& text, const TextLine& line, int at) {
    if (at <= line.first || at + 1 >= line.first + line.count)
        return false;
    const std::vector<TextChar>& chars = text.Chars();
    const TextChar& before = chars[static_cast<std::size_t>(at - 1)];
    const TextChar& after = chars[static_cast<std::size_t>(at + 1)];
    if (IsSpaceChar(before.code) || IsSpaceChar(after.code) || before.size <= 0)
        return false;
    // The glyphs may be drawn either way along the line (right-to-left text stored as read).
    const auto [beforeLow, beforeHigh] = Extent(before.box, line.direction);
    const auto [afterLow, afterHigh] = Extent(after.box, line.direction);
    const float gap = std::max(afterLow - beforeHigh, beforeLow - afterHigh);
    return gap < kStoredSpaceGap * before.size;
}

// Appends the units of one line in reading order; returns whether it ends in a hyphen unit
// that follows a letter (trailing spaces aside), the hyphen's unit index in `hyphen`.
bool AppendLine(const PageText& text, const TextLine& line, Folding folding,
                std::vector<ReadingUnit>& units, std::size_t& hyphen) {
    const std::vector<TextChar>& chars = text.Chars();
    const std::size_t lineBegin = units.size();
    std::u32string folded;
    const std::vector<int> order = ReadingOrderOf(text, line);
    int lastVisible = -1;
    for (auto it = order.rbegin(); it != order.rend() && lastVisible < 0; ++it) {
        if (!IsSpaceChar(chars[static_cast<std::size_t>(*it)].code))
            lastVisible = *it;
    }
    for (const int index : order) {
        const char32_t code = chars[static_cast<std::size_t>(index)].code;
        if (IsSpaceChar(code)) {
            units.push_back(
                ReadingUnit{U' ', index, true, false, IsStoredSpace(text, line, index)});
            continue;
        }
        folded.clear();
        if (code == 0xAD && index == lastVisible)
            folded += code;  // kept at a line end: it may join the line to the next
        else
            AppendFolded(code, folding, folded);
        for (const char32_t unit : folded)
            units.push_back(ReadingUnit{unit, index, false, false, false});
    }
    if (units.size() > lineBegin)
        units[lineBegin].lineStart = true;
    for (std::size_t at = units.size(); at > lineBegin + 1; --at) {
        const ReadingUnit& unit = units[at - 1];
        if (unit.space)
            continue;
        if (!IsHyphen(unit.code) || units[at - 2].space ||
            !IsLetterChar(chars[static_cast<std::size_t>(units[at - 2].source)].code)) {
            return false;
        }
        hyphen = at - 1;
        return true;
    }
    return false;
}

// A hyphen that joins a line to the next, and the first unit of the next line.
struct Join {
    std::size_t hyphen = 0;
    std::size_t next = 0;
};

bool IsWordUnit(const ReadingUnit& unit) {
    return !unit.optional && !unit.space && IsLetterChar(unit.code);
}

// The words of the text as they stand within lines, in lower case, hyphens inside them kept.
std::set<std::u32string> WordsOf(const std::vector<ReadingUnit>& units) {
    std::set<std::u32string> words;
    std::u32string word;
    auto finish = [&] {
        while (!word.empty() && word.back() == U'-')
            word.pop_back();
        if (!word.empty())
            words.insert(word);
        word.clear();
    };
    for (const ReadingUnit& unit : units) {
        if (unit.lineStart)
            finish();
        if (IsWordUnit(unit)) {
            word += FoldCase(unit.code);
        } else if (!unit.optional && !word.empty() && IsHyphen(unit.code)) {
            word += U'-';
        } else {
            finish();
        }
    }
    finish();
    return words;
}

// Shows each hard hyphen that joins two lines unless the break is plainly hyphenation: the page
// writes the joined word whole elsewhere, and nowhere with the hyphen.
void ShowHyphens(std::vector<ReadingUnit>& units, const std::vector<Join>& joins) {
    std::set<std::u32string> words;
    bool read = false;
    for (const Join& join : joins) {
        if (units[join.hyphen].code == 0xAD)
            continue;
        if (!read) {
            words = WordsOf(units);
            read = true;
        }
        std::u32string before;
        for (std::size_t at = join.hyphen; at > 0 && IsWordUnit(units[at - 1]); --at) {
            before.insert(before.begin(), FoldCase(units[at - 1].code));
            if (units[at - 1].lineStart)
                break;
        }
        std::u32string after;
        for (std::size_t at = join.next; at < units.size() && IsWordUnit(units[at]); ++at) {
            if (at > join.next && units[at].lineStart)
                break;
            after += FoldCase(units[at].code);
        }
        const bool hyphenation =
            words.contains(before + after) && !words.contains(before + U'-' + after);
        units[join.hyphen].shown = !hyphenation;
    }
}

}  // namespace

ReadingText ReadingText::Of(const PageText& text, Folding folding) {
    std::vector<ReadingUnit> units;
    units.reserve(static_cast<std::size_t>(text.CharCount()));
    bool joinable = false;
    std::size_t hyphen = 0;
    std::vector<Join> joins;
    for (const TextLine& line : text.Lines()) {
        const std::size_t begin = units.size();
        const bool wasJoinable = joinable;
        const std::size_t previousHyphen = hyphen;
        joinable = AppendLine(text, line, folding, units, hyphen);
        if (!wasJoinable || begin >= units.size() || units[begin].space ||
            !IsLetterChar(text.Chars()[static_cast<std::size_t>(units[begin].source)].code)) {
            continue;
        }
        units[begin].lineStart = false;
        for (std::size_t at = previousHyphen; at < begin; ++at)
            units[at].optional = true;
        joins.push_back(Join{previousHyphen, begin});
    }
    ShowHyphens(units, joins);
    return ReadingText(std::move(units));
}

std::vector<std::u32string> ReadingText::Lines() const {
    std::vector<std::u32string> lines;
    for (const ReadingUnit& unit : units_) {
        if (unit.lineStart || lines.empty())
            lines.emplace_back();
        if (!unit.optional || unit.shown)
            lines.back() += unit.code;
    }
    return lines;
}

}  // namespace pdfhost::engine
