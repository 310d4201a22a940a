// Draws a document view's text selection over a rendered page.
#pragma once

class QImage;

namespace pdfhost {
class HostDocument;
}

namespace pdfhost::ui {

// Paints the part of the document's selection that lies on `page` over `image`, the page as
// rendered at the view's device resolution times `zoom`: a translucent highlight per rectangle,
// or per line of a character range.
void PaintSelection(QImage& image, HostDocument& document, int page, double zoom = 1.0);

}  // namespace pdfhost::ui
