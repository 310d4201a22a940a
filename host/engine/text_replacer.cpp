#include "engine/text_replacer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "engine/content_stream.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_content.h"
#include "engine/permissions.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot replace the text";
// The Subtype other Redact annotations wear while the match alone is applied.
constexpr const char* kHeldSubtype = "PdfhostHeldRedact";
constexpr float kBandLow = 0.25f;
constexpr float kBandHigh = 0.5f;

using AnnotPtr = MupdfPtr<pdf_annot, pdf_drop_annot>;

float Dot(PdfPoint a, PdfPoint b) {
    return a.x * b.x + a.y * b.y;
}

PdfPoint Along(PdfPoint origin, PdfPoint direction, float distance, PdfPoint up, float height) {
    return PdfPoint{origin.x + direction.x * distance + up.x * height,
                    origin.y + direction.y * distance + up.y * height};
}

// The band of one line's characters [first, end) of the match.
Rect BandOf(const std::vector<TextChar>& chars, std::size_t first, std::size_t end,
            PdfPoint direction) {
    const TextChar& lead = chars[first];
    const PdfPoint up{-direction.y, direction.x};
    float from = std::numeric_limits<float>::max();
    float to = std::numeric_limits<float>::lowest();
    float size = 0;
    for (std::size_t i = first; i < end; ++i) {
        const Rect& box = chars[i].box;
        for (const PdfPoint corner :
             {PdfPoint{box.left, box.bottom}, PdfPoint{box.right, box.bottom},
              PdfPoint{box.left, box.top}, PdfPoint{box.right, box.top}}) {
            const float along =
                Dot(PdfPoint{corner.x - lead.origin.x, corner.y - lead.origin.y}, direction);
            from = std::min(from, along);
            to = std::max(to, along);
        }
        size = std::max(size, chars[i].size);
    }
    Rect band{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
              std::numeric_limits<float>::lowest(), std::numeric_limits<float>::lowest()};
    for (const PdfPoint corner : {Along(lead.origin, direction, from, up, kBandLow * size),
                                  Along(lead.origin, direction, to, up, kBandLow * size),
                                  Along(lead.origin, direction, from, up, kBandHigh * size),
                                  Along(lead.origin, direction, to, up, kBandHigh * size)}) {
        band.left = std::min(band.left, corner.x);
        band.bottom = std::min(band.bottom, corner.y);
        band.right = std::max(band.right, corner.x);
        band.top = std::max(band.top, corner.y);
    }
    return band;
}

std::string Number(float value) {
    char buffer[32];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 3);
    std::string text(buffer, result.ptr);
    while (text.find('.') != std::string::npos && (text.back() == '0' || text.back() == '.'))
        text.pop_back();
    return text == "-0" ? "0" : text;
}

const char* StandardFont(std::uint8_t style) {
    static constexpr const char* kFonts[3][4] = {
        {"Helvetica", "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique"},
        {"Times-Roman", "Times-Bold", "Times-Italic", "Times-BoldItalic"},
        {"Courier", "Courier-Bold", "Courier-Oblique", "Courier-BoldOblique"}};
    const int family = (style & kFontMonospaced) ? 2 : (style & kFontSerif) ? 1 : 0;
    const int variant = ((style & kFontBold) ? 1 : 0) + ((style & kFontItalic) ? 2 : 0);
    return kFonts[family][variant];
}

// The operators that draw `utf8` in font resource `font` as the placement says.
std::string DrawingOf(const MatchPlacement& placement, const std::string& font,
                      std::string_view utf8) {
    std::string text(utf8);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    const PdfPoint d = placement.direction;
    const auto channel = [&](int shift) {
        return Number(static_cast<float>((placement.color >> shift) & 0xFF) / 255.0f);
    };
    std::string ops = "q\n";
    ops += channel(16) + " " + channel(8) + " " + channel(0) + " rg\nBT\n/" + font + " " +
           Number(placement.size) + " Tf\n";
    ops += Number(d.x) + " " + Number(d.y) + " " + Number(-d.y) + " " + Number(d.x) + " " +
           Number(placement.origin.x) + " " + Number(placement.origin.y) + " Tm\n";
    ops += PdfTextLiteral(text) + " Tj\nET\nQ\n";
    return ops;
}

