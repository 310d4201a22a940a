// Conversions between the plug-in's wide text and UTF-8. Wide text is UTF-16 where wchar_t has 16
// bits and UTF-32 where it has 32; both go through the same routines, which the char16_t forms
// below expose on every platform. Invalid input never throws: a bad UTF-8 sequence, an unpaired
// surrogate or a value beyond U+10FFFF becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view text);
// UTF-16 code units as wide text: pairs kept or combined as wide text needs them, an unpaired
// surrogate replaced.
std::wstring FromUtf16(std::u16string_view units);

// The same conversions for UTF-16 text of any platform.
std::string Utf16ToUtf8(std::u16string_view units);
std::u16string Utf8ToUtf16(std::string_view text);
