#include "engine/page_object_number.h"

#include <string>

#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

int PageObjectNumber(const Document& document, int page) {
    if (page < 0 || page >= document.PageCount())
        throw Error("page " + std::to_string(page) + " is out of range");
    fz_context* ctx = document.fz();
    const std::string what = "cannot find page " + std::to_string(page);
    const ObjPtr object = document.PageObject(page, what);
    return CallMupdf(ctx, what, [&] {
        return pdf_is_indirect(ctx, object.get()) ? pdf_to_num(ctx, object.get())
                                                  : pdf_obj_parent_num(ctx, object.get());
    });
}

int PageIndexOf(const Document& document, pdf_obj* dict) {
    fz_context* ctx = document.fz();
    pdf_document* pdf = document.pdf();
    const char* what = "page number";
    struct Wanted {
        pdf_obj* dict;
        int number;
    };
    const Wanted wanted = CallMupdf(ctx, what, [&] {
        pdf_obj* resolved = pdf_resolve_indirect_chain(ctx, dict);
        return Wanted{resolved, pdf_is_indirect(ctx, dict) ? pdf_to_num(ctx, dict)
                                                           : pdf_obj_parent_num(ctx, resolved)};
    });
    const auto isPage = [&](int index) {
        const ObjPtr page = document.PageObject(index, what);
        return CallMupdf(ctx, what, [&] { return pdf_resolve_indirect_chain(ctx, page.get()); }) ==
               wanted.dict;
    };
    if (wanted.number > 0) {
        const ObjPtr reference(ctx, CallMupdf(ctx, what, [&] {
                                   return pdf_new_indirect(ctx, pdf, wanted.number, 0);
                               }));
        const int found =
            CallMupdf(ctx, what, [&] { return pdf_lookup_page_number(ctx, pdf, reference.get()); });
        if (found >= 0 && found < document.PageCount() && isPage(found))
            return found;
    }
    const int pages = document.PageCount();
    for (int index = 0; index < pages; ++index) {
        if (isPage(index))
            return index;
    }
    return -1;
}

}  // namespace pdfhost::engine
