#include "engine/strict_stream_reader.h"

#include <zlib.h>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

std::string BytesOf(fz_context* ctx, fz_buffer* buffer) {
    unsigned char* data = nullptr;
    const std::size_t size = fz_buffer_storage(ctx, buffer, &data);
    return std::string(reinterpret_cast<const char*>(data), size);
}

std::optional<std::string> Inflate(const std::string& packed) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return std::nullopt;
    std::string out;
    char chunk[16384];
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    int status = Z_OK;
    while (status == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(chunk);
        stream.avail_out = sizeof chunk;
        status = inflate(&stream, Z_NO_FLUSH);
        out.append(chunk, sizeof chunk - stream.avail_out);
        if (status == Z_BUF_ERROR && stream.avail_in == 0)
            break;  // the data ends before the stream does
    }
    inflateEnd(&stream);
    if (status != Z_STREAM_END)
        return std::nullopt;
    return out;
}

// 0: no filter; 1: Flate alone without parameters; 2: anything else.
int FilterKind(fz_context* ctx, pdf_obj* dict) {
    pdf_obj* filter = pdf_dict_get(ctx, dict, PDF_NAME(Filter));
    if (pdf_is_array(ctx, filter) && pdf_array_len(ctx, filter) == 1)
        filter = pdf_array_get(ctx, filter, 0);
    if (filter == nullptr || (pdf_is_array(ctx, filter) && pdf_array_len(ctx, filter) == 0))
        return 0;
    if (pdf_name_eq(ctx, filter, PDF_NAME(FlateDecode)) &&
        pdf_dict_get(ctx, dict, PDF_NAME(DecodeParms)) == nullptr)
        return 1;
    return 2;
}

}  // namespace

std::optional<std::string> ReadWholeStream(const Document& document, int num) {
    fz_context* ctx = document.fz();
    pdf_document* pdf = document.pdf();
    try {
        const int kind = CallMupdf(ctx, "cannot read a stream", [&] {
            pdf_obj* dict = pdf_load_object(ctx, pdf, num);
            const int k = FilterKind(ctx, dict);
            pdf_drop_obj(ctx, dict);
            return k;
        });
        BufferPtr buffer(ctx, CallMupdf(ctx, "cannot read a stream", [&] {
                             return kind == 2 ? pdf_load_stream_number(ctx, pdf, num)
                                              : pdf_load_raw_stream_number(ctx, pdf, num);
                         }));
        std::string bytes = BytesOf(ctx, buffer.get());
        if (kind == 1)
            return Inflate(bytes);
        return bytes;
    } catch (const Error&) {
        return std::nullopt;
    }
}

}  // namespace pdfhost::engine
