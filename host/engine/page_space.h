#pragma once

#include "engine/document.h"
#include "engine/geometry.h"

namespace pdfhost::engine {

struct Point {
    float x = 0;
    float y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

// How a page is shown: its PDF page space (y up, the units of /Rect) against the shown page
// (y down from the top-left corner of the visible box, rotation applied), both in points.
class PageSpace {
  public:
    // Throws Error for a page out of range.
    static PageSpace Of(const Document& document, int page);

    Point ToShown(Point pdf) const;
    Point ToPdf(Point shown) const;
    // A rectangle of the shown page, as a PDF-space rectangle around it.
    Rect ToPdf(const Rect& shown) const;
    // The shown page's size.
    float Width() const { return width_; }
    float Height() const { return height_; }

  private:
    struct Matrix {
        float a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
        Point Apply(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
    };
    Matrix toShown_;
    Matrix toPdf_;
    float width_ = 0;
    float height_ = 0;
};

}  // namespace pdfhost::engine
