#include "engine/glyph_centres.h"

#include <algorithm>
#include <cmath>

namespace pdfhost::engine {

GlyphCentres::GlyphCentres(const PageText& text) {
    const std::vector<TextChar>& chars = text.Chars();
    byHeight_.reserve(chars.size());
    for (std::size_t i = 0; i < chars.size(); ++i) {
        const Rect& box = chars[i].box;
        const float x = (std::min(box.left, box.right) + std::max(box.left, box.right)) / 2;
        const float y = (std::min(box.bottom, box.top) + std::max(box.bottom, box.top)) / 2;
        // A centre that is not a number lies in no area.
        if (!std::isnan(x) && !std::isnan(y))
            byHeight_.push_back(Centre{y, x, static_cast<int>(i)});
    }
    std::sort(byHeight_.begin(), byHeight_.end(),
              [](const Centre& a, const Centre& b) { return a.y < b.y; });
}

std::vector<int> GlyphCentres::Within(const Rect& bounds) const {
    const auto first = std::lower_bound(byHeight_.begin(), byHeight_.end(), bounds.bottom,
                                        [](const Centre& centre, float y) { return centre.y < y; });
    std::vector<int> found;
    for (auto it = first; it != byHeight_.end() && it->y <= bounds.top; ++it) {
        if (it->x >= bounds.left && it->x <= bounds.right)
            found.push_back(it->index);
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace pdfhost::engine
