#include "selection_rects.h"

#include <exception>
#include <set>

#include "host_document.h"

namespace pdfhost {

std::vector<engine::Rect> SelectionRectsOn(HostDocument& document, int page) {
    const DocView* view = document.View();
    if (view == nullptr)
        return {};
    const TextSelection& selection = view->Selection();
    if (!selection.Rects().empty())
        return selection.RectsPage() == page ? selection.Rects() : std::vector<engine::Rect>{};
    std::vector<engine::Rect> rects;
    for (const TextSelection::Range& range : selection.Ranges()) {
        if (range.page != page || range.end < range.start)
            continue;
        const auto text = document.TextCache().Get(document.Engine(), page);
        const auto boxes = text->LineBoxes(range.start, range.end - range.start + 1);
        rects.insert(rects.end(), boxes.begin(), boxes.end());
    }
    return rects;
}

std::vector<std::pair<int, std::vector<engine::Rect>>> SelectionRectsByPage(
    HostDocument& document) {
    const DocView* view = document.View();
    if (view == nullptr)
        return {};
    std::set<int> pages;
    if (!view->Selection().Rects().empty())
        pages.insert(view->Selection().RectsPage());
    for (const TextSelection::Range& range : view->Selection().Ranges())
        pages.insert(range.page);
    std::vector<std::pair<int, std::vector<engine::Rect>>> byPage;
    for (const int page : pages) {
        try {
            if (auto rects = SelectionRectsOn(document, page); !rects.empty())
                byPage.emplace_back(page, std::move(rects));
        } catch (const std::exception&) {
            // a page the engine cannot read has nothing to cover
        }
    }
    return byPage;
}

}  // namespace pdfhost
