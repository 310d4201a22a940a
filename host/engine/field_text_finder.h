#pragma once

#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "engine/mupdf_types.h"
#include "engine/text_finder.h"

namespace pdfhost::engine {

// A match in the value of a text field.
struct FieldMatch {
    ObjPtr control;           // the widget that shows the value
    ObjPtr field;             // the field that holds it
    std::u32string value;     // the value searched
    TextMatch match;          // characters of `value`
    std::vector<Rect> rects;  // PDF page space
};

// Finds `pattern` in the values of the text fields (plain, rich text and file name) shown on a
// page, control by control in the page's order, each value from its start; the page's own
// text is not looked at. A field shown by two controls of the page is found under both.
//
// Rectangles: when the control's appearance shows the value's characters (whitespace aside),
// the boxes of the matched characters as drawn, one per line of the appearance; otherwise (a
// password field, a comb of dots, a missing appearance) the control's rectangle.
std::vector<FieldMatch> FindInFieldValues(Document& document, int page, const TextPattern& pattern);

}  // namespace pdfhost::engine
