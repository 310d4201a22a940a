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
    pdf_document* pdf = document.pdf();
    return CallMupdf(ctx, "cannot find page " + std::to_string(page), [&] {
        pdf_obj* object = pdf_lookup_page_obj(ctx, pdf, page);
        return pdf_is_indirect(ctx, object) ? pdf_to_num(ctx, object)
                                            : pdf_obj_parent_num(ctx, object);
    });
}

}  // namespace pdfhost::engine
