#include "engine/text_page.h"

#include <mupdf/ucdn.h>

#include <algorithm>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

// Fixed options of the structured text: changing them changes the numbering.
constexpr int kTextOptions = 0;

using TextPagePtr = MupdfPtr<fz_stext_page, fz_drop_stext_page>;
using DevicePtr = MupdfPtr<fz_device, fz_drop_device>;

struct Collected {
    std::vector<TextChar> chars;
    std::vector<TextLine> lines;
};

std::uint8_t StyleOf(fz_context* ctx, fz_font* font) {
    if (font == nullptr)
        return kFontPlain;
    std::uint8_t style = kFontPlain;
    if (fz_font_is_bold(ctx, font))
        style |= kFontBold;
    if (fz_font_is_italic(ctx, font))
        style |= kFontItalic;
    if (fz_font_is_serif(ctx, font))
        style |= kFontSerif;
    if (fz_font_is_monospaced(ctx, font))
        style |= kFontMonospaced;
    return style;
}

Rect ToRect(const fz_rect& rect) {
    return Rect{rect.x0, rect.y0, rect.x1, rect.y1};
}

// Every optional content group of the document is shown while it lives, as it was afterwards: a
// layer that the file hides is still in it, so its text is read, found and redacted like any
// other.
class AllLayersShown {
  public:
    AllLayersShown(fz_context* ctx, pdf_document* pdf) : ctx_(ctx), pdf_(pdf) {
        const int count = pdf_count_layers(ctx, pdf);
        for (int layer = 0; layer < count; ++layer) {
            if (pdf_layer_is_enabled(ctx, pdf, layer) == 0) {
                pdf_enable_layer(ctx, pdf, layer, 1);
                hidden_.push_back(layer);
            }
        }
    }
    AllLayersShown(const AllLayersShown&) = delete;
    AllLayersShown& operator=(const AllLayersShown&) = delete;
    ~AllLayersShown() {
        for (const int layer : hidden_)
            pdf_enable_layer(ctx_, pdf_, layer, 0);
    }

  private:
    fz_context* ctx_;
    pdf_document* pdf_;
    std::vector<int> hidden_;
};

// The characters of a structured-text page (MuPDF space), moved to PDF page space by `toPdf`.
Collected Collect(fz_context* ctx, const fz_stext_page* page, fz_matrix toPdf) {
    Collected out;
    for (const fz_stext_block* block = page->first_block; block != nullptr; block = block->next) {
        if (block->type != FZ_STEXT_BLOCK_TEXT)
            continue;
        for (const fz_stext_line* line = block->u.t.first_line; line != nullptr;
             line = line->next) {
            TextLine numbered;
            numbered.first = static_cast<int>(out.chars.size());
            const fz_point direction = fz_normalize_vector(fz_transform_vector(line->dir, toPdf));
            numbered.direction = PdfPoint{direction.x, direction.y};
            const int lineIndex = static_cast<int>(out.lines.size());
            for (const fz_stext_char* ch = line->first_char; ch != nullptr; ch = ch->next) {
                const fz_point origin = fz_transform_point(ch->origin, toPdf);
                TextChar numberedChar;
                numberedChar.code = static_cast<char32_t>(ch->c);
                numberedChar.folded = FoldCase(numberedChar.code);
                numberedChar.line = lineIndex;
                numberedChar.box = ToRect(fz_transform_rect(fz_rect_from_quad(ch->quad), toPdf));
                numberedChar.origin = PdfPoint{origin.x, origin.y};
                numberedChar.size = ch->size;
                numberedChar.color = static_cast<std::uint32_t>(ch->color) & 0xFFFFFFu;
                numberedChar.style = StyleOf(ctx, ch->font);
                out.chars.push_back(numberedChar);
            }
            numbered.count = static_cast<int>(out.chars.size()) - numbered.first;
            if (numbered.count > 0)
                out.lines.push_back(numbered);
        }
    }
    return out;
}

// Runs `draw(device)` into a new structured-text page bounded by `bounds` and collects it.
template <class Draw>
Collected Extract(fz_context* ctx, const std::string& what, fz_rect bounds, fz_matrix toPdf,
                  Draw draw) {
    TextPagePtr text(ctx, CallMupdf(ctx, what, [&] { return fz_new_stext_page(ctx, bounds); }));
    fz_stext_options options{};
    options.flags = kTextOptions;
    DevicePtr device(
        ctx, CallMupdf(ctx, what, [&] { return fz_new_stext_device(ctx, text.get(), &options); }));
    CallMupdf(ctx, what, [&] {
        draw(device.get());
        fz_close_device(ctx, device.get());
    });
    return Collect(ctx, text.get(), toPdf);
}

}  // namespace

PageText PageText::OfPage(const Document& document, int page) {
    if (page < 0 || page >= document.PageCount())
        throw Error("page " + std::to_string(page) + " is out of range");
    fz_context* ctx = document.fz();
    const std::string what = "cannot read the text of page " + std::to_string(page);
    const PagePtr loaded = document.LoadPage(page, what);
    struct Frame {
        fz_rect bounds;
        fz_matrix ctm;
    };
    const Frame frame = CallMupdf(ctx, what, [&] {
        Frame f{};
        pdf_page_transform(ctx, loaded.get(), &f.bounds, &f.ctm);
        f.bounds = fz_transform_rect(f.bounds, f.ctm);
        return f;
    });
    Collected collected =
        Extract(ctx, what, frame.bounds, fz_invert_matrix(frame.ctm), [&](fz_device* device) {
            const AllLayersShown shown(ctx, document.pdf());
            fz_run_page_contents(ctx, &loaded.get()->super, device, fz_identity, nullptr);
        });
    return PageText(std::move(collected.chars), std::move(collected.lines));
}

