// The rectangles (PDF space) that a document view's text selection covers: its own rectangles,
// or the line boxes of its character ranges.
#pragma once

#include <utility>
#include <vector>

#include "engine/geometry.h"

namespace pdfhost {

class HostDocument;

// The selection's rectangles on `page`; empty without a view. Throws engine::Error for a page
// the engine cannot read.
std::vector<engine::Rect> SelectionRectsOn(HostDocument& document, int page);

// The selection's rectangles of every page it touches, in page order; pages the engine cannot
// read are left out.
std::vector<std::pair<int, std::vector<engine::Rect>>> SelectionRectsByPage(HostDocument& document);

}  // namespace pdfhost
