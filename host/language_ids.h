// Numeric language identifiers of interface language tags, as resource handles use them.
#pragma once

#include <string_view>

namespace pdfhost {

// 0x0409 for "en-US"; 0 for a tag the host does not know.
int LanguageIdOf(std::string_view tag);

}  // namespace pdfhost
