#include "engine/redaction_filter.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "engine/covered_path_filter.h"
#include "engine/forwarding_processor.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/pattern_redaction.h"

namespace pdfhost::engine {
namespace {

Rect RectOf(fz_rect rect) {
    return Rect{rect.x0, rect.y0, rect.x1, rect.y1};
}

// ---- Content filter callbacks. They run inside MuPDF: no C++ exception may leave them.

int RemoveGlyph(fz_context*, void* opaque, int*, int, fz_matrix trm, fz_matrix ctm, fz_rect bbox) {
    const auto* areas = static_cast<const RedactionAreas*>(opaque);
    return areas->CoversGlyph(RectOf(fz_transform_rect(bbox, fz_concat(trm, ctm)))) ? 1 : 0;
}

bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.bottom < b.top && b.bottom < a.top;
}

// Paints the pixels of `pixmap` that lie under `area` (page space) white.
void BlankPixels(fz_context* ctx, fz_pixmap* pixmap, fz_matrix ctm, const Rect& area) {
    const int w = fz_pixmap_width(ctx, pixmap);
    const int h = fz_pixmap_height(ctx, pixmap);
    const fz_matrix to_pixels =
        fz_post_scale(fz_invert_matrix(ctm), static_cast<float>(w), static_cast<float>(h));
    const fz_rect r =
        fz_transform_rect(fz_make_rect(area.left, area.bottom, area.right, area.top), to_pixels);
    // Image rows run from the top; partly covered pixels are blanked too.
    const int x0 = std::clamp(static_cast<int>(std::floor(r.x0)), 0, w);
    const int x1 = std::clamp(static_cast<int>(std::ceil(r.x1)), 0, w);
    const int y0 = std::clamp(static_cast<int>(std::floor(static_cast<float>(h) - r.y1)), 0, h);
    const int y1 = std::clamp(static_cast<int>(std::ceil(static_cast<float>(h) - r.y0)), 0, h);
    const int n = fz_pixmap_components(ctx, pixmap);
    const int alpha = fz_pixmap_alpha(ctx, pixmap);
    const unsigned char white =
        fz_colorspace_is_subtractive(ctx, fz_pixmap_colorspace(ctx, pixmap)) ? 0 : 255;
    unsigned char* samples = fz_pixmap_samples(ctx, pixmap);
    const std::ptrdiff_t stride = fz_pixmap_stride(ctx, pixmap);
    for (int y = y0; y < y1; ++y) {
        unsigned char* row = samples + y * stride;
        for (int x = x0; x < x1; ++x) {
            unsigned char* pixel = row + static_cast<std::ptrdiff_t>(x) * n;
            std::fill(pixel, pixel + n - alpha, white);
            if (alpha)
                pixel[n - 1] = 255;
        }
    }
}

// Keeps an image untouched (same pointer), replaces it (a new image) or removes it (null).
fz_image* FilterImage(fz_context* ctx, void* opaque, fz_matrix ctm, const char* name,
                      fz_image* image) {
    const auto* areas = static_cast<const RedactionAreas*>(opaque);
    const Rect placed = RectOf(fz_transform_rect(fz_unit_rect, ctm));
    if (!areas->Touches(placed))
        return UnchangedImage(ctx, name, image);
    if (areas->Contains(placed) || image->imagemask || image->mask != nullptr)
        return nullptr;
    const char* what = "cannot blank an image";
    try {
        PixmapPtr decoded(ctx, CallMupdf(ctx, what, [&] {
                              return fz_get_pixmap_from_image(ctx, image, nullptr, nullptr, nullptr,
                                                              nullptr);
                          }));
        PixmapPtr pixmap(ctx,
                         CallMupdf(ctx, what, [&] { return fz_clone_pixmap(ctx, decoded.get()); }));
        for (const RedactionAreas::Area& area : areas->Areas()) {
            if (Overlap(area.rect, placed))
                CallMupdf(ctx, what, [&] { BlankPixels(ctx, pixmap.get(), ctm, area.rect); });
        }
        return CallMupdf(ctx, what,
                         [&] { return fz_new_image_from_pixmap(ctx, pixmap.get(), nullptr); });
    } catch (...) {
        // An image that cannot be decoded cannot be blanked: it goes.
        return nullptr;
    }
}

void AppendFills(fz_context* ctx, fz_buffer* buffer, const RedactionAreas& areas) {
    for (const RedactionAreas::Area& area : areas.Areas()) {
        const Rect& r = area.rect;
        fz_append_printf(ctx, buffer, "q %g %g %g rg %g %g %g %g re f Q\n", area.fill.red,
                         area.fill.green, area.fill.blue, r.left, r.bottom, r.Width(), r.Height());
    }
}

// MuPDF's content filter keeps a pending text position across a text object it emptied and
// adds it to the next object's first Td, which throws that text off the page. Every text
// object therefore starts with an explicit identity text matrix (what BT sets anyway), which
// the filter takes as the new position.
void BeginTextAtOrigin(fz_context* ctx, pdf_processor* proc) {
    pdf_processor* next = NextOf(proc);
    if (next->op_BT)
        next->op_BT(ctx, next);
    if (next->op_Tm)
        next->op_Tm(ctx, next, 1, 0, 0, 1, 0, 0);
}

pdf_processor* NewTextObjectGuard(fz_context* ctx, pdf_processor* next) {
    ForwardingProcessor* guard = NewForwardingProcessor(ctx, sizeof(ForwardingProcessor), next);
    guard->super.op_BT = BeginTextAtOrigin;
    return &guard->super;
}

}  // namespace

