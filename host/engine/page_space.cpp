#include "engine/page_space.h"

#include <algorithm>

#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

PageSpace PageSpace::Of(const Document& document, int page) {
    const int count = document.PageCount();
    if (page < 0 || page >= count)
        throw Error("page " + std::to_string(page) + " is out of range");
    fz_context* ctx = document.fz();
    struct Geometry {
        fz_matrix ctm;
        fz_rect bounds;
    };
    const char* what = "cannot read the page geometry";
    const ObjPtr page_obj = document.PageObject(page, what);
    const Geometry geometry = CallMupdf(ctx, what, [&] {
        fz_rect box;
        fz_matrix ctm;
        pdf_page_obj_transform(ctx, page_obj.get(), &box, &ctm);
        return Geometry{ctm, fz_transform_rect(box, ctm)};
    });
    const fz_matrix inverse = fz_invert_matrix(geometry.ctm);
    PageSpace space;
    space.toShown_ = Matrix{geometry.ctm.a, geometry.ctm.b, geometry.ctm.c,
                            geometry.ctm.d, geometry.ctm.e, geometry.ctm.f};
    space.toPdf_ = Matrix{inverse.a, inverse.b, inverse.c, inverse.d, inverse.e, inverse.f};
    space.width_ = geometry.bounds.x1 - geometry.bounds.x0;
    space.height_ = geometry.bounds.y1 - geometry.bounds.y0;
    return space;
}

Point PageSpace::ToShown(Point pdf) const {
    return toShown_.Apply(pdf);
}

Point PageSpace::ToPdf(Point shown) const {
    return toPdf_.Apply(shown);
}

Rect PageSpace::ToPdf(const Rect& shown) const {
    const Point corners[] = {
        ToPdf(Point{shown.left, shown.bottom}), ToPdf(Point{shown.right, shown.bottom}),
        ToPdf(Point{shown.left, shown.top}), ToPdf(Point{shown.right, shown.top})};
    Rect r{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Point& p : corners) {
        r.left = std::min(r.left, p.x);
        r.right = std::max(r.right, p.x);
        r.bottom = std::min(r.bottom, p.y);
        r.top = std::max(r.top, p.y);
    }
    return r;
}

}  // namespace pdfhost::engine
