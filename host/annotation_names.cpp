#include "annotation_names.h"

#include <mupdf/pdf.h>

#include "engine/mupdf_call.h"

namespace pdfhost {

std::vector<std::string> AnnotationNames(engine::Document& document,
                                         const std::vector<engine::AnnotationId>& ids) {
    const engine::Annotations annotations(document);
    fz_context* ctx = document.fz();
    std::vector<std::string> names;
    names.reserve(ids.size());
    for (const engine::AnnotationId& id : ids) {
        const engine::ObjPtr dict = annotations.Dictionary(id.object);
        if (!dict) {
            names.emplace_back();
            continue;
        }
        // The text lives as long as the dictionary does.
        names.emplace_back(engine::CallMupdf(ctx, "cannot read an annotation's name", [&] {
            return pdf_to_text_string(ctx, pdf_dict_gets(ctx, dict.get(), "NM"));
        }));
    }
    return names;
}

}  // namespace pdfhost
