#include "engine/covered_annotations.h"

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

// Deeper /Parent chains than this are treated as damaged and not followed.
constexpr int kMaxFieldDepth = 32;

// Object numbers met on one walk up a /Parent chain. Plain storage: the walks run inside
// MuPDF calls, where only trivially destructible values may live.
struct Visited {
    int numbers[kMaxFieldDepth];
    int count = 0;
    // False when `obj` was met before (a cycle) or the chain is too deep.
    bool Enter(fz_context* ctx, pdf_obj* obj) {
        if (count >= kMaxFieldDepth)
            return false;
        const int number = pdf_is_indirect(ctx, obj) ? pdf_to_num(ctx, obj) : 0;
        for (int i = 0; i < count && number != 0; ++i) {
            if (numbers[i] == number)
                return false;
        }
        numbers[count++] = number;
        return true;
    }
};

Rect RectOf(fz_context* ctx, pdf_obj* annot) {
    const fz_rect r = pdf_dict_get_rect(ctx, annot, PDF_NAME(Rect));
    return Rect{r.x0, r.y0, r.x1, r.y1};
}

// The terminal field of a widget: the nearest dictionary up the /Parent chain with a /T, or
// the widget itself.
pdf_obj* FieldOf(fz_context* ctx, pdf_obj* widget) {
    Visited visited;
    for (pdf_obj* node = widget; pdf_is_dict(ctx, node) && visited.Enter(ctx, node);
         node = pdf_dict_get(ctx, node, PDF_NAME(Parent))) {
        if (pdf_dict_get(ctx, node, PDF_NAME(T)) != nullptr)
            return node;
    }
    return widget;
}

// Clears the values a field holds or inherits: from the widget up the whole /Parent chain.
void ClearValues(fz_context* ctx, pdf_obj* widget) {
    Visited visited;
    for (pdf_obj* node = widget; pdf_is_dict(ctx, node) && visited.Enter(ctx, node);
         node = pdf_dict_get(ctx, node, PDF_NAME(Parent))) {
        for (pdf_obj* key : {PDF_NAME(V), PDF_NAME(DV), PDF_NAME(Opt), PDF_NAME(I)})
            pdf_dict_del(ctx, node, key);
        pdf_dict_dels(ctx, node, "RV");
    }
}

// The same object: the same number when both are references, else the same value.
bool Same(fz_context* ctx, pdf_obj* a, pdf_obj* b) {
    if (pdf_is_indirect(ctx, a) && pdf_is_indirect(ctx, b))
        return pdf_to_num(ctx, a) == pdf_to_num(ctx, b);
    return a == b;
}

bool Holds(fz_context* ctx, pdf_obj* array, pdf_obj* object) {
    for (int i = 0, n = pdf_array_len(ctx, array); i < n; ++i) {
        if (Same(ctx, pdf_array_get(ctx, array, i), object))
            return true;
    }
    return false;
}

void RemoveFrom(fz_context* ctx, pdf_obj* array, pdf_obj* object) {
    for (int i = pdf_array_len(ctx, array) - 1; i >= 0; --i) {
        if (Same(ctx, pdf_array_get(ctx, array, i), object))
            pdf_array_delete(ctx, array, i);
    }
}

// Takes a field out of the form: out of its parent's /Kids, or out of /AcroForm /Fields. A
// parent left without kids goes the same way.
void RemoveField(fz_context* ctx, pdf_document* pdf, pdf_obj* field) {
    Visited visited;
    while (pdf_is_dict(ctx, field) && visited.Enter(ctx, field)) {
        pdf_obj* parent = pdf_dict_get(ctx, field, PDF_NAME(Parent));
        if (!pdf_is_dict(ctx, parent)) {
            RemoveFrom(ctx, pdf_dict_getp(ctx, pdf_trailer(ctx, pdf), "Root/AcroForm/Fields"),
                       field);
            return;
        }
        pdf_obj* kids = pdf_dict_get(ctx, parent, PDF_NAME(Kids));
        RemoveFrom(ctx, kids, field);
        if (pdf_array_len(ctx, kids) > 0)
            return;
        field = parent;
    }
}

// Clears the field of a widget that meets an area, and adds to `doomed` the widgets to take
// off their pages: those under the areas, or all of a signature field.
void ClearField(fz_context* ctx, pdf_document* pdf, pdf_obj* widget, const RedactionAreas& areas,
                pdf_obj* doomed) {
    pdf_obj* field = FieldOf(ctx, widget);
    const bool signature = pdf_dict_get_inheritable(ctx, field, PDF_NAME(FT)) == PDF_NAME(Sig);
    ClearValues(ctx, widget);
    pdf_obj* kids = pdf_dict_get(ctx, field, PDF_NAME(Kids));
    if (field == widget || !pdf_is_array(ctx, kids)) {
        pdf_dict_del(ctx, widget, PDF_NAME(AP));
        pdf_array_push(ctx, doomed, widget);
        RemoveField(ctx, pdf, field);
        return;
    }
    int kept = 0;
    for (int i = pdf_array_len(ctx, kids) - 1; i >= 0; --i) {
        pdf_obj* kid = pdf_array_get(ctx, kids, i);
        if (!pdf_is_dict(ctx, kid) || pdf_dict_get(ctx, kid, PDF_NAME(T)) != nullptr) {
            ++kept;  // a child field, not a widget of this one
            continue;
        }
        pdf_dict_del(ctx, kid, PDF_NAME(AP));
        if (signature || Same(ctx, kid, widget) || areas.Touches(RectOf(ctx, kid))) {
            pdf_array_push(ctx, doomed, kid);
            pdf_array_delete(ctx, kids, i);
        } else {
            ++kept;
        }
    }
    if (kept == 0)
        RemoveField(ctx, pdf, field);
}

