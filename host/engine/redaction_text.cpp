#include "engine/redaction_text.h"

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

RedactionAreas AreasOfRedaction(const Document& document, int object) {
    fz_context* ctx = document.fz();
    pdf_document* pdf = document.pdf();
    const char* what = "cannot read a Redact annotation";
    ObjPtr dict(ctx, CallMupdf(ctx, what, [&] { return pdf_load_object(ctx, pdf, object); }));
    const int quads = CallMupdf(ctx, what, [&] {
        return pdf_array_len(ctx, pdf_dict_get(ctx, dict.get(), PDF_NAME(QuadPoints))) / 8;
    });
    RedactionAreas areas;
    for (int q = 0; q < quads; ++q) {
        const fz_rect r = CallMupdf(ctx, what, [&] {
            pdf_obj* points = pdf_dict_get(ctx, dict.get(), PDF_NAME(QuadPoints));
            return fz_rect_from_quad(pdf_to_quad(ctx, points, q * 8));
        });
        areas.Add(Rect{r.x0, r.y0, r.x1, r.y1});
    }
    if (quads > 0)
        return areas;
    const fz_rect r = CallMupdf(ctx, what, [&] {
        if (pdf_array_len(ctx, pdf_dict_get(ctx, dict.get(), PDF_NAME(Rect))) < 4)
            return fz_empty_rect;
        return pdf_dict_get_rect(ctx, dict.get(), PDF_NAME(Rect));
    });
    if (!fz_is_empty_rect(r))
        areas.Add(Rect{r.x0, r.y0, r.x1, r.y1});
    return areas;
}

std::vector<std::u32string> TextsUnder(const PageText& text, const RedactionAreas& areas) {
    std::vector<std::u32string> texts;
    std::u32string run;
    int last = -2;
    const std::vector<TextChar>& chars = text.Chars();
    for (int i = 0; i < static_cast<int>(chars.size()); ++i) {
        if (!areas.CoversGlyph(chars[static_cast<std::size_t>(i)].box))
            continue;
        if (i != last + 1 && !run.empty())
            texts.push_back(std::exchange(run, {}));
        if (i == last + 1 &&
            chars[static_cast<std::size_t>(i)].line != chars[static_cast<std::size_t>(last)].line)
            run.push_back(U' ');
        run.push_back(chars[static_cast<std::size_t>(i)].code);
        last = i;
    }
    if (!run.empty())
        texts.push_back(std::move(run));
    return texts;
}

}  // namespace pdfhost::engine
