#include "engine/redaction_text.h"

#include <algorithm>
#include <utility>

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

namespace {

// One text per run of consecutive covered characters among `candidates` (ascending numbers).
template <typename Candidates>
std::vector<std::u32string> CoveredRuns(const PageText& text, const RedactionAreas& areas,
                                        const Candidates& candidates) {
    std::vector<std::u32string> texts;
    std::u32string run;
    int last = -2;
    const std::vector<TextChar>& chars = text.Chars();
    for (const int i : candidates) {
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

// Every character number of a page text, in order.
struct AllChars {
    int count;
    struct Iterator {
        int at;
        int operator*() const { return at; }
        Iterator& operator++() {
            ++at;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at != other.at; }
    };
    Iterator begin() const { return {0}; }
    Iterator end() const { return {count}; }
};

}  // namespace

std::vector<std::u32string> TextsUnder(const PageText& text, const RedactionAreas& areas) {
    return CoveredRuns(text, areas, AllChars{text.CharCount()});
}

std::vector<std::u32string> TextsUnder(const PageText& text, const RedactionAreas& areas,
                                       const GlyphCentres& centres) {
    if (areas.Empty())
        return {};
    Rect bounds = areas.Areas().front().rect;
    for (const RedactionAreas::Area& area : areas.Areas()) {
        bounds.left = std::min(bounds.left, area.rect.left);
        bounds.bottom = std::min(bounds.bottom, area.rect.bottom);
        bounds.right = std::max(bounds.right, area.rect.right);
        bounds.top = std::max(bounds.top, area.rect.top);
    }
    return CoveredRuns(text, areas, centres.Within(bounds));
}

}  // namespace pdfhost::engine
