#include "engine/content_stream.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace pdfhost::engine {
namespace {

// Decodes UTF-8 into code points; a malformed or overlong sequence yields U+FFFD for its first
// byte and decoding goes on at the next byte.
std::vector<char32_t> DecodeUtf8(const std::string& text) {
    static constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    std::vector<char32_t> points;
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t extra = 0;
        char32_t point = lead;
        bool valid = true;
        if (lead >= 0x80) {
            if ((lead & 0xE0) == 0xC0) {
                extra = 1;
                point = lead & 0x1F;
            } else if ((lead & 0xF0) == 0xE0) {
                extra = 2;
                point = lead & 0x0F;
            } else if ((lead & 0xF8) == 0xF0) {
                extra = 3;
                point = lead & 0x07;
            } else {
                valid = false;
            }
        }
        valid = valid && i + extra < text.size();
        for (std::size_t k = 1; valid && k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            valid = (next & 0xC0) == 0x80;
            point = (point << 6) | (next & 0x3F);
        }
        if (valid && (point < kSmallest[extra] || point > 0x10FFFF))
            valid = false;
        points.push_back(valid ? point : U'\uFFFD');
        i += valid ? extra + 1 : 1;
    }
    return points;
}

}  // namespace

std::string PdfTextLiteral(const std::string& utf8) {
    std::string literal = "(";
    for (const char32_t point : DecodeUtf8(utf8)) {
        const bool latin1 = point < 0x80 || (point >= 0xA0 && point <= 0xFF);
        const auto byte = static_cast<unsigned char>(latin1 ? point : U'?');
        if (byte == '(' || byte == ')' || byte == '\\') {
            literal += '\\';
            literal += static_cast<char>(byte);
        } else if (byte < 0x20 || byte == 0x7F) {
            const char octal[] = {'\\', static_cast<char>('0' + (byte >> 6)),
                                  static_cast<char>('0' + ((byte >> 3) & 7)),
                                  static_cast<char>('0' + (byte & 7))};
            literal.append(octal, sizeof octal);
        } else {
            literal += static_cast<char>(byte);
        }
    }
    literal += ')';
    return literal;
}

void ContentStream::Number(float value) {
    char buffer[32];
    // Content streams take plain decimals; three places are finer than any device.
    const float rounded = std::round(value * 1000) / 1000;
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, rounded == 0 ? 0 : rounded,
                                      std::chars_format::fixed);
    std::string_view digits(buffer, static_cast<std::size_t>(result.ptr - buffer));
    if (digits.find('.') != std::string_view::npos) {
        while (digits.back() == '0')
            digits.remove_suffix(1);
        if (digits.back() == '.')
            digits.remove_suffix(1);
    }
    text_.append(digits);
    text_ += ' ';
}

void ContentStream::Operator(std::string_view prefix, std::string_view name,
                             std::string_view suffix) {
    text_.append(prefix);
    text_.append(name);
    text_.append(suffix);
}

void ContentStream::MapUnitSquareTo(const Rect& rect) {
    for (float value : {rect.Width(), 0.0f, 0.0f, rect.Height(), rect.left, rect.bottom}) {
        Number(value);
    }
    text_ += "cm\n";
}

void ContentStream::MoveOriginTo(float x, float y) {
    for (float value : {1.0f, 0.0f, 0.0f, 1.0f, x, y})
        Number(value);
    text_ += "cm\n";
}

void ContentStream::FillColor(float r, float g, float b) {
    for (float value : {r, g, b})
        Number(value);
    text_ += "rg\n";
}

void ContentStream::StrokeColor(float r, float g, float b) {
    for (float value : {r, g, b})
        Number(value);
    text_ += "RG\n";
}

void ContentStream::Rectangle(const Rect& rect, bool fill) {
    for (float value : {rect.left, rect.bottom, rect.Width(), rect.Height()})
        Number(value);
    text_ += fill ? "re f\n" : "re S\n";
}

void ContentStream::ClipTo(const Rect& rect) {
    for (float value : {rect.left, rect.bottom, rect.Width(), rect.Height()})
        Number(value);
    text_ += "re W n\n";
}

void ContentStream::Text(std::string_view font, float size, float x, float y,
                         const std::string& utf8) {
    Operator("BT /", font, " ");
    Number(size);
    text_ += "Tf ";
    Number(x);
    Number(y);
    text_ += "Td ";
    text_ += PdfTextLiteral(utf8);
    text_ += " Tj ET\n";
}

}  // namespace pdfhost::engine
