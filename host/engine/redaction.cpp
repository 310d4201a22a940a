#include "engine/redaction.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "engine/covered_annotations.h"
#include "engine/document_transaction.h"
#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/private_page_data.h"
#include "engine/redaction_areas.h"
#include "engine/redaction_filter.h"
#include "engine/unreadable_inline_images.h"

namespace pdfhost::engine {
namespace {

Rect RectOf(fz_rect rect) {
    return Rect{rect.x0, rect.y0, rect.x1, rect.y1};
}

// The interior colour of a Redact annotation as RGB; black without a usable /IC.
FillColor FillOf(fz_context* ctx, pdf_obj* annot) {
    pdf_obj* ic = pdf_dict_get(ctx, annot, PDF_NAME(IC));
    auto c = [&](int i) { return std::clamp(pdf_array_get_real(ctx, ic, i), 0.0f, 1.0f); };
    switch (pdf_array_len(ctx, ic)) {
        case 1:
            return FillColor{c(0), c(0), c(0)};
        case 3:
            return FillColor{c(0), c(1), c(2)};
        case 4:
            return FillColor{(1 - c(0)) * (1 - c(3)), (1 - c(1)) * (1 - c(3)),
                             (1 - c(2)) * (1 - c(3))};
        default:
            return FillColor{};
    }
}

// The areas of the annotations: each quadrilateral of /QuadPoints, else /Rect.
RedactionAreas AreasOf(fz_context* ctx, pdf_document* pdf, const std::vector<int>& objects) {
    const char* what = "cannot read a Redact annotation";
    RedactionAreas areas;
    for (const int object : objects) {
        ObjPtr dict(ctx, CallMupdf(ctx, what, [&] { return pdf_load_object(ctx, pdf, object); }));
        const FillColor fill = CallMupdf(ctx, what, [&] { return FillOf(ctx, dict.get()); });
        const int quads = CallMupdf(ctx, what, [&] {
            return pdf_array_len(ctx, pdf_dict_get(ctx, dict.get(), PDF_NAME(QuadPoints))) / 8;
        });
        for (int q = 0; q < quads; ++q) {
            const fz_rect rect = CallMupdf(ctx, what, [&] {
                pdf_obj* points = pdf_dict_get(ctx, dict.get(), PDF_NAME(QuadPoints));
                return fz_rect_from_quad(pdf_to_quad(ctx, points, q * 8));
            });
            areas.Add(RectOf(rect), fill);
        }
        if (quads > 0)
            continue;
        const fz_rect rect = CallMupdf(ctx, what, [&] {
            if (pdf_array_len(ctx, pdf_dict_get(ctx, dict.get(), PDF_NAME(Rect))) < 4)
                return fz_empty_rect;
            return pdf_dict_get_rect(ctx, dict.get(), PDF_NAME(Rect));
        });
        if (!fz_is_empty_rect(rect))
            areas.Add(RectOf(rect), fill);
    }
    return areas;
}

}  // namespace

std::vector<AnnotationId> Redactor::RedactAnnotations() const {
    Annotations annotations(document_);
    std::vector<AnnotationId> found;
    const int pages = document_.PageCount();
    for (int page = 0; page < pages; ++page) {
        for (const int object : annotations.OnPage(page)) {
            if (annotations.Subtype(object) == "Redact")
                found.push_back(AnnotationId{page, object});
        }
    }
    return found;
}

RedactionReport Redactor::Apply(const std::vector<AnnotationId>& targets,
                                const RedactionOptions& options) {
    std::map<int, std::vector<int>> byPage;
    Annotations annotations(document_);
    // Each page's annotations are read once, and each target is looked up in them.
    std::unordered_map<int, std::unordered_set<int>> onPage;
    std::unordered_map<int, std::unordered_set<int>> taken;
    const int pages = document_.PageCount();
    for (const AnnotationId& target : targets) {
        bool standing = target.object > 0 && target.page >= 0 && target.page < pages;
        if (standing) {
            auto [page, added] = onPage.try_emplace(target.page);
            if (added) {
                const std::vector<int> objects = annotations.OnPage(target.page);
                page->second.insert(objects.begin(), objects.end());
            }
            standing = page->second.contains(target.object);
        }
        if (!standing || annotations.Subtype(target.object) != "Redact") {
            throw Error("object " + std::to_string(target.object) +
                        " is no Redact annotation of page " + std::to_string(target.page));
        }
        if (taken[target.page].insert(target.object).second)
            byPage[target.page].push_back(target.object);
    }
    RedactionReport report;
    for (const auto& [page, objects] : byPage) {
        const RedactionAreas areas = AreasOf(document_.fz(), document_.pdf(), objects);
        try {
            try {
                DocumentTransaction transaction(document_, "Apply redactions");
                ApplyOnPage(page, objects, areas, options, false);
                transaction.Commit();
            } catch (const Error&) {
                // Inline images MuPDF cannot read stop the whole page: without them it may go.
                DocumentTransaction transaction(document_, "Apply redactions");
                if (!ApplyOnPage(page, objects, areas, options, true))
                    throw;
                transaction.Commit();
            }
            report.applied += static_cast<int>(objects.size());
        } catch (const Error& error) {
            RedactionProblem problem{page, {}, error.what()};
            for (const RedactionAreas::Area& area : areas.Areas())
                problem.boxes.push_back(area.rect);
            report.problems.push_back(std::move(problem));
        }
    }
    if (report.applied > 0) {
        DropPrivateDocumentData(document_.fz(), document_.pdf());
        document_.pdf()->redacted = 1;
        document_.MarkChanged();
    }
    return report;
}

bool Redactor::ApplyOnPage(int page, const std::vector<int>& objects, const RedactionAreas& areas,
                           const RedactionOptions& options, bool withoutUnreadableImages) {
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    const ObjPtr page_obj = document_.PageObject(page, "cannot find page " + std::to_string(page));
    if (withoutUnreadableImages && RemoveUnreadableInlineImages(ctx, pdf, page_obj.get()) == 0)
        return false;
    if (!areas.Empty()) {
        RewriteWithout(ctx, pdf, page_obj.get(), areas, options.fillAreas);
        DropPrivatePageData(ctx, page_obj.get());
        RebuildAppearances(document_, page,
                           RemoveCoveredAnnotations(ctx, pdf, page_obj.get(), areas));
    }
    Annotations(document_).RemoveAll(page, objects);
    return true;
}

}  // namespace pdfhost::engine
