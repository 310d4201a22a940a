// The view that shows a document in its tab, kept apart from any widget so that it works
// headless too: the current page, the scroll position, the parts waiting to be repainted and
// the text selection. The desktop widget draws from it and feeds it the user's scrolling.
//
// Device space is the current page drawn at kPixelsPerPoint pixels per point, origin at the
// page's top-left corner, y down; a view shows one page at a time. Hidden documents have no
// view.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "host_abi.h"
#include "text_selection.h"

namespace pdfhost {

struct DevicePoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const DevicePoint&, const DevicePoint&) = default;
};

struct DeviceRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend bool operator==(const DeviceRect&, const DeviceRect&) = default;
};

class DocView {
  public:
    static constexpr float kPixelsPerPoint = 96.0f / 72.0f;
    // The viewport until a widget tells its own: a page's width at US-Letter size and a bit
    // more than half its height.
    static constexpr int kDefaultViewportWidth = 816;
    static constexpr int kDefaultViewportHeight = 600;

    explicit DocView(const engine::Document& document);
    DocView(const DocView&) = delete;
    DocView& operator=(const DocView&) = delete;

    HostDocView Handle() const { return handle_; }
    HostTextSelectTool SelectTool() const { return selectTool_; }

    int CurrentPage() const { return page_; }
    // Makes `page` (clamped to the document) current, scrolled to its top-left corner.
    void GotoPage(int page);
    // Scrolls the current page so that device point (x, y) is the viewport's top-left corner,
    // as far as the page allows.
    void ScrollTo(int x, int y);
    DevicePoint Scroll() const { return scroll_; }
    void SetViewportSize(int width, int height);

    // A PDF-space point of `page` in device space (any page maps as if it were current).
    // Throws engine::Error for a page out of range or one MuPDF cannot read, as VisibleRect
    // does; the other members do not throw.
    DevicePoint PageToDevice(int page, float x, float y) const {
        return DevicePointOf(document_, page, x, y);
    }
    // The same for a document without a view.
    static DevicePoint DevicePointOf(const engine::Document& document, int page, float x, float y);
    // The part of `page` in the viewport, in PDF space; empty unless the page is current.
    engine::Rect VisibleRect(int page) const;

    // Parts of the current page to repaint, in device space.
    void Invalidate(const DeviceRect& rect);
    void InvalidatePage(int page);
    // The parts waiting since the last call, oldest first.
    std::vector<DeviceRect> TakeInvalidated();

    const TextSelection& Selection() const { return selection_; }
    void SelectRects(int page, std::vector<engine::Rect> rects);
    void SelectRanges(std::vector<TextSelection::Range> ranges);
    void ClearSelection();

    // Called after every change of page, scroll, selection or repaint request.
    void SetListener(std::function<void()> listener) { listener_ = std::move(listener); }

  private:
    void Changed();
    // The current page's size in device pixels.
    DevicePoint PageSize() const;

    const engine::Document& document_;
    HostDocView handle_;
    HostTextSelectTool selectTool_;
    int page_ = 0;
    DevicePoint scroll_;
    DevicePoint viewport_{kDefaultViewportWidth, kDefaultViewportHeight};
    std::vector<DeviceRect> invalidated_;
    TextSelection selection_;
    std::function<void()> listener_;
};

}  // namespace pdfhost
