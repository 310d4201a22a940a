// Helpers of the annotation and redaction tests: annotation entries as the plug-in writes
// them, word positions as a text finder gives them, and readers of the saved file.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "engine/annotations.h"
#include "engine/document.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_object_number.h"
#include "engine/pdf_value.h"
#include "engine_test_support.h"

namespace pdfhost::engine::testing_support {

// The tag the tests give references to their document.
inline constexpr std::uintptr_t kDocumentTag = 7;

inline PdfValue Numbers(std::initializer_list<float> values) {
    PdfValue array = PdfValue::Array();
    for (const float value : values)
        array.Push(PdfValue::Real(value));
    return array;
}

inline Rect Union(const std::vector<Rect>& rects) {
    Rect all = rects.front();
    for (const Rect& r : rects) {
        all = Rect{std::min(all.left, r.left), std::min(all.bottom, r.bottom),
                   std::max(all.right, r.right), std::max(all.top, r.top)};
    }
    return all;
}

// The object number of a page's dictionary.
inline int PageObjectNumber(Document& document, int page) {
    return pdfhost::engine::PageObjectNumber(document, page);
}

// A Highlight or Redact annotation of a text match, with the entries and in the order the
// plug-in sets them: one quadrilateral per rectangle, corners lower left, lower right, upper
// left, upper right.
inline PdfValue MatchAnnotation(Document& document, int page, const std::string& subtype,
                                const std::vector<Rect>& rects, const std::string& name) {
    const bool redact = subtype == "Redact";
    PdfValue dict = PdfValue::Dictionary();
    dict.Set("Type", PdfValue::Name("Annot"));
    dict.Set("Subtype", PdfValue::Name(subtype));
    const Rect all = Union(rects);
    dict.Set("Rect", Numbers({all.left, all.bottom, all.right, all.top}));
    dict.Set("F", PdfValue::Integer(4));
    PdfValue quads = PdfValue::Array();
    for (const Rect& r : rects) {
        for (const float v : {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top})
            quads.Push(PdfValue::Real(v));
    }
    dict.Set("QuadPoints", quads);
    dict.Set("C", redact ? Numbers({1, 0, 0}) : Numbers({1, 1, 0}));
    if (redact)
        dict.Set("IC", Numbers({0, 0, 0}));
    dict.Set("Subj", PdfValue::String(redact ? "Redact" : "Highlight"));
    dict.Set("P", PdfValue::Reference(PageObjectNumber(document, page), kDocumentTag));
    if (!redact)
        dict.Set("Contents", PdfValue::String("a comment"));
    dict.Set("NM", PdfValue::String(name));
    return dict;
}

// The rectangles (PDF page space) of the first occurrence of `word` on an unrotated page whose
// box starts at the origin, one per line, as character boxes.
inline std::vector<Rect> WordRects(Document& document, int page, const std::string& word) {
    fz_context* ctx = document.fz();
    const Rect box = document.PageBox(page);
    std::vector<Rect> rects;
    fz_quad quads[8];
    const PagePtr loaded = document.LoadPage(page, "load page");
    const int found = CallMupdf(ctx, "search", [&] {
        return fz_search_page(ctx, &loaded.get()->super, word.c_str(), nullptr, quads, 8);
    });
    for (int i = 0; i < found; ++i) {
        const fz_rect r = fz_rect_from_quad(quads[i]);
        rects.push_back(Rect{r.x0, box.top - r.y1, r.x1, box.top - r.y0});
    }
    return rects;
}

// What poppler's pdftotext reads from a file.
inline std::string PdfToText(const std::string& path) {
    return RunCommand("pdftotext -q '" + path + "' -");
}

// The whole file with every stream inflated, as MuPDF writes it: a text that is not in these
// bytes is nowhere in the file. `withoutXfa` leaves the form's XFA packets out.
inline std::string InflatedBytes(Context& context, const std::string& path,
                                 bool withoutXfa = false) {
    Document reopened = Document::Open(context, path);
    fz_context* ctx = reopened.fz();
    BufferPtr buffer(ctx, CallMupdf(ctx, "buffer", [&] { return fz_new_buffer(ctx, 4096); }));
    CallMupdf(ctx, "inflate", [&] {
        fz_output* out = fz_new_output_with_buffer(ctx, buffer.get());
        fz_try(ctx) {
            pdf_obj* form = pdf_dict_getp(ctx, pdf_trailer(ctx, reopened.pdf()), "Root/AcroForm");
            if (withoutXfa && pdf_is_dict(ctx, form))
                pdf_dict_del(ctx, form, PDF_NAME(XFA));
            pdf_write_options options = pdf_default_write_options;
            options.do_decompress = 1;
            options.do_garbage = 1;
            pdf_write_document(ctx, reopened.pdf(), out, &options);
            fz_close_output(ctx, out);
        }
        fz_always(ctx) fz_drop_output(ctx, out);
        fz_catch(ctx) fz_rethrow(ctx);
    });
    unsigned char* data = nullptr;
    const std::size_t size = fz_buffer_storage(ctx, buffer.get(), &data);
    return std::string(reinterpret_cast<const char*>(data), size);
}

// The grey value (0 black .. 255 white) of the point (x, y) in PDF page space of page 1 of a
// file of US-Letter pages, as poppler's renderer draws it at 72 dpi.
inline int GreyAt(const std::string& path, float x, float y) {
    const std::string out = path + ".grey";
    RunCommand("pdftoppm -q -r 72 -gray -f 1 -l 1 -singlefile '" + path + "' '" + out + "'");
    const std::string bytes = ReadBytes(out + ".pgm");
    std::remove((out + ".pgm").c_str());
    // "P5\n<w> <h>\n255\n" then one byte per pixel, rows from the top.
    int width = 0, height = 0, max = 0, header = 0;
    if (std::sscanf(bytes.c_str(), "P5 %d %d %d%n", &width, &height, &max, &header) != 3)
        return -1;
    const int column = static_cast<int>(x);
    const int row = height - 1 - static_cast<int>(y);
    const std::size_t at = static_cast<std::size_t>(header + 1) +
                           static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                           static_cast<std::size_t>(column);
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : -1;
}

}  // namespace pdfhost::engine::testing_support
