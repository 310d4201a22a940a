#include "engine/info_dictionary.h"

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

void PutInfoString(fz_context* ctx, pdf_document* doc, const std::string& key,
                   const std::string& bytes) {
    const std::string what = "cannot set the document information " + key;
    const bool has_info = CallMupdf(ctx, what, [&] {
        return pdf_is_dict(ctx, pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Info)));
    });
    if (!has_info) {
        ObjPtr info(ctx, CallMupdf(ctx, what, [&] { return pdf_add_new_dict(ctx, doc, 8); }));
        CallMupdf(ctx, what,
                  [&] { pdf_dict_put(ctx, pdf_trailer(ctx, doc), PDF_NAME(Info), info.get()); });
    }
    ObjPtr value(
        ctx, CallMupdf(ctx, what, [&] { return pdf_new_string(ctx, bytes.data(), bytes.size()); }));
    CallMupdf(ctx, what, [&] {
        pdf_obj* info = pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Info));
        pdf_dict_puts(ctx, info, key.c_str(), value.get());
    });
}

}  // namespace pdfhost::engine
