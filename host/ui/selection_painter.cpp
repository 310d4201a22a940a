#include "ui/selection_painter.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <vector>

#include "host_document.h"
#include "selection_rects.h"

namespace pdfhost::ui {

void PaintSelection(QImage& image, HostDocument& document, int page, double zoom) {
    const DocView* view = document.View();
    if (view == nullptr || view->Selection().Empty())
        return;
    std::vector<engine::Rect> rects;
    try {
        rects = SelectionRectsOn(document, page);
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
