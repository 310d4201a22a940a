#include "searched_terms.h"

#include <algorithm>

namespace pdfhost {

void SearchedTerms::Record(int page, const std::u32string& needle,
                           const std::vector<engine::Rect>& boxes) {
    if (boxes.empty())
        return;
    std::vector<engine::Rect>& kept = pages_[page][needle];
    for (const engine::Rect& box : boxes) {
        if (std::find(kept.begin(), kept.end(), box) == kept.end())
            kept.push_back(box);
    }
}

std::vector<std::u32string> SearchedTerms::Under(int page,
                                                 const engine::RedactionAreas& areas) const {
    std::vector<std::u32string> needles;
    const auto it = pages_.find(page);
    if (it == pages_.end())
        return needles;
    for (const auto& [needle, boxes] : it->second) {
        if (std::any_of(boxes.begin(), boxes.end(),
                        [&](const engine::Rect& box) { return areas.Touches(box); }))
            needles.push_back(needle);
    }
    return needles;
}

}  // namespace pdfhost
