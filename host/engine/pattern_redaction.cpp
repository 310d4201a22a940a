#include "engine/pattern_redaction.h"

#include <cmath>
#include <vector>

#include "engine/covered_path_filter.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/redaction_filter.h"

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

fz_image* RemoveTiledImage(fz_context* ctx, void* opaque, fz_matrix ctm, const char* name,
                           fz_image* image) {
    const fz_rect placed = fz_transform_rect(fz_unit_rect, ctm);
    return AnyTileMeets(*static_cast<const TileAreas*>(opaque), placed)
               ? nullptr
               : UnchangedImage(ctx, name, image);
}

// More copies of the areas than this in one tile: every path of the tile is taken as under one.
constexpr std::size_t kMaxTileCopies = 4096;

// The copies of the areas that fall on the pattern's tile (its /BBox), in pattern space: the
// places where the tile's paths lie under an area in some copy of the tile.
RedactionAreas TileCopies(const TileAreas& tiles, const fz_rect& bbox) {
    RedactionAreas copies;
    std::size_t count = 0;
    auto range = [](float a0, float a1, float lo, float hi, float step, float& first, float& last) {
        step = std::fabs(step);
        if (step < 1e-3f) {
            first = last = 0;
            return;
        }
        first = std::ceil((lo - a1) / step);
        last = std::floor((hi - a0) / step);
    };
    for (const fz_rect& r : tiles.rects) {
        float i0 = 0, i1 = 0, j0 = 0, j1 = 0;
        range(r.x0, r.x1, bbox.x0, bbox.x1, tiles.xStep, i0, i1);
        range(r.y0, r.y1, bbox.y0, bbox.y1, tiles.yStep, j0, j1);
        if (i1 < i0 || j1 < j0)
            continue;
        count += static_cast<std::size_t>(i1 - i0 + 1) * static_cast<std::size_t>(j1 - j0 + 1);
        if (count > kMaxTileCopies) {
            RedactionAreas whole;
            whole.Add(Rect{bbox.x0 - 1, bbox.y0 - 1, bbox.x1 + 1, bbox.y1 + 1});
            return whole;
        }
        const float xs = std::fabs(tiles.xStep) < 1e-3f ? 0 : std::fabs(tiles.xStep);
        const float ys = std::fabs(tiles.yStep) < 1e-3f ? 0 : std::fabs(tiles.yStep);
        for (float i = i0; i <= i1; ++i) {
            for (float j = j0; j <= j1; ++j)
                copies.Add(Rect{r.x0 + i * xs, r.y0 + j * ys, r.x1 + i * xs, r.y1 + j * ys});
        }
    }
    return copies;
}

// The pattern's content rewritten without what lies under `tiles` (glyphs, images, and paths
// cut), as a new pattern object.
ObjPtr FilteredPattern(fz_context* ctx, pdf_document* pdf, pdf_obj* pattern, TileAreas& tiles,
                       int depth) {
    const char* what = "cannot redact a pattern";
    const fz_rect bbox =
        CallMupdf(ctx, what, [&] { return pdf_dict_get_rect(ctx, pattern, PDF_NAME(BBox)); });
    const RedactionAreas copies = TileCopies(tiles, bbox);
    pdf_filter_options filter{};
    filter.opaque = &tiles;
    filter.text_filter = RemoveTiledGlyph;
    filter.image_filter = RemoveTiledImage;
    filter.instance_forms = 1;
    filter.sanitize = 1;
    filter.ascii = 1;
    BufferPtr buffer(ctx, CallMupdf(ctx, what, [&] { return fz_new_buffer(ctx, 1024); }));
    ProcessorPtr writer(
        ctx, CallMupdf(ctx, what, [&] { return pdf_new_buffer_processor(ctx, buffer.get(), 1); }));
    CoveredPathFilter paths(ctx, writer.get(), copies);
    ObjPtr resources(ctx, CallMupdf(ctx, what, [&] { return pdf_new_dict(ctx, pdf, 1); }));
    ProcessorPtr filtering(ctx, CallMupdf(ctx, what, [&] {
                               pdf_obj* old = pdf_dict_get(ctx, pattern, PDF_NAME(Resources));
                               return pdf_new_filter_processor(ctx, pdf, paths.Processor(), old,
                                                               resources.get(), -1, fz_identity,
                                                               &filter);
                           }));
    ObjPtr result(ctx, CallMupdf(ctx, what, [&] {
                      pdf_obj* old = pdf_dict_get(ctx, pattern, PDF_NAME(Resources));
                      pdf_process_contents(ctx, filtering.get(), pdf, old, pattern, nullptr);
                      pdf_close_processor(ctx, filtering.get());
                      pdf_close_processor(ctx, paths.Processor());
                      pdf_close_processor(ctx, writer.get());
                      pdf_obj* dict = pdf_copy_dict(ctx, pattern);
                      pdf_obj* made = nullptr;
                      fz_var(made);
                      fz_try(ctx) {
                          pdf_dict_del(ctx, dict, PDF_NAME(Filter));
                          pdf_dict_del(ctx, dict, PDF_NAME(DecodeParms));
                          pdf_dict_put(ctx, dict, PDF_NAME(Resources), resources.get());
                          made = pdf_add_stream(ctx, pdf, buffer.get(), dict, 0);
                      }
                      fz_always(ctx) pdf_drop_obj(ctx, dict);
                      fz_catch(ctx) fz_rethrow(ctx);
                      return made;
                  }));
    CutPathsInForms(ctx, pdf, paths.TakeForms(), copies, depth + 1);
    return result;
}

}  // namespace

void RedactTilingPatterns(fz_context* ctx, pdf_document* pdf, pdf_obj* resources,
                          const RedactionAreas& areas, fz_matrix toAreas, int depth) {
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
            return fz_invert_matrix(
                fz_concat(pdf_dict_get_matrix(ctx, pattern, PDF_NAME(Matrix)), toAreas));
        });
        for (const RedactionAreas::Area& area : areas.Areas()) {
            const Rect& r = area.rect;
            tiles.rects.push_back(
                fz_transform_rect(fz_make_rect(r.left, r.bottom, r.right, r.top), toPattern));
        }
        const ObjPtr filtered = FilteredPattern(ctx, pdf, pattern, tiles, depth);
        CallMupdf(ctx, what, [&] {
            pdf_dict_put(ctx, patterns, pdf_dict_get_key(ctx, patterns, i), filtered.get());
        });
    }
}

}  // namespace pdfhost::engine
