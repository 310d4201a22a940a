// The editor's own Find: the next or previous match of a needle in a document, in reading order,
// going round the document from where the last match was.
#pragma once

#include <optional>

#include "engine/text_finder.h"

namespace pdfhost {

class HostDocument;

struct FoundText {
    int page = 0;
    engine::TextMatch match;
    friend bool operator==(const FoundText&, const FoundText&) = default;
};

// The match after `from` (forward) or before it, wrapping past the document's end or start;
// without `from`, the first match from the start of page `startPage` on (or the last one before
// its end). Nothing when the document holds no match. Pages the engine cannot read are passed
// over.
std::optional<FoundText> FindInDocument(HostDocument& document, const engine::TextPattern& pattern,
                                        const std::optional<FoundText>& from, int startPage,
                                        bool forward);

}  // namespace pdfhost