bool IsTextMarkup(pdf_obj* subtype) {
    return subtype == PDF_NAME(Highlight) || subtype == PDF_NAME(Underline) ||
           subtype == PDF_NAME(StrikeOut) || subtype == PDF_NAME(Squiggly);
}

// Clears what a text markup and its popup hold as text.
void ClearMarkupText(fz_context* ctx, pdf_obj* markup) {
    for (pdf_obj* annot : {markup, pdf_dict_get(ctx, markup, PDF_NAME(Popup))}) {
        if (!pdf_is_dict(ctx, annot))
            continue;
        for (pdf_obj* key : {PDF_NAME(Contents), PDF_NAME(RC), PDF_NAME(T)})
            pdf_dict_del(ctx, annot, key);
        pdf_dict_dels(ctx, annot, "Subj");
    }
}

}  // namespace

std::vector<int> RemoveCoveredAnnotations(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj,
                                          const RedactionAreas& areas) {
    ObjPtr markups(ctx, CallMupdf(ctx, "cannot remove the annotations under the areas",
                                  [&] { return pdf_new_array(ctx, pdf, 4); }));
    CallMupdf(ctx, "cannot remove the annotations under the areas", [&] {
        pdf_obj* annots = pdf_dict_get(ctx, page_obj, PDF_NAME(Annots));
        // Entries to drop, collected first: clearing a field may name widgets anywhere in the
        // array, and popups follow their parent.
        pdf_obj* doomed = pdf_new_array(ctx, pdf, 4);
        fz_try(ctx) {
            for (int i = 0, n = pdf_array_len(ctx, annots); i < n; ++i) {
                pdf_obj* entry = pdf_array_get(ctx, annots, i);
                pdf_obj* subtype = pdf_dict_get(ctx, entry, PDF_NAME(Subtype));
                if (subtype == PDF_NAME(Redact) || subtype == PDF_NAME(Popup) ||
                    !areas.Touches(RectOf(ctx, entry))) {
                    continue;
                }
                if (subtype == PDF_NAME(Widget)) {
                    if (!Holds(ctx, doomed, entry))
                        ClearField(ctx, pdf, entry, areas, doomed);
                    continue;
                }
                if (IsTextMarkup(subtype)) {
                    ClearMarkupText(ctx, entry);
                    pdf_array_push(ctx, markups.get(), entry);
                    continue;
                }
                pdf_array_push(ctx, doomed, entry);
                if (pdf_obj* popup = pdf_dict_get(ctx, entry, PDF_NAME(Popup)))
                    pdf_array_push(ctx, doomed, popup);
            }
            for (int i = pdf_array_len(ctx, annots) - 1; i >= 0; --i) {
                pdf_obj* entry = pdf_array_get(ctx, annots, i);
                // A popup whose parent goes, goes too.
                pdf_obj* parent = pdf_dict_get(ctx, entry, PDF_NAME(Parent));
                const bool orphan =
                    pdf_dict_get(ctx, entry, PDF_NAME(Subtype)) == PDF_NAME(Popup) &&
                    parent != nullptr && Holds(ctx, doomed, parent);
                if (orphan || Holds(ctx, doomed, entry))
                    pdf_array_delete(ctx, annots, i);
            }
        }
        fz_always(ctx) pdf_drop_obj(ctx, doomed);
        fz_catch(ctx) fz_rethrow(ctx);
    });
    std::vector<int> kept;
    const int count = CallMupdf(ctx, "cannot read the annotations",
                                [&] { return pdf_array_len(ctx, markups.get()); });
    for (int i = 0; i < count; ++i) {
        kept.push_back(CallMupdf(ctx, "cannot read the annotations", [&] {
            return pdf_to_num(ctx, pdf_array_get(ctx, markups.get(), i));
        }));
    }
    return kept;
}

void RebuildAppearances(const Document& document, int page, const std::vector<int>& objects) {
    if (objects.empty())
        return;
    fz_context* ctx = document.fz();
    const char* what = "cannot rebuild an annotation's appearance";
    const PagePtr loaded = document.LoadPage(page, what);
    for (pdf_annot* annot =
             CallMupdf(ctx, what, [&] { return pdf_first_annot(ctx, loaded.get()); });
         annot != nullptr;
         annot = CallMupdf(ctx, what, [&] { return pdf_next_annot(ctx, annot); })) {
        CallMupdf(ctx, what, [&] {
            pdf_obj* obj = pdf_annot_obj(ctx, annot);
            bool wanted = false;
            for (const int object : objects)
                wanted = wanted || pdf_to_num(ctx, obj) == object;
            if (!wanted)
                return;
            // Building the appearance rewrites /Rect: the annotation's own one stays.
            pdf_obj* rect = pdf_keep_obj(ctx, pdf_dict_get(ctx, obj, PDF_NAME(Rect)));
            fz_try(ctx) {
                pdf_dict_del(ctx, obj, PDF_NAME(AP));
                pdf_dirty_annot(ctx, annot);
                pdf_update_annot(ctx, annot);
                if (rect != nullptr)
                    pdf_dict_put(ctx, obj, PDF_NAME(Rect), rect);
            }
            fz_always(ctx) pdf_drop_obj(ctx, rect);
            fz_catch(ctx) fz_rethrow(ctx);
        });
    }
}

}  // namespace pdfhost::engine
