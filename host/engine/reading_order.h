// The order in which a reader reads the characters of one line. Right-to-left text (Hebrew,
// Arabic) is often stored in the order it is drawn, left to right, so its words appear
// reversed in the stored order; such a line is put back into logical order by the inverse of the
// Unicode bidirectional algorithm.
#pragma once

#include <vector>

#include "engine/text_page.h"

namespace pdfhost::engine {

// The indices of the characters of `line` in reading order. A line without right-to-left
// letters, or whose right-to-left letters are stored as read (drawn right to left), keeps its
// stored order.
std::vector<int> ReadingOrderOf(const PageText& text, const TextLine& line);

}  // namespace pdfhost::engine
