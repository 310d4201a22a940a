#include "ui/selection_painter.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <vector>

#include "host_document.h"

namespace pdfhost::ui {
namespace {

// The rectangles (PDF space) of the selection on `page`.
std::vector<engine::Rect> SelectedOn(HostDocument& document, int page) {
    const TextSelection& selection = document.View()->Selection();
    if (!selection.Rects().empty())
        return selection.RectsPage() == page ? selection.Rects() : std::vector<engine::Rect>{};
    std::vector<engine::Rect> rects;
    for (const TextSelection::Range& range : selection.Ranges()) {
        if (range.page != page)
            continue;
        const auto text = document.TextCache().Get(document.Engine(), page);
        const auto boxes = text->LineBoxes(range.start, range.end - range.start + 1);
        rects.insert(rects.end(), boxes.begin(), boxes.end());
    }
    return rects;
}

}  // namespace

void PaintSelection(QImage& image, HostDocument& document, int page, double zoom) {
    const DocView* view = document.View();
    if (view == nullptr || view->Selection().Empty())
        return;
    std::vector<engine::Rect> rects;
    try {
        rects = SelectedOn(document, page);
    } catch (const std::exception&) {
        return;  // a page the engine cannot read shows no selection
    }
    if (rects.empty())
        return;
    QPainter painter(&image);
    painter.scale(zoom, zoom);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (const engine::Rect& r : rects) {
        const DevicePoint a = view->PageToDevice(page, r.left, r.bottom);
        const DevicePoint b = view->PageToDevice(page, r.right, r.top);
        painter.fillRect(QRect(QPoint(std::min(a.x, b.x), std::min(a.y, b.y)),
                               QPoint(std::max(a.x, b.x), std::max(a.y, b.y))),
                         QColor(120, 170, 255));
    }
}

}  // namespace pdfhost::ui
