#include "utf.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

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

void AppendWide(std::wstring& out, char32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            c -= 0x10000;
            out.push_back(static_cast<wchar_t>(0xD800 + (c >> 10)));
            out.push_back(static_cast<wchar_t>(0xDC00 + (c & 0x3FF)));
            return;
        }
    }
    out.push_back(static_cast<wchar_t>(c));
}

bool IsSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<char32_t>(text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size()) {
                auto low = static_cast<char32_t>(text[i + 1]);
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        if (IsSurrogate(c) || c > 0x10FFFF)
            c = kReplacement;
        AppendUtf8(out, c);
    }
    return out;
}

std::wstring FromUtf8(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out.push_back(static_cast<wchar_t>(lead));
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
            AppendWide(out, kReplacement);
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
            AppendWide(out, kReplacement);
            i = j > i + 1 ? j : i + 1;
            continue;
        }
        AppendWide(out, c);
        i = j;
    }
    return out;
}

std::wstring FromUtf16(std::u16string_view units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t c = units[i];
        if constexpr (sizeof(wchar_t) == 4) {
            const bool high = c >= 0xD800 && c <= 0xDBFF;
            if (high && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (units[i + 1] - 0xDC00);
                ++i;
            } else if (IsSurrogate(c)) {
                c = kReplacement;
            }
        }
        text.push_back(static_cast<wchar_t>(c));
    }
    return text;
}
