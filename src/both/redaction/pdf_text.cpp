#include "pdf_text.h"

#include "util/utf.h"

namespace {

// The character of a byte in the PDF's single-byte text encoding; U+FFFD for the unused codes.
wchar_t FromPdfDocByte(unsigned char byte) {
    static constexpr char16_t kLow[8] = {0x02D8, 0x02C7, 0x02C6, 0x02D9,
                                         0x02DD, 0x02DB, 0x02DA, 0x02DC};  // 0x18 to 0x1F
    static constexpr char16_t kHigh[33] = {
        0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044, 0x2039, 0x203A, 0x2212,
        0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141,
        0x0152, 0x0160, 0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E, 0xFFFD, 0x20AC};
    if (byte >= 0x18 && byte <= 0x1F)
        return static_cast<wchar_t>(kLow[byte - 0x18]);
    if (byte == 0x7F)
        return L'\uFFFD';
    if (byte >= 0x80 && byte <= 0xA0)
        return static_cast<wchar_t>(kHigh[byte - 0x80]);
    return static_cast<wchar_t>(byte);
}

}  // namespace

std::wstring DecodePdfText(std::string_view bytes) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() >= 2 && byte(0) == 0xFE && byte(1) == 0xFF) {
        std::u16string units;
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
            units.push_back(static_cast<char16_t>((byte(i) << 8) | byte(i + 1)));
        return FromUtf16(units);
    }
    if (bytes.size() >= 3 && byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF)
        return FromUtf8(bytes.substr(3));
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        text.push_back(FromPdfDocByte(byte(i)));
    return text;
}
