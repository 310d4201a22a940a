#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/removed_text_matcher.h"

namespace pdfhost::engine {

// The bytes of a PDF text string read as code points, each knowing the bytes it came from,
// so that characters can be cut out while every other byte stays exactly as it was.
// UTF-16BE and UTF-8 strings carry their byte order mark; anything else is PDFDocEncoding.
struct DecodedPdfText {
    std::u32string text;
    std::vector<std::size_t> offsets;  // byte offset of each code point, plus the end
};

// Nullopt for bytes that are no text: PDFDocEncoding with control bytes (binary data such as
// a colour table or a digest) or UTF-16 of odd length.
std::optional<DecodedPdfText> DecodePdfText(std::string_view bytes);

// Code points of bytes in PDFDocEncoding (undefined bytes become U+FFFD).
std::u32string DecodePdfDocBytes(std::string_view bytes);

// The string's bytes with every removed text cut out; nullopt when none occurs (or the bytes
// are no text), so that an untouched string is never rewritten.
std::optional<std::string> ScrubPdfText(std::string_view bytes, const RemovedTextMatcher& matcher);
// The same for UTF-8 without a byte order mark (the text of a stream).
std::optional<std::string> ScrubUtf8Text(std::string_view bytes, const RemovedTextMatcher& matcher);

}  // namespace pdfhost::engine
