#include "engine/flattener.h"

#include <string>
#include <vector>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_content.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot flatten the form";

// Whether the document asks readers to build the appearances of its fields.
bool NeedsAppearances(fz_context* ctx, pdf_document* doc) {
    return CallMupdf(ctx, kWhat, [&] {
        return pdf_to_bool(
            ctx, pdf_dict_getp(ctx, pdf_trailer(ctx, doc), "Root/AcroForm/NeedAppearances"));
    });
}

bool DrawsNothing(fz_context* ctx, pdf_annot* widget) {
    return CallMupdf(ctx, kWhat, [&] {
        const int flags = pdf_dict_get_int(ctx, pdf_annot_obj(ctx, widget), PDF_NAME(F));
        if ((flags & (PDF_ANNOT_IS_HIDDEN | PDF_ANNOT_IS_NO_VIEW)) != 0)
            return true;
        return pdf_widget_type(ctx, widget) == PDF_WIDGET_TYPE_SIGNATURE &&
               !pdf_widget_is_signed(ctx, widget);
    });
}

// The normal appearance stream of the widget in its current state, or null.
pdf_obj* NormalAppearance(fz_context* ctx, pdf_annot* widget, bool rebuild) {
    return CallMupdf(ctx, kWhat, [&]() -> pdf_obj* {
        pdf_obj* obj = pdf_annot_obj(ctx, widget);
        if (rebuild || pdf_dict_getp(ctx, obj, "AP/N") == nullptr) {
            pdf_dirty_annot(ctx, widget);
            pdf_update_annot(ctx, widget);
        }
        pdf_obj* normal = pdf_dict_getp(ctx, obj, "AP/N");
        if (!pdf_is_stream(ctx, normal))
            normal = pdf_dict_get(ctx, normal, pdf_dict_get(ctx, obj, PDF_NAME(AS)));
        return pdf_is_stream(ctx, normal) ? normal : nullptr;
    });
}

// The matrix that maps the appearance, after its own /Matrix, onto the widget's /Rect.
bool PlacementOf(fz_context* ctx, pdf_obj* widget, pdf_obj* appearance, fz_matrix& placement) {
    const fz_rect rect =
        CallMupdf(ctx, kWhat, [&] { return pdf_dict_get_rect(ctx, widget, PDF_NAME(Rect)); });
    const fz_rect drawn = CallMupdf(ctx, kWhat, [&] {
        return fz_transform_rect(pdf_dict_get_rect(ctx, appearance, PDF_NAME(BBox)),
                                 pdf_dict_get_matrix(ctx, appearance, PDF_NAME(Matrix)));
    });
    const float width = drawn.x1 - drawn.x0;
    const float height = drawn.y1 - drawn.y0;
    if (fz_is_empty_rect(rect) || width <= 0 || height <= 0)
        return false;
    const float sx = (rect.x1 - rect.x0) / width;
    const float sy = (rect.y1 - rect.y0) / height;
    placement = fz_matrix{sx, 0, 0, sy, rect.x0 - drawn.x0 * sx, rect.y0 - drawn.y0 * sy};
    return true;
}

std::string DrawOperators(const fz_matrix& m, const std::string& name) {
    return "q " + PdfNumber(m.a) + " " + PdfNumber(m.b) + " " + PdfNumber(m.c) + " " +
           PdfNumber(m.d) + " " + PdfNumber(m.e) + " " + PdfNumber(m.f) + " cm /" + name +
           " Do Q\n";
}

}  // namespace

void FlattenPageWidgets(Document& document, int page) {
    if (page < 0 || page >= document.PageCount())
        throw Error(std::string(kWhat) + ": page " + std::to_string(page) + " is out of range");
    fz_context* ctx = document.fz();
    pdf_document* doc = document.pdf();
    const bool rebuild = NeedsAppearances(ctx, doc);
    const PagePtr loaded = document.LoadPage(page, kWhat);
    pdf_obj* pageObj = loaded.get()->obj;

    std::vector<pdf_annot*> widgets;
    for (pdf_annot* widget =
             CallMupdf(ctx, kWhat, [&] { return pdf_first_widget(ctx, loaded.get()); });
         widget != nullptr;
         widget = CallMupdf(ctx, kWhat, [&] { return pdf_next_widget(ctx, widget); })) {
        widgets.push_back(widget);
    }
    if (widgets.empty())
        return;

    std::string operators;
    pdf_obj* xobjects = nullptr;
    for (pdf_annot* widget : widgets) {
        if (DrawsNothing(ctx, widget))
            continue;
        pdf_obj* appearance = NormalAppearance(ctx, widget, rebuild);
        fz_matrix placement = fz_identity;
        if (appearance == nullptr ||
            !PlacementOf(ctx, pdf_annot_obj(ctx, widget), appearance, placement)) {
            continue;
        }
        if (xobjects == nullptr)
            xobjects = OwnPageResources(ctx, doc, pageObj, PDF_NAME(XObject), kWhat);
        const std::string name = FreeResourceName(ctx, xobjects, "FlatW", kWhat);
        CallMupdf(ctx, kWhat, [&] {
            if (!pdf_dict_get(ctx, appearance, PDF_NAME(Subtype))) {
                pdf_dict_put(ctx, appearance, PDF_NAME(Type), PDF_NAME(XObject));
                pdf_dict_put(ctx, appearance, PDF_NAME(Subtype), PDF_NAME(Form));
            }
            pdf_dict_puts(ctx, xobjects, name.c_str(), appearance);
        });
        operators += DrawOperators(placement, name);
    }
    if (!operators.empty())
        AppendPageContent(ctx, doc, pageObj, operators, kWhat);
    for (pdf_annot* widget : widgets)
        CallMupdf(ctx, kWhat, [&] { pdf_delete_annot(ctx, loaded.get(), widget); });
    document.MarkChanged();
}

bool DropEmptyForm(Document& document) {
    fz_context* ctx = document.fz();
    pdf_document* doc = document.pdf();
    pdf_obj* root = CallMupdf(ctx, kWhat, [&]() -> pdf_obj* {
        pdf_obj* catalog = pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Root));
        return pdf_dict_get(ctx, catalog, PDF_NAME(AcroForm)) != nullptr ? catalog : nullptr;
    });
    if (root == nullptr)
        return false;
    const int pages = document.PageCount();
    for (int index = 0; index < pages; ++index) {
        const ObjPtr page = document.PageObject(index, kWhat);
        const bool hasWidget = CallMupdf(ctx, kWhat, [&] {
            pdf_obj* annots = pdf_dict_get(ctx, page.get(), PDF_NAME(Annots));
            const int count = pdf_array_len(ctx, annots);
            for (int i = 0; i < count; ++i) {
                if (pdf_name_eq(ctx,
                                pdf_dict_get(ctx, pdf_array_get(ctx, annots, i), PDF_NAME(Subtype)),
                                PDF_NAME(Widget))) {
                    return true;
                }
            }
            return false;
        });
        if (hasWidget)
            return false;
    }
    CallMupdf(ctx, kWhat, [&] { pdf_dict_del(ctx, root, PDF_NAME(AcroForm)); });
    document.MarkChanged();
    return true;
}

}  // namespace pdfhost::engine