PageText PageText::OfAnnotation(fz_context* ctx, pdf_annot* annot) {
    const std::string what = "cannot read the text of an annotation";
    struct Frame {
        fz_rect bounds;
        fz_matrix ctm;
    };
    const Frame frame = CallMupdf(ctx, what, [&] {
        Frame f{};
        fz_rect mediabox;
        pdf_page_transform(ctx, pdf_annot_page(ctx, annot), &mediabox, &f.ctm);
        f.bounds = pdf_bound_annot(ctx, annot);
        return f;
    });
    Collected collected =
        Extract(ctx, what, frame.bounds, fz_invert_matrix(frame.ctm), [&](fz_device* device) {
            const AllLayersShown shown(ctx, pdf_annot_page(ctx, annot)->doc);
            pdf_run_annot(ctx, annot, device, fz_identity, nullptr);
        });
    return PageText(std::move(collected.chars), std::move(collected.lines));
}

PageText PageText::OfPlainText(std::u32string_view text) {
    std::vector<TextChar> chars;
    chars.reserve(text.size());
    for (const char32_t code : text) {
        TextChar ch;
        ch.code = code;
        ch.folded = FoldCase(code);
        chars.push_back(ch);
    }
    std::vector<TextLine> lines;
    if (!chars.empty())
        lines.push_back(TextLine{0, static_cast<int>(chars.size()), {1, 0}});
    return PageText(std::move(chars), std::move(lines));
}

std::u32string PageText::Slice(int first, int count) const {
    std::u32string text;
    const int end = std::min(CharCount(), first + std::max(count, 0));
    for (int i = std::max(first, 0); i < end; ++i)
        text += chars_[static_cast<std::size_t>(i)].code;
    return text;
}

std::vector<Rect> PageText::LineBoxes(int first, int count) const {
    std::vector<Rect> boxes;
    int currentLine = -1;
    const int end = std::min(CharCount(), first + std::max(count, 0));
    for (int i = std::max(first, 0); i < end; ++i) {
        const TextChar& ch = chars_[static_cast<std::size_t>(i)];
        if (ch.line != currentLine) {
            boxes.push_back(ch.box);
            currentLine = ch.line;
            continue;
        }
        Rect& box = boxes.back();
        box = Rect{std::min(box.left, ch.box.left), std::min(box.bottom, ch.box.bottom),
                   std::max(box.right, ch.box.right), std::max(box.top, ch.box.top)};
    }
    return boxes;
}

char32_t FoldCase(char32_t code) {
    return code > 0x10FFFF ? code : static_cast<char32_t>(fz_tolower(static_cast<int>(code)));
}

bool IsWordChar(char32_t code) {
    if (code < 0x80) {
        return (code >= U'0' && code <= U'9') || (code >= U'a' && code <= U'z') ||
               (code >= U'A' && code <= U'Z');
    }
    if (code > 0x10FFFF)
        return false;
    switch (ucdn_get_general_category(static_cast<std::uint32_t>(code))) {
        case UCDN_GENERAL_CATEGORY_LL:
        case UCDN_GENERAL_CATEGORY_LM:
        case UCDN_GENERAL_CATEGORY_LO:
        case UCDN_GENERAL_CATEGORY_LT:
        case UCDN_GENERAL_CATEGORY_LU:
        case UCDN_GENERAL_CATEGORY_MC:
        case UCDN_GENERAL_CATEGORY_ME:
        case UCDN_GENERAL_CATEGORY_MN:
        case UCDN_GENERAL_CATEGORY_ND:
        case UCDN_GENERAL_CATEGORY_NL:
        case UCDN_GENERAL_CATEGORY_NO:
            return true;
        default:
            return false;
    }
}

bool IsSpaceChar(char32_t code) {
    switch (code) {
        case U' ':
        case U'\t':
        case U'\n':
        case U'\v':
        case U'\f':
        case U'\r':
        case 0x85:
        case 0xA0:
        case 0x1680:
        case 0x2028:
        case 0x2029:
        case 0x202F:
        case 0x205F:
        case 0x3000:
            return true;
        default:
            return code >= 0x2000 && code <= 0x200A;
    }
}

std::u32string DecodeUtf8(std::string_view utf8) {
    std::u32string text;
    const std::string bytes(utf8);  // fz_chartorune reads up to a terminating zero
    std::size_t at = 0;
    while (at < bytes.size()) {
        int rune = 0;
        const int length = fz_chartorune(&rune, bytes.c_str() + at);
        text += static_cast<char32_t>(rune);
        at += static_cast<std::size_t>(std::max(length, 1));
    }
    return text;
}

std::string EncodeUtf8(std::u32string_view text) {
    std::string bytes;
    char buffer[8];
    for (const char32_t code : text) {
        const int rune = code > 0x10FFFF ? 0xFFFD : static_cast<int>(code);
        bytes.append(buffer, static_cast<std::size_t>(fz_runetochar(buffer, rune)));
    }
    return bytes;
}

}  // namespace pdfhost::engine
