#pragma once

#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/removed_text_matcher.h"

namespace pdfhost::engine {

// What a scrub changed.
struct ScrubCounts {
    int strings = 0;      // string values cut
    int streams = 0;      // text streams (XMP, XFA, rich text, JavaScript) cut or emptied
    int files = 0;        // embedded files dropped
    int appearances = 0;  // annotation appearances dropped
};

// Removes the texts that a redaction removed from every other place where the document holds
// them as text: each string value of every object (Info, outlines, annotations and fields,
// actions and URIs, structure tree, page labels, file names...), the XMP metadata, the XFA
// packets, rich text and JavaScript streams. Matching ignores case (see RemovedTextMatcher).
// Names, keys, operators and strings that are no text (digests, passwords, signatures,
// colour tables, language tags, default appearances) stay. An embedded file whose content
// holds a removed text, or that cannot be read, is dropped with every reference to it; a text
// stream that cannot be read is emptied. An annotation whose strings changed, or whose
// appearance shows a removed text, loses its appearance (a form then asks readers to build
// new ones). All changes or none: a MuPDF failure throws Error and leaves the document as it
// was. Unchanged objects keep their bytes.
class HiddenTextScrubber {
  public:
    HiddenTextScrubber(Document& document, const std::vector<std::u32string>& removed)
        : document_(document), matcher_(removed) {}

    ScrubCounts Run();

  private:
    Document& document_;
    RemovedTextMatcher matcher_;
};

}  // namespace pdfhost::engine
