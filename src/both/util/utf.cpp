#include "utf.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

// One code point of `units` from `i` on, `i` moved past it. 16-bit units are UTF-16, wider ones
// hold code points.
template <typename Unit>
char32_t ReadCodePoint(std::basic_string_view<Unit> units, std::size_t& i) {
    if constexpr (sizeof(Unit) == 2) {
        const char32_t c = static_cast<char16_t>(units[i++]);
        if (c >= 0xD800 && c <= 0xDBFF && i < units.size()) {
            const char32_t low = static_cast<char16_t>(units[i]);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                ++i;
                return 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
            }
        }
        return IsSurrogate(c) ? kReplacement : c;
    } else {
        const auto c = static_cast<char32_t>(units[i++]);
        return IsSurrogate(c) || c > 0x10FFFF ? kReplacement : c;
    }
}

template <typename Unit>
void AppendCodePoint(std::basic_string<Unit>& out, char32_t c) {
    if constexpr (sizeof(Unit) == 2) {
        if (c >= 0x10000) {
            c -= 0x10000;
            out.push_back(static_cast<Unit>(0xD800 + (c >> 10)));
            out.push_back(static_cast<Unit>(0xDC00 + (c & 0x3FF)));
            return;
        }
    }
    out.push_back(static_cast<Unit>(c));
}

template <typename Unit>
std::string Utf8Of(std::basic_string_view<Unit> text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();)
        AppendUtf8(out, ReadCodePoint(text, i));
    return out;
}

template <typename Unit>
std::basic_string<Unit> DecodeUtf8(std::string_view text) {
    std::basic_string<Unit> out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out.push_back(static_cast<Unit>(lead));
            ++i;
            continue;
        }
        int extra = 0;
        char32_t c = 0;
        char32_t min = 0;
        if ((lead & 0xE0) == 0xC0) {
            extra = 1, c = lead & 0x1F, min = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2, c = lead & 0x0F, min = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3, c = lead & 0x07, min = 0x10000;
        } else {
            AppendCodePoint(out, kReplacement);
            ++i;
            continue;
        }
        std::size_t j = i + 1;
        for (; j < text.size() && j <= i + static_cast<std::size_t>(extra); ++j) {
            const auto cont = static_cast<unsigned char>(text[j]);
            if ((cont & 0xC0) != 0x80)
                break;
            c = (c << 6) | (cont & 0x3F);
        }
        if (j != i + 1 + static_cast<std::size_t>(extra) || c < min || c > 0x10FFFF ||
            IsSurrogate(c)) {
            AppendCodePoint(out, kReplacement);
            i = j > i + 1 ? j : i + 1;
            continue;
        }
        AppendCodePoint(out, c);
        i = j;
    }
    return out;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    return Utf8Of(text);
}

std::wstring FromUtf8(std::string_view text) {
    return DecodeUtf8<wchar_t>(text);
}

std::wstring FromUtf16(std::u16string_view units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size();)
        AppendCodePoint(text, ReadCodePoint(units, i));
    return text;
}

std::string Utf16ToUtf8(std::u16string_view units) {
    return Utf8Of(units);
}

std::u16string Utf8ToUtf16(std::string_view text) {
    return DecodeUtf8<char16_t>(text);
}
