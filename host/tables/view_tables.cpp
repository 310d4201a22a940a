// Document views and page views: the current page, going to a page, scrolling, repainting,
// page-to-device conversion, the visible part of a page, and the text select tool. A hidden
// document has neither a view nor a text select tool; its page views still convert points.
#include <cstdint>

#include "engine/error.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostDocument* DocumentOfView(HostApp& app, HostDocView view) {
    for (const auto& document : app.Documents().All()) {
        if (document->View() != nullptr && document->View()->Handle() == view)
            return document->IsClosing() ? nullptr : document.get();
    }
    return nullptr;
}

HostDocument* DocumentOfTool(HostApp& app, HostTextSelectTool tool) {
    for (const auto& document : app.Documents().All()) {
        if (document->View() != nullptr && document->View()->SelectTool() == tool)
            return document->IsClosing() ? nullptr : document.get();
    }
    return nullptr;
}

HostDocView DocGetView(HostDoc doc) {
    return Guarded<HostDocView>(nullptr, [&](HostApp& app) -> HostDocView {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr && document->View() != nullptr ? document->View()->Handle()
                                                                  : nullptr;
    });
}

HostPageView DocViewGetPageView(HostDocView view, int pageIndex) {
    return Guarded<HostPageView>(nullptr, [&](HostApp& app) -> HostPageView {
        const HostDocument* document = DocumentOfView(app, view);
        if (document == nullptr || pageIndex < 0 || pageIndex >= document->Engine().PageCount())
            return nullptr;
        return app.Pages().ViewOf(document->Handle(), pageIndex);
    });
}

HostPageView DocViewGetCurrentPageView(HostDocView view) {
    return Guarded<HostPageView>(nullptr, [&](HostApp& app) -> HostPageView {
        HostDocument* document = DocumentOfView(app, view);
        if (document == nullptr)
            return nullptr;
        return app.Pages().ViewOf(document->Handle(), document->View()->CurrentPage());
    });
}

void DocViewGotoPage(HostDocView view, int pageIndex) {
    Guarded([&](HostApp& app) {
        HostDocument* document = DocumentOfView(app, view);
        if (document != nullptr && pageIndex >= 0 && pageIndex < document->Engine().PageCount())
            document->View()->GotoPage(pageIndex);
    });
}

void DocViewScrollTo(HostDocView view, int x, int y) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = DocumentOfView(app, view))
            document->View()->ScrollTo(x, y);
    });
}

void DocViewInvalidateRect(HostDocView view, int left, int top, int right, int bottom) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = DocumentOfView(app, view))
            document->View()->Invalidate(DeviceRect{left, top, right, bottom});
    });
}

void PageViewPointToDevice(HostPageView page, const NdxPoint* point, int* x, int* y) {
    Guarded([&](HostApp& app) {
        const PageViewRecord* record = app.Pages().FindView(page);
        const HostDocument* document =
            record != nullptr ? FindDocument(app, record->document) : nullptr;
        if (point == nullptr || x == nullptr || y == nullptr || document == nullptr)
            return;
        const DevicePoint device =
            DocView::DevicePointOf(document->Engine(), record->index, point->x, point->y);
        *x = device.x;
        *y = device.y;
    });
}

NdxRect PageViewGetVisibleRect(HostPageView page) {
    return Guarded(NdxRect{}, [&](HostApp& app) -> NdxRect {
        const PageViewRecord* record = app.Pages().FindView(page);
        const HostDocument* document =
            record != nullptr ? FindDocument(app, record->document) : nullptr;
        if (document == nullptr || document->View() == nullptr)
            return {};
        const engine::Rect r = document->View()->VisibleRect(record->index);
        return NdxRect{r.left, r.bottom, r.right, r.top};
    });
}

// ---- Text select tool

HostTextSelectTool DocGetTextSelectTool(HostDoc doc) {
    return Guarded<HostTextSelectTool>(nullptr, [&](HostApp& app) -> HostTextSelectTool {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr && document->View() != nullptr ? document->View()->SelectTool()
                                                                  : nullptr;
    });
}

void TextSelectToolClear(HostTextSelectTool tool) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = DocumentOfTool(app, tool))
            document->View()->ClearSelection();
    });
}

// Selects the rectangles (PDF space) on the page view's page, which must be of the tool's
// document.
void TextSelectToolSelectRects(HostTextSelectTool tool, HostPageView page, NdxRectArray rects) {
    Guarded([&](HostApp& app) {
        HostDocument* document = DocumentOfTool(app, tool);
        const PageViewRecord* record = app.Pages().FindView(page);
        const RectArrayValue* array = app.Values().rectArrays.Find(rects);
        if (document == nullptr || record == nullptr || array == nullptr ||
            record->document != document->Handle()) {
            return;
        }
        std::vector<engine::Rect> selected;
        for (const NdxRect& r : array->items)
            selected.push_back(engine::Rect{r.left, r.bottom, r.right, r.top});
        document->View()->SelectRects(record->index, std::move(selected));
    });
}

// The map's keys are page indexes; each value is a pointer array whose elements point to a
// pair of 32-bit integers: the first and the last character of a range in the page's
// character numbering. Entries that name no page of the document or no range are left out.
void TextSelectToolSelectRanges(HostTextSelectTool tool, HostMap ranges) {
    Guarded([&](HostApp& app) {
        HostDocument* document = DocumentOfTool(app, tool);
        const MapValue* map = app.Values().maps.Find(ranges);
        if (document == nullptr || map == nullptr)
            return;
        const int pages = document->Engine().PageCount();
        std::vector<TextSelection::Range> selected;
        for (const auto& [key, value] : map->entries) {
            const auto page = static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(key));
            const PtrArrayValue* array =
                app.Values().ptrArrays.Find(static_cast<HostPtrArray>(value));
            if (page < 0 || page >= pages || array == nullptr)
                continue;
            for (const void* item : array->items) {
                if (item == nullptr)
                    continue;
                const auto* pair = static_cast<const std::int32_t*>(item);
                if (pair[0] >= 0 && pair[1] >= pair[0])
                    selected.push_back({static_cast<int>(page), pair[0], pair[1]});
            }
        }
        document->View()->SelectRanges(std::move(selected));
    });
}

}  // namespace

void RegisterViewTables(TableManager& tables) {
    tables.Register<Op::HostDocGetView>(&DocGetView);
    tables.Register<Op::HostDocViewGetPageView>(&DocViewGetPageView);
    tables.Register<Op::HostDocViewGetCurrentPageView>(&DocViewGetCurrentPageView);
    tables.Register<Op::HostDocViewGotoPage>(&DocViewGotoPage);
    tables.Register<Op::HostDocViewScrollTo>(&DocViewScrollTo);
    tables.Register<Op::HostDocViewInvalidateRect>(&DocViewInvalidateRect);
    tables.Register<Op::HostPageViewPointToDevice>(&PageViewPointToDevice);
    tables.Register<Op::HostPageViewGetVisibleRect>(&PageViewGetVisibleRect);
    tables.Register<Op::HostDocGetTextSelectTool>(&DocGetTextSelectTool);
    tables.Register<Op::HostTextSelectToolClear>(&TextSelectToolClear);
    tables.Register<Op::HostTextSelectToolSelectRects>(&TextSelectToolSelectRects);
    tables.Register<Op::HostTextSelectToolSelectRanges>(&TextSelectToolSelectRanges);
}

}  // namespace pdfhost
