#include "engine/page_content.h"

#include <cstdio>

#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

ObjPtr AddStream(fz_context* ctx, pdf_document* doc, const std::string& bytes,
                 std::string_view what) {
    BufferPtr buffer(ctx, CallMupdf(ctx, what, [&] {
                         return fz_new_buffer_from_copied_data(
                             ctx, reinterpret_cast<const unsigned char*>(bytes.data()),
                             bytes.size());
                     }));
    return ObjPtr(ctx, CallMupdf(ctx, what, [&] {
                      return pdf_add_stream(ctx, doc, buffer.get(), nullptr, 0);
                  }));
}

}  // namespace

pdf_obj* OwnPageResources(fz_context* ctx, pdf_document* doc, pdf_obj* page, pdf_obj* kind,
                          std::string_view what) {
    return CallMupdf(ctx, what, [&] {
        pdf_obj* resources = pdf_dict_get(ctx, page, PDF_NAME(Resources));
        if (resources == nullptr) {
            pdf_obj* inherited = pdf_dict_get_inheritable(ctx, page, PDF_NAME(Resources));
            resources =
                inherited != nullptr ? pdf_copy_dict(ctx, inherited) : pdf_new_dict(ctx, doc, 1);
            pdf_dict_put_drop(ctx, page, PDF_NAME(Resources), resources);
        }
        pdf_obj* entries = pdf_dict_get(ctx, resources, kind);
        if (!pdf_is_dict(ctx, entries))
            entries = pdf_dict_put_dict(ctx, resources, kind, 1);
        return entries;
    });
}

std::string FreeResourceName(fz_context* ctx, pdf_obj* resources, std::string_view prefix,
                             std::string_view what) {
    for (int number = 1;; ++number) {
        const std::string name = std::string(prefix) + std::to_string(number);
        if (CallMupdf(ctx, what, [&] { return pdf_dict_gets(ctx, resources, name.c_str()); }) ==
            nullptr) {
            return name;
        }
    }
}

void AppendPageContent(fz_context* ctx, pdf_document* doc, pdf_obj* page,
                       const std::string& operators, std::string_view what) {
    const ObjPtr before = AddStream(ctx, doc, "q\n", what);
    const ObjPtr after = AddStream(ctx, doc, "Q\n" + operators, what);
    ObjPtr contents(ctx, CallMupdf(ctx, what, [&] { return pdf_new_array(ctx, doc, 4); }));
    CallMupdf(ctx, what, [&] {
        pdf_obj* old = pdf_dict_get(ctx, page, PDF_NAME(Contents));
        pdf_array_push(ctx, contents.get(), before.get());
        if (pdf_is_array(ctx, old)) {
            const int count = pdf_array_len(ctx, old);
            for (int i = 0; i < count; ++i)
                pdf_array_push(ctx, contents.get(), pdf_array_get(ctx, old, i));
        } else if (old != nullptr) {
            pdf_array_push(ctx, contents.get(), old);
        }
        pdf_array_push(ctx, contents.get(), after.get());
        pdf_dict_put(ctx, page, PDF_NAME(Contents), contents.get());
    });
}

std::string PdfNumber(float value) {
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "%.4f", static_cast<double>(value));
    std::string text(buffer);
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

ObjPtr NewStandardFont(fz_context* ctx, pdf_document* doc, const char* baseFont,
                       std::string_view what) {
    ObjPtr font(ctx, CallMupdf(ctx, what, [&] { return pdf_add_new_dict(ctx, doc, 4); }));
    CallMupdf(ctx, what, [&] {
        pdf_dict_put(ctx, font.get(), PDF_NAME(Type), PDF_NAME(Font));
        pdf_dict_put(ctx, font.get(), PDF_NAME(Subtype), PDF_NAME(Type1));
        pdf_dict_put_name(ctx, font.get(), PDF_NAME(BaseFont), baseFont);
        pdf_dict_put(ctx, font.get(), PDF_NAME(Encoding), PDF_NAME(WinAnsiEncoding));
    });
    return font;
}

}  // namespace pdfhost::engine
