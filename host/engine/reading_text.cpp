#include "engine/reading_text.h"

#include <algorithm>
#include <array>

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
    const float end = Extent(before.box, line.direction).second;
    const float start = Extent(after.box, line.direction).first;
    return start - end < kStoredSpaceGap * before.size;
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

}  // namespace

ReadingText ReadingText::Of(const PageText& text, Folding folding) {
    std::vector<ReadingUnit> units;
    units.reserve(static_cast<std::size_t>(text.CharCount()));
    bool joinable = false;
    std::size_t hyphen = 0;
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
    }
    return ReadingText(std::move(units));
}

std::vector<std::u32string> ReadingText::Lines() const {
    std::vector<std::u32string> lines;
    for (const ReadingUnit& unit : units_) {
        if (unit.lineStart || lines.empty())
            lines.emplace_back();
        if (!unit.optional)
            lines.back() += unit.code;
    }
    return lines;
}

}  // namespace pdfhost::engine
