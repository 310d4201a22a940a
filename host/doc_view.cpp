#include "doc_view.h"

#include <algorithm>
#include <cmath>

#include "engine/error.h"
#include "engine/page_space.h"
#include "handle_pool.h"

namespace pdfhost {

DocView::DocView(const engine::Document& document)
    : document_(document),
      handle_(reinterpret_cast<HostDocView>(NextHandleValue())),
      selectTool_(reinterpret_cast<HostTextSelectTool>(NextHandleValue())) {}

void DocView::GotoPage(int page) {
    page_ = std::clamp(page, 0, std::max(0, document_.PageCount() - 1));
    scroll_ = {};
    Changed();
}

DevicePoint DocView::PageSize() const {
    try {
        const engine::PageSpace space = engine::PageSpace::Of(document_, page_);
        return {static_cast<int>(std::lround(space.Width() * kPixelsPerPoint)),
                static_cast<int>(std::lround(space.Height() * kPixelsPerPoint))};
    } catch (const engine::Error&) {
        return {};  // a page MuPDF cannot read has no size to scroll over
    }
}

void DocView::ScrollTo(int x, int y) {
    const DevicePoint size = PageSize();
    scroll_ = {std::clamp(x, 0, std::max(0, size.x - viewport_.x)),
               std::clamp(y, 0, std::max(0, size.y - viewport_.y))};
    Changed();
}

void DocView::SetViewportSize(int width, int height) {
    viewport_ = {std::max(1, width), std::max(1, height)};
}

DevicePoint DocView::DevicePointOf(const engine::Document& document, int page, float x, float y) {
    const engine::Point shown = engine::PageSpace::Of(document, page).ToShown({x, y});
    return {static_cast<int>(std::lround(shown.x * kPixelsPerPoint)),
            static_cast<int>(std::lround(shown.y * kPixelsPerPoint))};
}

engine::Rect DocView::VisibleRect(int page) const {
    if (page != page_)
        return {};
    const engine::PageSpace space = engine::PageSpace::Of(document_, page);
    const float left = static_cast<float>(scroll_.x) / kPixelsPerPoint;
    const float top = static_cast<float>(scroll_.y) / kPixelsPerPoint;
    const engine::Rect shown{left, top,
                             std::min(space.Width(), left + viewport_.x / kPixelsPerPoint),
                             std::min(space.Height(), top + viewport_.y / kPixelsPerPoint)};
    return space.ToPdf(shown);
}

void DocView::Invalidate(const DeviceRect& rect) {
    // Nobody takes them when headless: many pending parts become the whole page.
    constexpr std::size_t kMaxPending = 64;
    if (invalidated_.size() >= kMaxPending) {
        const DevicePoint size = PageSize();
        invalidated_.assign(1, DeviceRect{0, 0, size.x, size.y});
    } else {
        invalidated_.push_back(rect);
    }
    Changed();
}

void DocView::InvalidatePage(int page) {
    if (page != page_)
        return;
    const DevicePoint size = PageSize();
    Invalidate(DeviceRect{0, 0, size.x, size.y});
}

std::vector<DeviceRect> DocView::TakeInvalidated() {
    return std::exchange(invalidated_, {});
}

void DocView::SelectRects(int page, std::vector<engine::Rect> rects) {
    selection_.SelectRects(page, std::move(rects));
    Changed();
}

void DocView::SelectRanges(std::vector<TextSelection::Range> ranges) {
    selection_.SelectRanges(std::move(ranges));
    Changed();
}

void DocView::ClearSelection() {
    selection_.Clear();
    Changed();
}

void DocView::Changed() {
    if (listener_)
        listener_();
}

}  // namespace pdfhost
