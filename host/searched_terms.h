// Every text searched on a document and where its matches stood, page by page, so that an
// apply knows which searched terms lie under its boxes: the words the user looked for are
// removed wherever else the document holds them, not only the characters under the boxes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "engine/geometry.h"
#include "engine/redaction_areas.h"

namespace pdfhost {

class SearchedTerms {
  public:
    // The matches of `needle` found on `page`: one or more boxes each, PDF page space.
    void Record(int page, const std::u32string& needle, const std::vector<engine::Rect>& boxes);

    // The needles with a match on `page` that touches `areas`, in needle order.
    std::vector<std::u32string> Under(int page, const engine::RedactionAreas& areas) const;

  private:
    struct Box {
        engine::Rect rect;  // normalised
        std::uint32_t needle;
    };
    // A page's needles and the boxes of their matches. The boxes are put in order of their
    // bottom edge (and repeats dropped) when the page is asked, or when they have doubled, so
    // that a page crowded with matches is asked about a box without a walk of all of them.
    struct Page {
        std::map<std::u32string, std::uint32_t> needles;
        std::vector<Box> boxes;
        std::size_t ordered = 0;  // the leading boxes in order
        float tallest = 0;        // the greatest height among the ordered boxes
    };
    static void Order(Page& page);

    mutable std::map<int, Page> pages_;
};

}  // namespace pdfhost
