#pragma once

#include <vector>

#include "engine/geometry.h"
#include "engine/text_page.h"

namespace pdfhost::engine {

// The characters of a page text by the centres of their boxes, bottom to top, so that the
// characters an area may cover are found without walking the whole page (a page crowded with
// redaction boxes asks once per box).
class GlyphCentres {
  public:
    explicit GlyphCentres(const PageText& text);

    // The numbers of the characters whose box centre lies in `bounds`, edges included, in
    // ascending order.
    std::vector<int> Within(const Rect& bounds) const;

  private:
    struct Centre {
        float y;
        float x;
        int index;
    };
    std::vector<Centre> byHeight_;
};

}  // namespace pdfhost::engine
