#include "engine/redaction_areas.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace pdfhost::engine {
namespace {

// Paths whose bounds reach this far past an area still count as inside it (a stroke's
// half width, rounding of coordinates).
constexpr float kContainTolerance = 0.5f;
constexpr float kGlyphShrink = 0.25f;
// With fewer areas a walk of all of them is as quick as the ordered search.
constexpr std::size_t kOrderedFrom = 16;

Rect Normalised(const Rect& rect) {
    return Rect{std::min(rect.left, rect.right), std::min(rect.bottom, rect.top),
                std::max(rect.left, rect.right), std::max(rect.bottom, rect.top)};
}

}  // namespace

void RedactionAreas::Add(const Rect& rect, const FillColor& fill) {
    const Rect normalised = Normalised(rect);
    if (normalised.Width() > 0 && normalised.Height() > 0) {
        areas_.push_back(Area{normalised, fill});
        byBottom_.clear();
    }
}

namespace {

// A bound moved outwards by more than the rounding of a float sum near it.
double Widened(double value, double direction) {
    return value + direction * (1e-3 + 1e-5 * std::fabs(value));
}

}  // namespace

template <typename Test>
bool RedactionAreas::AnyReaching(float from, float to, const Test& test) const {
    if (areas_.size() < kOrderedFrom || std::isnan(from) || std::isnan(to))
        return std::any_of(areas_.begin(), areas_.end(), test);
    if (byBottom_.size() != areas_.size()) {
        byBottom_.resize(areas_.size());
        std::iota(byBottom_.begin(), byBottom_.end(), std::size_t{0});
        std::sort(byBottom_.begin(), byBottom_.end(), [&](std::size_t a, std::size_t b) {
            return areas_[a].rect.bottom < areas_[b].rect.bottom;
        });
        tallest_ = 0;
        for (const Area& area : areas_)
            tallest_ = std::max(tallest_, area.rect.Height());
    }
    const double low = Widened(static_cast<double>(from) - Widened(tallest_, 1), -1);
    const double high = Widened(to, 1);
    auto at = std::lower_bound(byBottom_.begin(), byBottom_.end(), low,
                               [&](std::size_t i, double y) { return areas_[i].rect.bottom < y; });
    for (; at != byBottom_.end() && areas_[*at].rect.bottom <= high; ++at) {
        if (test(areas_[*at]))
            return true;
    }
    return false;
}

bool RedactionAreas::CoversGlyph(const Rect& box) const {
    const Rect glyph = Normalised(box);
    const float x = (glyph.left + glyph.right) / 2;
    const float y = (glyph.bottom + glyph.top) / 2;
    const float shrink = glyph.Height() * kGlyphShrink;
    const auto covers = [&](const Area& area) {
        return x >= area.rect.left && x <= area.rect.right && y >= area.rect.bottom + shrink &&
               y <= area.rect.top - shrink;
    };
    return AnyReaching(y, y, covers);
}

bool RedactionAreas::Contains(const Rect& bounds) const {
    const Rect inner = Normalised(bounds);
    const auto contains = [&](const Area& area) {
        return inner.left >= area.rect.left - kContainTolerance &&
               inner.right <= area.rect.right + kContainTolerance &&
               inner.bottom >= area.rect.bottom - kContainTolerance &&
               inner.top <= area.rect.top + kContainTolerance;
    };
    return AnyReaching(inner.top - kContainTolerance, inner.bottom + kContainTolerance, contains);
}

bool RedactionAreas::Touches(const Rect& bounds) const {
    const Rect other = Normalised(bounds);
    const auto touches = [&](const Area& area) {
        return other.left < area.rect.right && other.right > area.rect.left &&
               other.bottom < area.rect.top && other.top > area.rect.bottom;
    };
    return AnyReaching(other.bottom, other.top, touches);
}

}  // namespace pdfhost::engine
