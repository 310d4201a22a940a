#include "engine/pattern_redaction.h"

#include <cmath>
#include <vector>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

// The areas in the space of one pattern (bounding boxes of their preimages) and its steps.
struct TileAreas {
    std::vector<fz_rect> rects;
    float xStep = 0;
    float yStep = 0;
};

// Whether some copy [a0 + i*step, a1 + i*step] of a span meets [lo, hi].
bool AnyCopyMeets(float a0, float a1, float lo, float hi, float step) {
    step = std::fabs(step);
    if (step < 1e-3f)
        return a0 <= hi && a1 >= lo;
    return std::ceil((lo - a1) / step) <= std::floor((hi - a0) / step);
}

bool AnyTileMeets(const TileAreas& tiles, const fz_rect& r) {
    for (const fz_rect& area : tiles.rects) {
        if (AnyCopyMeets(r.x0, r.x1, area.x0, area.x1, tiles.xStep) &&
            AnyCopyMeets(r.y0, r.y1, area.y0, area.y1, tiles.yStep)) {
            return true;
        }
    }
    return false;
}

// ---- Filter callbacks. They run inside MuPDF: no C++ exception may leave them.

int RemoveTiledGlyph(fz_context*, void* opaque, int*, int, fz_matrix trm, fz_matrix ctm,
                     fz_rect bbox) {
    const fz_rect glyph = fz_transform_rect(bbox, fz_concat(trm, ctm));
    const float x = (glyph.x0 + glyph.x1) / 2;
    const float y = (glyph.y0 + glyph.y1) / 2;
    return AnyTileMeets(*static_cast<const TileAreas*>(opaque), fz_make_rect(x, y, x, y)) ? 1 : 0;
}

fz_image* RemoveTiledImage(fz_context*, void* opaque, fz_matrix ctm, const char*, fz_image* image) {
    const fz_rect placed = fz_transform_rect(fz_unit_rect, ctm);
    return AnyTileMeets(*static_cast<const TileAreas*>(opaque), placed) ? nullptr : image;
}

// The pattern's content rewritten without what lies under `tiles`, as a new pattern object.
pdf_obj* FilteredPattern(fz_context* ctx, pdf_document* pdf, pdf_obj* pattern, TileAreas& tiles) {
    pdf_filter_options filter{};
    filter.opaque = &tiles;
    filter.text_filter = RemoveTiledGlyph;
    filter.image_filter = RemoveTiledImage;
    filter.instance_forms = 1;
    filter.sanitize = 1;
    filter.ascii = 1;
    fz_buffer* buffer = fz_new_buffer(ctx, 1024);
    pdf_processor* writer = nullptr;
    pdf_processor* filtering = nullptr;
    pdf_obj* resources = nullptr;
    pdf_obj* dict = nullptr;
    pdf_obj* result = nullptr;
    fz_var(writer);
    fz_var(filtering);
    fz_var(resources);
    fz_var(dict);
    fz_try(ctx) {
        writer = pdf_new_buffer_processor(ctx, buffer, 1);
        resources = pdf_new_dict(ctx, pdf, 1);
        pdf_obj* old = pdf_dict_get(ctx, pattern, PDF_NAME(Resources));
        filtering =
            pdf_new_filter_processor(ctx, pdf, writer, old, resources, -1, fz_identity, &filter);
        pdf_process_contents(ctx, filtering, pdf, old, pattern, nullptr);
        pdf_close_processor(ctx, filtering);
        pdf_close_processor(ctx, writer);
        dict = pdf_copy_dict(ctx, pattern);
        pdf_dict_del(ctx, dict, PDF_NAME(Filter));
        pdf_dict_del(ctx, dict, PDF_NAME(DecodeParms));
        pdf_dict_put(ctx, dict, PDF_NAME(Resources), resources);
        result = pdf_add_stream(ctx, pdf, buffer, dict, 0);
    }
    fz_always(ctx) {
        pdf_drop_obj(ctx, dict);
        pdf_drop_obj(ctx, resources);
        pdf_drop_processor(ctx, filtering);
        pdf_drop_processor(ctx, writer);
        fz_drop_buffer(ctx, buffer);
    }
    fz_catch(ctx) fz_rethrow(ctx);
    return result;
}

}  // namespace

void RedactTilingPatterns(fz_context* ctx, pdf_document* pdf, pdf_obj* resources,
                          const RedactionAreas& areas) {
    const char* what = "cannot redact the page's patterns";
    pdf_obj* patterns =
        CallMupdf(ctx, what, [&] { return pdf_dict_get(ctx, resources, PDF_NAME(Pattern)); });
    const int count = CallMupdf(ctx, what, [&] { return pdf_dict_len(ctx, patterns); });
    for (int i = 0; i < count; ++i) {
        pdf_obj* pattern = CallMupdf(ctx, what, [&] { return pdf_dict_get_val(ctx, patterns, i); });
        const bool tiling = CallMupdf(ctx, what, [&] {
            return pdf_is_stream(ctx, pattern) &&
                   pdf_dict_get_int(ctx, pattern, PDF_NAME(PatternType)) == 1;
        });
        if (!tiling)
            continue;
        TileAreas tiles;
        const fz_matrix toPattern = CallMupdf(ctx, what, [&] {
            tiles.xStep = pdf_dict_get_real(ctx, pattern, PDF_NAME(XStep));
            tiles.yStep = pdf_dict_get_real(ctx, pattern, PDF_NAME(YStep));
            return fz_invert_matrix(pdf_dict_get_matrix(ctx, pattern, PDF_NAME(Matrix)));
        });
        for (const RedactionAreas::Area& area : areas.Areas()) {
            const Rect& r = area.rect;
            tiles.rects.push_back(
                fz_transform_rect(fz_make_rect(r.left, r.bottom, r.right, r.top), toPattern));
        }
        ObjPtr filtered(
            ctx, CallMupdf(ctx, what, [&] { return FilteredPattern(ctx, pdf, pattern, tiles); }));
        CallMupdf(ctx, what, [&] {
            pdf_dict_put(ctx, patterns, pdf_dict_get_key(ctx, patterns, i), filtered.get());
        });
    }
}

}  // namespace pdfhost::engine
