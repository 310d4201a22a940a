#pragma once

#include <cstddef>
#include <vector>

#include "engine/geometry.h"

namespace pdfhost::engine {

// The colour an applied area is filled with: RGB components from 0 to 1.
struct FillColor {
    float red = 0;
    float green = 0;
    float blue = 0;
    friend bool operator==(const FillColor&, const FillColor&) = default;
};

// The areas that the Redact annotations being applied cover on one page, in PDF page space,
// and the rules that decide what content goes.
class RedactionAreas {
  public:
    struct Area {
        Rect rect;
        FillColor fill;
    };

    void Add(const Rect& rect, const FillColor& fill = {});
    bool Empty() const { return areas_.empty(); }
    const std::vector<Area>& Areas() const { return areas_; }

    // A glyph goes when the centre of its box (the font's ascender-to-descender box) lies in
    // an area shrunk at top and bottom by a quarter of the glyph's height. Boxes of adjacent
    // lines overlap when the line pitch is tight; the centre rule and the shrinking keep the
    // neighbouring lines, and the horizontal centre keeps the neighbouring characters.
    bool CoversGlyph(const Rect& box) const;
    // Whether `bounds` lies wholly inside one area (paths, and images that go entirely).
    bool Contains(const Rect& bounds) const;
    // Whether `bounds` overlaps an area (images to blank, links to drop).
    bool Touches(const Rect& bounds) const;

  private:
    // Whether `test` holds for an area whose bottom edge lies between `from` less the tallest
    // area's height and `to` (both widened for rounding): those are all the areas that can
    // reach from `from` up to `to`. Beyond a few areas (a page crowded with redactions) only
    // those are looked at, through the areas kept in order of their bottom edge; all of them
    // when a bound is not a number.
    template <typename Test>
    bool AnyReaching(float from, float to, const Test& test) const;

    std::vector<Area> areas_;
    // Indexes into `areas_` by bottom edge, and the greatest height; made when first needed.
    mutable std::vector<std::size_t> byBottom_;
    mutable float tallest_ = 0;
};

}  // namespace pdfhost::engine
