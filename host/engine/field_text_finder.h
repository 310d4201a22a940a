#pragma once

#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "engine/mupdf_types.h"
#include "engine/text_finder.h"

namespace pdfhost::engine {

// A match in the value of a form field, or in what a choice field's control shows.
struct FieldMatch {
    ObjPtr control;  // the widget that shows the value
    ObjPtr field;    // the field that holds it
    // The value searched, `match` counting its characters. Empty for a match in a text the
    // control shows that is not the value (an option of a list, an option's shown text), which
    // cannot be written back.
    std::u32string value;
    TextMatch match;
    std::vector<Rect> rects;  // PDF page space
};

// Finds `pattern` in the form fields shown on a page, control by control in the page's order;
// the page's own text is not looked at. A field shown by two controls of the page is found
// under both.
//   - Text fields (plain, rich text and file name): the value, from its start.
//   - Combo and list boxes: the value (the selected options' export values, several joined with
//     ", "), then the shown text of a selected option that the appearance does not draw, then
//     the options the appearance draws, less the selected ones already found in the value.
//
// Rectangles: when the control's appearance shows the value's characters (whitespace aside;
// for a choice, a selected option on a line of its own), the boxes of the matched characters
// as drawn, one per line of the appearance; otherwise (a password field, a comb of dots, a
// missing appearance, an export value that is not shown) the control's rectangle.
std::vector<FieldMatch> FindInFieldValues(Document& document, int page, const TextPattern& pattern);

}  // namespace pdfhost::engine
