// Conversions between the plug-in's wide text and UTF-8. Invalid input never throws: a bad UTF-8
// sequence or an unpaired surrogate becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view text);
