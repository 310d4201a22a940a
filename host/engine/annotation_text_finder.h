#pragma once

#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "engine/mupdf_types.h"
#include "engine/text_finder.h"

namespace pdfhost::engine {

// A match in the text that an annotation's appearance draws.
struct AnnotationMatch {
    ObjPtr annotation;        // the annotation's dictionary
    TextMatch match;          // characters of the appearance's text
    std::vector<Rect> rects;  // the matched glyphs' boxes, one per line, PDF page space
};

// The text drawn by the appearance of one annotation, PDF page space.
struct AnnotationText {
    ObjPtr annotation;  // the annotation's dictionary
    PageText text;
};

// The texts drawn by the appearances of a page's annotations that are searched (see below), in
// the page's order; annotations that draw no text are left out.
std::vector<AnnotationText> AnnotationTextsOf(Document& document, int page);

// Finds `pattern` in the text drawn by the appearances of a page's annotations (free text,
// stamps, and any other kind that draws text), annotation by annotation in the page's order.
// Widgets are left to the field finder, redaction marks and popups are not looked at. An
// annotation met by a redaction area goes with its appearance when the redaction is applied,
// so a match here is removed by marking its rectangles.
std::vector<AnnotationMatch> FindInAnnotationAppearances(Document& document, int page,
                                                         const TextPattern& pattern);

}  // namespace pdfhost::engine
