#include "searched_terms.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace pdfhost {

namespace {

auto Tied(const engine::Rect& r) {
    return std::tie(r.bottom, r.left, r.right, r.top);
}

}  // namespace

void SearchedTerms::Record(int page, const std::u32string& needle,
                           const std::vector<engine::Rect>& boxes) {
    if (boxes.empty())
        return;
    Page& kept = pages_[page];
    const auto id =
        kept.needles.try_emplace(needle, static_cast<std::uint32_t>(kept.needles.size()))
            .first->second;
    for (const engine::Rect& box : boxes) {
        const engine::Rect r{std::min(box.left, box.right), std::min(box.bottom, box.top),
                             std::max(box.left, box.right), std::max(box.bottom, box.top)};
        // A box that is not a number touches no area.
        if (std::isnan(r.left) || std::isnan(r.bottom) || std::isnan(r.right) || std::isnan(r.top))
            continue;
        kept.boxes.push_back(Box{r, id});
    }
    if (kept.boxes.size() > 2 * std::max<std::size_t>(kept.ordered, 64))
        Order(kept);
}

void SearchedTerms::Order(Page& page) {
    if (page.ordered == page.boxes.size())
        return;
    const auto less = [](const Box& a, const Box& b) {
        return std::tuple_cat(Tied(a.rect), std::tie(a.needle)) <
               std::tuple_cat(Tied(b.rect), std::tie(b.needle));
    };
    std::sort(page.boxes.begin(), page.boxes.end(), less);
    const auto same = [](const Box& a, const Box& b) {
        return a.rect == b.rect && a.needle == b.needle;
    };
    page.boxes.erase(std::unique(page.boxes.begin(), page.boxes.end(), same), page.boxes.end());
    page.boxes.shrink_to_fit();
    page.tallest = 0;
    for (const Box& box : page.boxes)
        page.tallest = std::max(page.tallest, box.rect.Height());
    page.ordered = page.boxes.size();
}

std::vector<std::u32string> SearchedTerms::Under(int page,
                                                 const engine::RedactionAreas& areas) const {
    std::vector<std::u32string> needles;
    const auto it = pages_.find(page);
    if (it == pages_.end() || areas.Empty())
        return needles;
    Page& kept = it->second;
    Order(kept);
    // A box touches an area only when its bottom lies below the areas' top and above their
    // bottom less the tallest box (less a point, for the rounding of heights).
    float bottom = areas.Areas().front().rect.bottom;
    float top = areas.Areas().front().rect.top;
    for (const engine::RedactionAreas::Area& area : areas.Areas()) {
        bottom = std::min(bottom, area.rect.bottom);
        top = std::max(top, area.rect.top);
    }
    const float lowest = bottom - kept.tallest - 1;
    auto box = std::lower_bound(kept.boxes.begin(), kept.boxes.end(), lowest,
                                [](const Box& b, float y) { return b.rect.bottom < y; });
    std::vector<char> touched(kept.needles.size(), 0);
    for (; box != kept.boxes.end() && box->rect.bottom < top; ++box) {
        if (touched[box->needle] == 0 && areas.Touches(box->rect))
            touched[box->needle] = 1;
    }
    for (const auto& [needle, id] : kept.needles) {
        if (touched[id] != 0)
            needles.push_back(needle);
    }
    return needles;
}

}  // namespace pdfhost
