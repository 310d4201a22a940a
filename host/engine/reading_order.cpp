#include "engine/reading_order.h"

#include <unicode/ubidi.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>

#include "engine/text_folding.h"

namespace pdfhost::engine {
namespace {

using BidiPtr = std::unique_ptr<UBiDi, decltype(&ubidi_close)>;

float Along(const PdfPoint& point, const PdfPoint& direction) {
    return point.x * direction.x + point.y * direction.y;
}

// Whether the right-to-left letters of the line mostly advance along the line's direction from
// one stored character to the next (drawn in visual order), and whether they outnumber the
// left-to-right ones (the line's base direction then being right to left).
struct LineDirections {
    bool visual = false;
    bool mostlyRightToLeft = false;
};

LineDirections DirectionsOf(const std::vector<TextChar>& chars, const TextLine& line) {
    int forward = 0;
    int backward = 0;
    int rightToLeft = 0;
    int leftToRight = 0;
    const TextChar* previous = nullptr;
    for (int i = line.first; i < line.first + line.count; ++i) {
        const TextChar& ch = chars[static_cast<std::size_t>(i)];
        if (!IsRightToLeftChar(ch.code)) {
            leftToRight += IsLetterChar(ch.code) ? 1 : 0;
            previous = nullptr;
            continue;
        }
        ++rightToLeft;
        if (previous != nullptr) {
            const float step =
                Along(ch.origin, line.direction) - Along(previous->origin, line.direction);
            forward += step > 0 ? 1 : 0;
            backward += step < 0 ? 1 : 0;
        }
        previous = &ch;
    }
    return {forward > backward, rightToLeft > leftToRight};
}

// The characters of a line drawn left to right in the order they stand on it. A writer may store
// such a line as runs that each go left to right but follow each other in logical order (a
// number or a bracket within right-to-left text, for one); a run starts where the next character
// stands before the previous glyph. Runs are put in the order of their first character's place;
// within a run the stored order stays, so a mark drawn back over its letter keeps its place.
std::vector<int> PlacedOrder(const std::vector<TextChar>& chars, const TextLine& line) {
    struct Run {
        float at = 0;
        int first = 0;
        int count = 0;
    };
    std::vector<Run> runs;
    for (int i = line.first; i < line.first + line.count; ++i) {
        const TextChar& ch = chars[static_cast<std::size_t>(i)];
        const float at = Along(ch.origin, line.direction);
        if (!runs.empty()) {
            const TextChar& previous = chars[static_cast<std::size_t>(i - 1)];
            const float previousStart =
                std::min(Along(PdfPoint{previous.box.left, previous.box.bottom}, line.direction),
                         Along(PdfPoint{previous.box.right, previous.box.top}, line.direction));
            if (at >= previousStart - 0.1F * std::max(previous.size, 0.0F)) {
                ++runs.back().count;
                continue;
            }
        }
        runs.push_back(Run{at, i, 1});
    }
    std::stable_sort(runs.begin(), runs.end(),
                     [](const Run& a, const Run& b) { return a.at < b.at; });
    std::vector<int> order;
    order.reserve(static_cast<std::size_t>(std::max(line.count, 0)));
    for (const Run& run : runs) {
        for (int i = run.first; i < run.first + run.count; ++i)
            order.push_back(i);
    }
    return order;
}

}  // namespace

std::vector<int> ReadingOrderOf(const PageText& text, const TextLine& line) {
    std::vector<int> order(static_cast<std::size_t>(std::max(line.count, 0)));
    std::iota(order.begin(), order.end(), line.first);
    const LineDirections directions = DirectionsOf(text.Chars(), line);
    if (!directions.visual)
        return order;
    order = PlacedOrder(text.Chars(), line);

    // The line as UTF-16 with the character each unit comes from; values that are no scalar
    // value stand as U+FFFD, which is neutral like them.
    std::u16string units;
    std::vector<int> unitChar;
    for (const int index : order) {
        char32_t code = text.Chars()[static_cast<std::size_t>(index)].code;
        if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            code = 0xFFFD;
        if (code > 0xFFFF) {
            units += static_cast<char16_t>(U16_LEAD(code));
            units += static_cast<char16_t>(U16_TRAIL(code));
            unitChar.insert(unitChar.end(), 2, index);
        } else {
            units += static_cast<char16_t>(code);
            unitChar.push_back(index);
        }
    }
    UErrorCode status = U_ZERO_ERROR;
    BidiPtr bidi(ubidi_openSized(static_cast<int32_t>(units.size()), 0, &status), &ubidi_close);
    if (U_FAILURE(status) || !bidi)
        return order;
    ubidi_setInverse(bidi.get(), true);
    ubidi_setPara(bidi.get(), reinterpret_cast<const UChar*>(units.data()),
                  static_cast<int32_t>(units.size()),
                  directions.mostlyRightToLeft ? UBIDI_RTL : UBIDI_LTR, nullptr, &status);
    std::vector<int32_t> map(units.size());
    if (U_SUCCESS(status))
        ubidi_getVisualMap(bidi.get(), map.data(), &status);
    if (U_FAILURE(status))
        return order;
    // The reordered text reads the stored units in the order of the map; a surrogate pair
    // stays one character.
    std::vector<int> reading;
    reading.reserve(order.size());
    for (const int32_t unit : map) {
        if (unit < 0 || static_cast<std::size_t>(unit) >= unitChar.size())
            continue;
        const int index = unitChar[static_cast<std::size_t>(unit)];
        if (reading.empty() || reading.back() != index)
            reading.push_back(index);
    }
    return reading.size() == order.size() ? reading : order;
}

}  // namespace pdfhost::engine
