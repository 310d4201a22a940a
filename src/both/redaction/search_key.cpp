#include "search_key.h"

#include <optional>

namespace {

// Positions of the dashes in the braced text, and its length.
constexpr std::array<std::size_t, 4> kDashes{9, 14, 19, 24};
constexpr std::size_t kGuidLength = 38;
constexpr wchar_t kHex[] = L"0123456789ABCDEF";

int HexValue(wchar_t c) {
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    return -1;
}

bool IsDash(std::size_t at) {
    for (const std::size_t dash : kDashes) {
        if (at == dash)
            return true;
    }
    return false;
}

std::optional<std::array<uint8_t, 16>> ParseGuid(std::wstring_view text) {
    if (text.size() != kGuidLength || text.front() != L'{' || text.back() != L'}')
        return std::nullopt;
    std::array<uint8_t, 16> bytes{};
    std::size_t byte = 0;
    for (std::size_t at = 1; at + 1 < kGuidLength;) {
        if (IsDash(at)) {
            if (text[at] != L'-')
                return std::nullopt;
            ++at;
            continue;
        }
        const int high = HexValue(text[at]);
        const int low = HexValue(text[at + 1]);
        if (high < 0 || low < 0 || IsDash(at + 1))
            return std::nullopt;
        bytes[byte++] = static_cast<uint8_t>(high << 4 | low);
        at += 2;
    }
    return bytes;
}

}  // namespace

SearchKey::SearchKey(std::wstring_view text) {
    if (const auto guid = ParseGuid(text))
        value_ = *guid;
    else
        value_ = std::wstring(text);
}

std::wstring SearchKey::Text() const {
    if (const auto* text = std::get_if<std::wstring>(&value_))
        return *text;
    const Guid& bytes = std::get<Guid>(value_);
    std::wstring text = L"{";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (IsDash(text.size()))
            text += L'-';
        text += kHex[bytes[i] >> 4];
        text += kHex[bytes[i] & 0x0F];
    }
    text += L'}';
    return text;
}
