// Reading PDF text strings as the plug-in's wide text: UTF-16BE after its byte order mark, UTF-8
// after its mark, otherwise the PDF's own single-byte encoding (Latin-1 but for a few codes).
#pragma once

#include <string>
#include <string_view>

std::wstring DecodePdfText(std::string_view bytes);
