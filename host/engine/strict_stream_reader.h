#pragma once

#include <optional>
#include <string>

#include "engine/document.h"

namespace pdfhost::engine {

// The decoded bytes of stream object `num`, or nullopt when they cannot all be read. MuPDF
// reads a damaged Flate stream as far as it can with only a warning; here a Flate stream
// (the common case) is inflated with zlib and must reach its end, so that a stream that
// cannot be checked is known as such. Other filters are MuPDF's, failures included.
std::optional<std::string> ReadWholeStream(const Document& document, int num);

}  // namespace pdfhost::engine
