#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/removed_text_matcher.h"

namespace pdfhost::engine {

// An XML document in UTF-8 (XMP metadata, an XFA packet, rich text) with every removed text
// cut out of its character data, CDATA sections, comments and attribute values; element and
// attribute names and the markup stay as they are. Nullopt when nothing occurs.
std::optional<std::string> ScrubXmlText(std::string_view xml, const RemovedTextMatcher& matcher);

}  // namespace pdfhost::engine
