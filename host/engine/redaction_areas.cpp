#include "engine/redaction_areas.h"

#include <algorithm>

namespace pdfhost::engine {
namespace {

// Paths whose bounds reach this far past an area still count as inside it (a stroke's
// half width, rounding of coordinates).
constexpr float kContainTolerance = 0.5f;
constexpr float kGlyphShrink = 0.25f;

Rect Normalised(const Rect& rect) {
    return Rect{std::min(rect.left, rect.right), std::min(rect.bottom, rect.top),
                std::max(rect.left, rect.right), std::max(rect.bottom, rect.top)};
}

}  // namespace

void RedactionAreas::Add(const Rect& rect, const FillColor& fill) {
    const Rect normalised = Normalised(rect);
    if (normalised.Width() > 0 && normalised.Height() > 0)
        areas_.push_back(Area{normalised, fill});
}

bool RedactionAreas::CoversGlyph(const Rect& box) const {
    const Rect glyph = Normalised(box);
    const float x = (glyph.left + glyph.right) / 2;
    const float y = (glyph.bottom + glyph.top) / 2;
    const float shrink = glyph.Height() * kGlyphShrink;
    return std::any_of(areas_.begin(), areas_.end(), [&](const Area& area) {
        return x >= area.rect.left && x <= area.rect.right && y >= area.rect.bottom + shrink &&
               y <= area.rect.top - shrink;
    });
}

bool RedactionAreas::Contains(const Rect& bounds) const {
    const Rect inner = Normalised(bounds);
    return std::any_of(areas_.begin(), areas_.end(), [&](const Area& area) {
        return inner.left >= area.rect.left - kContainTolerance &&
               inner.right <= area.rect.right + kContainTolerance &&
               inner.bottom >= area.rect.bottom - kContainTolerance &&
               inner.top <= area.rect.top + kContainTolerance;
    });
}

bool RedactionAreas::Touches(const Rect& bounds) const {
    const Rect other = Normalised(bounds);
    return std::any_of(areas_.begin(), areas_.end(), [&](const Area& area) {
        return other.left < area.rect.right && other.right > area.rect.left &&
               other.bottom < area.rect.top && other.top > area.rect.bottom;
    });
}

}  // namespace pdfhost::engine