// Gives every other Redact annotation of a page a private Subtype until destroyed, so that
// applying the page's redactions applies only the one made for the match.
class HeldBackRedactions {
  public:
    explicit HeldBackRedactions(fz_context* ctx) : ctx_(ctx) {}
    // Renames the Redact annotations of `page`; those renamed before a failure are restored
    // all the same.
    void HoldAllOf(pdf_page* page) {
        fz_context* ctx = ctx_;
        for (pdf_annot* annot = CallMupdf(ctx, kWhat, [&] { return pdf_first_annot(ctx, page); });
             annot != nullptr;
             annot = CallMupdf(ctx, kWhat, [&] { return pdf_next_annot(ctx, annot); })) {
            if (CallMupdf(ctx, kWhat, [&] { return pdf_annot_type(ctx, annot); }) !=
                PDF_ANNOT_REDACT) {
                continue;
            }
            held_.emplace_back(ctx, pdf_keep_obj(ctx, pdf_annot_obj(ctx, annot)));
            CallMupdf(ctx, kWhat, [&] {
                pdf_dict_put_name(ctx, held_.back().get(), PDF_NAME(Subtype), kHeldSubtype);
            });
        }
    }
    ~HeldBackRedactions() {
        for (const ObjPtr& annot : held_) {
            try {
                CallMupdf(ctx_, kWhat, [&] {
                    pdf_dict_put(ctx_, annot.get(), PDF_NAME(Subtype), PDF_NAME(Redact));
                });
            } catch (const Error&) {
                // Nothing more can be done for it; the others are still restored.
            }
        }
    }
    HeldBackRedactions(const HeldBackRedactions&) = delete;
    HeldBackRedactions& operator=(const HeldBackRedactions&) = delete;

  private:
    fz_context* ctx_;
    std::vector<ObjPtr> held_;
};

void RemoveGlyphs(fz_context* ctx, pdf_document* doc, pdf_page* page,
                  const std::vector<Rect>& bands) {
    HeldBackRedactions held(ctx);
    held.HoldAllOf(page);
    AnnotPtr redaction(
        ctx, CallMupdf(ctx, kWhat, [&] { return pdf_create_annot(ctx, page, PDF_ANNOT_REDACT); }));
    CallMupdf(ctx, kWhat, [&] {
        pdf_obj* dict = pdf_annot_obj(ctx, redaction.get());
        fz_rect all = fz_empty_rect;
        pdf_obj* quads =
            pdf_dict_put_array(ctx, dict, PDF_NAME(QuadPoints), static_cast<int>(bands.size()) * 8);
        for (const Rect& band : bands) {
            for (const float value : {band.left, band.top, band.right, band.top, band.left,
                                      band.bottom, band.right, band.bottom}) {
                pdf_array_push_real(ctx, quads, value);
            }
            all = fz_union_rect(all, fz_rect{band.left, band.bottom, band.right, band.top});
        }
        pdf_dict_put_rect(ctx, dict, PDF_NAME(Rect), all);
        pdf_redact_options options{};
        options.black_boxes = 0;
        options.image_method = PDF_REDACT_IMAGE_NONE;
        pdf_redact_page(ctx, doc, page, &options);
    });
}

// Draws the new text over the page's content.
void DrawText(fz_context* ctx, pdf_document* doc, pdf_page* page, const MatchPlacement& placement,
              std::string_view utf8) {
    pdf_obj* pageObj = page->obj;
    pdf_obj* fonts = OwnPageResources(ctx, doc, pageObj, PDF_NAME(Font), kWhat);
    const std::string fontName = FreeResourceName(ctx, fonts, "RplF", kWhat);
    const ObjPtr font = NewStandardFont(ctx, doc, StandardFont(placement.style), kWhat);
    CallMupdf(ctx, kWhat, [&] { pdf_dict_puts(ctx, fonts, fontName.c_str(), font.get()); });
    AppendPageContent(ctx, doc, pageObj, DrawingOf(placement, fontName, utf8), kWhat);
}

}  // namespace

MatchPlacement PlacementOf(const PageText& text, const TextMatch& match) {
    MatchPlacement placement;
    const std::vector<TextChar>& chars = text.Chars();
    const auto first = static_cast<std::size_t>(std::max(match.first, 0));
    const auto end = std::min(chars.size(), static_cast<std::size_t>(match.first + match.count));
    if (first >= end)
        return placement;
    const TextChar& lead = chars[first];
    placement.origin = lead.origin;
    placement.direction = text.Lines()[static_cast<std::size_t>(lead.line)].direction;
    placement.size = lead.size;
    placement.color = lead.color;
    placement.style = lead.style;
    for (std::size_t start = first; start < end;) {
        std::size_t stop = start;
        while (stop < end && chars[stop].line == chars[start].line)
            ++stop;
        const PdfPoint direction =
            text.Lines()[static_cast<std::size_t>(chars[start].line)].direction;
        placement.bands.push_back(BandOf(chars, start, stop, direction));
        start = stop;
    }
    return placement;
}

void ReplaceMatch(Document& document, int page, const MatchPlacement& placement,
                  std::string_view utf8) {
    if ((document.Permissions() & permission::kModify) == 0)
        throw Error(std::string(kWhat) + ": the document does not allow changes");
    if (page < 0 || page >= document.PageCount())
        throw Error(std::string(kWhat) + ": page " + std::to_string(page) + " is out of range");
    if (placement.bands.empty())
        throw Error(std::string(kWhat) + ": the match has no characters");
    fz_context* ctx = document.fz();
    pdf_document* doc = document.pdf();
    const PagePtr loaded = document.LoadPage(page, kWhat);
    RemoveGlyphs(ctx, doc, loaded.get(), placement.bands);
    DrawText(ctx, doc, loaded.get(), placement, utf8);
    document.MarkChanged();
}

}  // namespace pdfhost::engine
