// Conversions between the wide texts of the host functions (UTF-32 on this platform) and UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace pdfhost {

// A null text counts as empty.
std::string Utf8Of(const wchar_t* text);
std::string Utf8Of(std::wstring_view text);
std::wstring WideOf(std::string_view utf8);

}  // namespace pdfhost