fz_image* UnchangedImage(fz_context* ctx, const char* name, fz_image* image) {
    return std::string_view(name != nullptr ? name : "") == "<inline>" ? fz_keep_image(ctx, image)
                                                                       : image;
}

void RewriteWithout(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj,
                    const RedactionAreas& areas, bool fill) {
    const char* what = "cannot rewrite the page content";
    BufferPtr buffer(ctx, CallMupdf(ctx, what, [&] { return fz_new_buffer(ctx, 4096); }));
    ProcessorPtr writer(
        ctx, CallMupdf(ctx, what, [&] { return pdf_new_buffer_processor(ctx, buffer.get(), 1); }));
    CoveredPathFilter paths(ctx, writer.get(), areas);
    ObjPtr resources(ctx, CallMupdf(ctx, what, [&] { return pdf_new_dict(ctx, pdf, 1); }));

    pdf_filter_options filter{};
    filter.opaque = const_cast<RedactionAreas*>(&areas);
    filter.text_filter = RemoveGlyph;
    filter.image_filter = FilterImage;
    filter.recurse = 0;
    filter.instance_forms = 1;
    filter.sanitize = 1;
    filter.ascii = 1;
    ProcessorPtr filtering(
        ctx, CallMupdf(ctx, what, [&] {
            pdf_obj* parents = pdf_dict_get(ctx, page_obj, PDF_NAME(StructParents));
            const int struct_parents = pdf_is_number(ctx, parents) ? pdf_to_int(ctx, parents) : -1;
            pdf_obj* old = pdf_dict_get_inheritable(ctx, page_obj, PDF_NAME(Resources));
            return pdf_new_filter_processor(ctx, pdf, paths.Processor(), old, resources.get(),
                                            struct_parents, fz_identity, &filter);
        }));
    ProcessorPtr guard(
        ctx, CallMupdf(ctx, what, [&] { return NewTextObjectGuard(ctx, filtering.get()); }));
    CallMupdf(ctx, what, [&] {
        pdf_obj* old = pdf_dict_get_inheritable(ctx, page_obj, PDF_NAME(Resources));
        pdf_obj* contents = pdf_dict_get(ctx, page_obj, PDF_NAME(Contents));
        pdf_process_contents(ctx, guard.get(), pdf, old, contents, nullptr);
        pdf_close_processor(ctx, guard.get());
        pdf_close_processor(ctx, filtering.get());
        pdf_close_processor(ctx, paths.Processor());
        pdf_close_processor(ctx, writer.get());
        if (fill)
            AppendFills(ctx, buffer.get(), areas);
        // A new stream: the old one may be shared with other pages.
        pdf_dict_put_drop(ctx, page_obj, PDF_NAME(Contents),
                          pdf_add_stream(ctx, pdf, buffer.get(), nullptr, 0));
        pdf_dict_put(ctx, page_obj, PDF_NAME(Resources), resources.get());
    });
    CutPathsInForms(ctx, pdf, paths.TakeForms(), areas);
    RedactTilingPatterns(ctx, pdf, resources.get(), areas);
}

}  // namespace pdfhost::engine
