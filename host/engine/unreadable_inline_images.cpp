#include "engine/unreadable_inline_images.h"

#include <string>
#include <string_view>
#include <vector>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

// A span of the content bytes to leave out: [begin, end).
struct Cut {
    std::size_t begin;
    std::size_t end;
};

// The page's content streams, decoded and joined by a newline as MuPDF reads them.
std::string ContentOf(fz_context* ctx, pdf_obj* page_obj) {
    const char* what = "cannot read the page content";
    pdf_obj* contents =
        CallMupdf(ctx, what, [&] { return pdf_dict_get(ctx, page_obj, PDF_NAME(Contents)); });
    const bool array = CallMupdf(ctx, what, [&] { return pdf_is_array(ctx, contents) != 0; });
    const int count =
        array ? CallMupdf(ctx, what, [&] { return pdf_array_len(ctx, contents); }) : 1;
    std::string bytes;
    for (int i = 0; i < count; ++i) {
        BufferPtr part(ctx, CallMupdf(ctx, what, [&]() -> fz_buffer* {
                           pdf_obj* stream = array ? pdf_array_get(ctx, contents, i) : contents;
                           return pdf_is_stream(ctx, stream) ? pdf_load_stream(ctx, stream)
                                                             : nullptr;
                       }));
        if (!part)
            continue;
        unsigned char* data = nullptr;
        const std::size_t size = fz_buffer_storage(ctx, part.get(), &data);
        bytes.append(reinterpret_cast<const char*>(data), size);
        bytes += '\n';
    }
    return bytes;
}

// Reads from the current position up to and past the next "EI" that ends an inline image, as
// MuPDF's interpreter looks for it; false at the end of the stream.
bool SkipPastEndOfImage(fz_context* ctx, fz_stream* stm) {
    int c = fz_read_byte(ctx, stm);
    while (c != EOF) {
        if (c != 'E') {
            c = fz_read_byte(ctx, stm);
            continue;
        }
        c = fz_read_byte(ctx, stm);
        if (c != 'I')
            continue;
        const int next = fz_peek_byte(ctx, stm);
        if (next <= 32 || next == EOF || next == '<' || next == '/')
            return true;
    }
    return false;
}

// Whether MuPDF reads the image whose data starts at the stream's position; either way the
// stream is left past its EI (or at the end). Runs inside a MuPDF try.
bool ReadsImage(fz_context* ctx, pdf_document* pdf, pdf_obj* resources, pdf_obj* dict,
                fz_stream* stm) {
    const int64_t start = fz_tell(ctx, stm);
    int c = fz_read_byte(ctx, stm);
    if (c == '\r' && fz_peek_byte(ctx, stm) == '\n')
        fz_read_byte(ctx, stm);
    bool readable = true;
    fz_try(ctx) {
        fz_drop_image(ctx, pdf_load_inline_image(ctx, pdf, resources, dict, stm));
    }
    fz_catch(ctx) {
        if (fz_caught(ctx) == FZ_ERROR_MEMORY)
            fz_rethrow(ctx);
        readable = false;
    }
    if (!readable)
        fz_seek(ctx, stm, start, SEEK_SET);
    if (!SkipPastEndOfImage(ctx, stm))
        return false;
    return readable;
}

// One pass of MuPDF's lexer over the content, noting the span of each unreadable image.
// `cuts` must have room for `capacity` entries; returns how many were noted.
int FindUnreadable(fz_context* ctx, pdf_document* pdf, pdf_obj* resources, const std::string& bytes,
                   Cut* cuts, int capacity) {
    fz_stream* stm =
        fz_open_memory(ctx, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    pdf_lexbuf buf;
    pdf_lexbuf_init(ctx, &buf, PDF_LEXBUF_SMALL);
    pdf_obj* dict = nullptr;
    int found = 0;
    fz_var(dict);
    fz_var(found);
    fz_try(ctx) {
        for (;;) {
            const int64_t before = fz_tell(ctx, stm);
            const pdf_token token = pdf_lex(ctx, stm, &buf);
            if (token == PDF_TOK_EOF)
                break;
            if (token != PDF_TOK_KEYWORD || std::string_view(buf.scratch) != "BI")
                continue;
            bool readable = false;
            fz_var(readable);
            fz_try(ctx) {
                dict = pdf_parse_dict(ctx, pdf, stm, &buf);
                readable = ReadsImage(ctx, pdf, resources, dict, stm);
            }
            fz_always(ctx) {
                pdf_drop_obj(ctx, dict);
                dict = nullptr;
            }
            fz_catch(ctx) {
                if (fz_caught(ctx) == FZ_ERROR_MEMORY)
                    fz_rethrow(ctx);
                // A dictionary that does not parse: the image goes up to its EI.
                if (!SkipPastEndOfImage(ctx, stm))
                    fz_seek(ctx, stm, 0, SEEK_END);
            }
            if (!readable && found < capacity) {
                cuts[found++] = Cut{static_cast<std::size_t>(before),
                                    static_cast<std::size_t>(fz_tell(ctx, stm))};
            }
        }
    }
    fz_always(ctx) {
        pdf_lexbuf_fin(ctx, &buf);
        fz_drop_stream(ctx, stm);
    }
    fz_catch(ctx) fz_rethrow(ctx);
    return found;
}

}  // namespace

int RemoveUnreadableInlineImages(fz_context* ctx, pdf_document* pdf, pdf_obj* page_obj) {
    const std::string bytes = ContentOf(ctx, page_obj);
    // An inline image takes at least "BI ID EI": more cuts than that cannot occur.
    std::vector<Cut> cuts(bytes.size() / 8 + 1);
    pdf_obj* resources = CallMupdf(ctx, "cannot read the page resources", [&] {
        return pdf_dict_get_inheritable(ctx, page_obj, PDF_NAME(Resources));
    });
    const int found = CallMupdf(ctx, "cannot read the page's inline images", [&] {
        return FindUnreadable(ctx, pdf, resources, bytes, cuts.data(),
                              static_cast<int>(cuts.size()));
    });
    if (found == 0)
        return 0;
    std::string kept;
    std::size_t from = 0;
    for (int i = 0; i < found; ++i) {
        kept.append(bytes, from, cuts[i].begin - from);
        kept += '\n';
        from = cuts[i].end;
    }
    kept.append(bytes, from);
    const char* what = "cannot write the page content";
    BufferPtr buffer(ctx, CallMupdf(ctx, what, [&] {
                         return fz_new_buffer_from_copied_data(
                             ctx, reinterpret_cast<const unsigned char*>(kept.data()), kept.size());
                     }));
    CallMupdf(ctx, what, [&] {
        pdf_dict_put_drop(ctx, page_obj, PDF_NAME(Contents),
                          pdf_add_stream(ctx, pdf, buffer.get(), nullptr, 0));
    });
    return found;
}

}  // namespace pdfhost::engine
