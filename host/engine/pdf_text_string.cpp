#include "engine/pdf_text_string.h"

#include <mupdf/fitz.h>

namespace pdfhost::engine {
namespace {

bool StartsWith(std::string_view bytes, std::string_view prefix) {
    return bytes.substr(0, prefix.size()) == prefix;
}

unsigned Byte(std::string_view bytes, std::size_t i) {
    return static_cast<unsigned char>(bytes[i]);
}

std::optional<DecodedPdfText> DecodeUtf16Be(std::string_view bytes) {
    if (bytes.size() % 2 != 0)
        return std::nullopt;
    DecodedPdfText out;
    std::size_t i = 2;
    while (i < bytes.size()) {
        out.offsets.push_back(i);
        const unsigned unit = Byte(bytes, i) << 8 | Byte(bytes, i + 1);
        if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size()) {
            const unsigned low = Byte(bytes, i + 2) << 8 | Byte(bytes, i + 3);
            if (low >= 0xDC00 && low < 0xE000) {
                out.text.push_back(
                    static_cast<char32_t>(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00)));
                i += 4;
                continue;
            }
        }
        out.text.push_back(static_cast<char32_t>(unit));
        i += 2;
    }
    out.offsets.push_back(bytes.size());
    return out;
}

DecodedPdfText DecodeUtf8Text(std::string_view bytes, std::size_t start) {
    DecodedPdfText out;
    std::size_t i = start;
    while (i < bytes.size()) {
        out.offsets.push_back(i);
        const unsigned lead = Byte(bytes, i);
        const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        char32_t code = length == 1 ? lead : lead & (0x3F >> (length - 1));
        std::size_t used = 1;
        while (used < length && i + used < bytes.size() && (Byte(bytes, i + used) & 0xC0) == 0x80)
            code = (code << 6) | (Byte(bytes, i + used++) & 0x3F);
        out.text.push_back(used == length ? code : U'\uFFFD');
        i += used;
    }
    out.offsets.push_back(bytes.size());
    return out;
}

bool IsControlByte(unsigned byte) {
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r' && byte != '\f';
}

// `bytes` without the code points of `decoded` that a removed text covers.
std::optional<std::string> CutOut(std::string_view bytes, const DecodedPdfText& decoded,
                                  const RemovedTextMatcher& matcher) {
    const std::vector<TextSpan> spans = matcher.Find(decoded.text);
    if (spans.empty())
        return std::nullopt;
    std::string out;
    std::size_t at = 0;
    for (const TextSpan& span : spans) {
        const std::size_t from = decoded.offsets[span.first];
        out.append(bytes.substr(at, from - at));
        at = decoded.offsets[span.first + span.count];
    }
    out.append(bytes.substr(at));
    return out;
}

}  // namespace

std::u32string DecodePdfDocBytes(std::string_view bytes) {
    std::u32string out;
    out.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned short code = fz_unicode_from_pdf_doc_encoding[Byte(bytes, i)];
        out.push_back(code != 0 || Byte(bytes, i) == 0 ? static_cast<char32_t>(code) : U'\uFFFD');
    }
    return out;
}

std::optional<DecodedPdfText> DecodePdfText(std::string_view bytes) {
    if (StartsWith(bytes, "\xFE\xFF"))
        return DecodeUtf16Be(bytes);
    if (StartsWith(bytes, "\xEF\xBB\xBF"))
        return DecodeUtf8Text(bytes, 3);
    DecodedPdfText out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (IsControlByte(Byte(bytes, i)))
            return std::nullopt;
        out.offsets.push_back(i);
    }
    out.offsets.push_back(bytes.size());
    out.text = DecodePdfDocBytes(bytes);
    return out;
}

std::optional<std::string> ScrubPdfText(std::string_view bytes, const RemovedTextMatcher& matcher) {
    const std::optional<DecodedPdfText> decoded = DecodePdfText(bytes);
    if (!decoded)
        return std::nullopt;
    return CutOut(bytes, *decoded, matcher);
}

std::optional<std::string> ScrubUtf8Text(std::string_view bytes,
                                         const RemovedTextMatcher& matcher) {
    return CutOut(bytes, DecodeUtf8Text(bytes, 0), matcher);
}

}  // namespace pdfhost::engine
