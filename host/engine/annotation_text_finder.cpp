#include "engine/annotation_text_finder.h"

#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot search the annotations";

bool DrawsSearchableText(enum pdf_annot_type type) {
    return type != PDF_ANNOT_WIDGET && type != PDF_ANNOT_REDACT && type != PDF_ANNOT_POPUP &&
           type != PDF_ANNOT_LINK;
}

}  // namespace

std::vector<AnnotationText> AnnotationTextsOf(Document& document, int page) {
    std::vector<AnnotationText> texts;
    if (page < 0 || page >= document.PageCount())
        return texts;
    fz_context* ctx = document.fz();
    const PagePtr loaded = document.LoadPage(page, kWhat);
    for (pdf_annot* annot =
             CallMupdf(ctx, kWhat, [&] { return pdf_first_annot(ctx, loaded.get()); });
         annot != nullptr;
         annot = CallMupdf(ctx, kWhat, [&] { return pdf_next_annot(ctx, annot); })) {
        const enum pdf_annot_type type =
            CallMupdf(ctx, kWhat, [&] { return pdf_annot_type(ctx, annot); });
        if (!DrawsSearchableText(type))
            continue;
        PageText drawn = PageText::OfAnnotation(ctx, annot);
        if (drawn.CharCount() == 0)
            continue;
        pdf_obj* dict = CallMupdf(ctx, kWhat, [&] { return pdf_annot_obj(ctx, annot); });
        texts.push_back(AnnotationText{ObjPtr(ctx, pdf_keep_obj(ctx, dict)), std::move(drawn)});
    }
    return texts;
}

std::vector<AnnotationMatch> FindInAnnotationAppearances(Document& document, int page,
                                                         const TextPattern& pattern) {
    std::vector<AnnotationMatch> found;
    for (const AnnotationText& drawn : AnnotationTextsOf(document, page)) {
        for (const TextMatch& match : pattern.FindAll(drawn.text)) {
            found.push_back(AnnotationMatch{
                ObjPtr(document.fz(), pdf_keep_obj(document.fz(), drawn.annotation.get())), match,
                drawn.text.LineBoxes(match.first, match.count)});
        }
    }
    return found;
}

}  // namespace pdfhost::engine
