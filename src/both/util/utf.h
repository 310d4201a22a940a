// Conversions between the plug-in's wide text and UTF-8. Invalid input never throws: a bad UTF-8
// sequence or an unpaired surrogate becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view text);
// UTF-16 code units as wide text: kept as they are where wide text is UTF-16, combined into code
// points where it is UTF-32 (an unpaired surrogate becomes U+FFFD there).
std::wstring FromUtf16(std::u16string_view units);
