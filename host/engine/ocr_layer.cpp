#include "engine/ocr_layer.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "engine/content_stream.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_content.h"
#include "engine/text_page.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot recognise the text of the page";
// Larger renderings exceed what recognition handles in reasonable time and memory.
constexpr float kMaxPixels = 10000;

using FontPtr = MupdfPtr<fz_font, fz_drop_font>;

// The byte a character becomes in the text literal (see PdfTextLiteral).
char32_t Latin1Of(char32_t code) {
    return code < 0x80 || (code >= 0xA0 && code <= 0xFF) ? code : U'?';
}

// The advance of `text` in `font` at size 1.
float AdvanceOf(fz_context* ctx, fz_font* font, const std::u32string& text) {
    return CallMupdf(ctx, kWhat, [&] {
        float advance = 0;
        for (const char32_t code : text) {
            const int glyph = fz_encode_character(ctx, font, static_cast<int>(Latin1Of(code)));
            advance += fz_advance_glyph(ctx, font, glyph, 0);
        }
        return advance;
    });
}

float Length(fz_point vector) {
    return std::hypot(vector.x, vector.y);
}

// Where a word's baseline starts and ends, in PDF page space.
struct Baseline {
    fz_point start;
    fz_point end;
};

Baseline BaselineOf(const OcrWord& word, fz_matrix toPdf) {
    return Baseline{
        fz_transform_point(fz_point{static_cast<float>(word.left), word.baselineLeft}, toPdf),
        fz_transform_point(fz_point{static_cast<float>(word.right), word.baselineRight}, toPdf)};
}

// The text operators of the words; `font` is the font's resource name.
std::string TextOperators(fz_context* ctx, fz_font* metrics, const std::vector<OcrWord>& words,
                          fz_matrix toPdf, const std::string& font, int& written) {
    std::string ops = "BT\n3 Tr\n";
    float currentSize = -1;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const OcrWord& word = words[i];
        const Baseline baseline = BaselineOf(word, toPdf);
        const fz_point along{baseline.end.x - baseline.start.x, baseline.end.y - baseline.start.y};
        const float length = Length(along);
        const float size =
            Length(fz_transform_vector(fz_point{0, static_cast<float>(word.lineHeight)}, toPdf));
        if (length <= 0 || size <= 0)
            continue;
        // A word followed by another of its line takes the space up to that word, so that the
        // next word starts where the pen stops.
        std::u32string text = DecodeUtf8(word.text);
        float width = length;
        if (i + 1 < words.size() && words[i + 1].line == word.line) {
            const Baseline next = BaselineOf(words[i + 1], toPdf);
            const float gap =
                Length(fz_point{next.start.x - baseline.start.x, next.start.y - baseline.start.y});
            if (gap > length) {
                text += U' ';
                width = gap;
            }
        }
        const float natural = AdvanceOf(ctx, metrics, text) * size;
        if (natural <= 0)
            continue;
        if (size != currentSize) {
            ops += "/" + font + " " + PdfNumber(size) + " Tf\n";
            currentSize = size;
        }
        const fz_point d{along.x / length, along.y / length};
        ops += PdfNumber(100 * width / natural) + " Tz\n";
        ops += PdfNumber(d.x) + " " + PdfNumber(d.y) + " " + PdfNumber(-d.y) + " " +
               PdfNumber(d.x) + " " + PdfNumber(baseline.start.x) + " " +
               PdfNumber(baseline.start.y) + " Tm\n";
        ops += PdfTextLiteral(EncodeUtf8(text)) + " Tj\n";
        ++written;
    }
    return ops + "ET\n";
}

}  // namespace

int AddOcrTextLayer(Document& document, int page, OcrRecognizer& recognizer, int dpi) {
    if (page < 0 || page >= document.PageCount())
        throw Error(std::string(kWhat) + ": page " + std::to_string(page) + " is out of range");
    fz_context* ctx = document.fz();
    pdf_document* doc = document.pdf();
    const PagePtr loaded = document.LoadPage(page, kWhat);

    // PDF page space -> shown page (y down); then scaled to pixels.
    fz_matrix shown = fz_identity;
    fz_rect box = fz_empty_rect;
    CallMupdf(ctx, kWhat, [&] { pdf_page_transform(ctx, loaded.get(), &box, &shown); });
    const float side = std::max(box.x1 - box.x0, box.y1 - box.y0);
    float scale = static_cast<float>(std::max(dpi, 1)) / 72.0f;
    if (side > 0 && side * scale > kMaxPixels)
        scale = kMaxPixels / side;
    const int effectiveDpi = std::max(1, static_cast<int>(std::lround(scale * 72.0f)));
    // Rendering applies the page's own transform; the mapping back needs it too.
    PixmapPtr pixmap(ctx, CallMupdf(ctx, kWhat, [&] {
                         return fz_new_pixmap_from_page_contents(ctx, &loaded.get()->super,
                                                                 fz_scale(scale, scale),
                                                                 fz_device_gray(ctx), 0);
                     }));
    const GreyImageView image{
        fz_pixmap_samples(ctx, pixmap.get()), fz_pixmap_width(ctx, pixmap.get()),
        fz_pixmap_height(ctx, pixmap.get()), static_cast<int>(fz_pixmap_stride(ctx, pixmap.get()))};
    const std::vector<OcrWord> words = recognizer.Recognize(image, effectiveDpi);
    if (words.empty())
        return 0;

    // The pixmap's origin is the corner of the rendered area, not of the device space.
    const fz_irect area = fz_pixmap_bbox(ctx, pixmap.get());
    const fz_matrix toPdf = fz_invert_matrix(
        fz_concat(fz_concat(shown, fz_scale(scale, scale)),
                  fz_translate(static_cast<float>(-area.x0), static_cast<float>(-area.y0))));
    const FontPtr metrics(
        ctx, CallMupdf(ctx, kWhat, [&] { return fz_new_base14_font(ctx, "Helvetica"); }));
    pdf_obj* pageObj = loaded.get()->obj;
    // The page changes only when there are words to write.
    pdf_obj* shownFonts = CallMupdf(ctx, kWhat, [&] {
        return pdf_dict_get(ctx, pdf_dict_get_inheritable(ctx, pageObj, PDF_NAME(Resources)),
                            PDF_NAME(Font));
    });
    const std::string fontName = FreeResourceName(ctx, shownFonts, "OcrF", kWhat);
    int written = 0;
    const std::string operators =
        TextOperators(ctx, metrics.get(), words, toPdf, fontName, written);
    if (written == 0)
        return 0;
    pdf_obj* fonts = OwnPageResources(ctx, doc, pageObj, PDF_NAME(Font), kWhat);
    const ObjPtr font = NewStandardFont(ctx, doc, "Helvetica", kWhat);
    CallMupdf(ctx, kWhat, [&] { pdf_dict_puts(ctx, fonts, fontName.c_str(), font.get()); });
    AppendPageContent(ctx, doc, pageObj, operators, kWhat);
    document.MarkChanged();
    return written;
}

}  // namespace pdfhost::engine
