#pragma once

#include <vector>

#include "engine/geometry.h"

namespace pdfhost::engine {

struct PathPoint {
    float x = 0;
    float y = 0;
    friend bool operator==(const PathPoint&, const PathPoint&) = default;
};

// A subpath as straight segments; a closed one runs back from its last point to its first.
struct Polyline {
    std::vector<PathPoint> points;
    bool closed = false;
    friend bool operator==(const Polyline&, const Polyline&) = default;
};

// What a fill of `polygons` paints outside `boxes`, as closed polygons painted with the same
// fill rule (nonzero or even-odd alike): each polygon is clipped to the four strips around
// each box (left, right, below, above), so winding numbers outside the boxes are kept and
// none remains inside them. No point of the result lies inside a box (edges may run along
// one). Polygons that meet no box come back unchanged.
std::vector<Polyline> FillOutside(const std::vector<Polyline>& polygons,
                                  const std::vector<Rect>& boxes);

// The parts of the segments of `lines` that lie outside `boxes`, as open polylines (a closed
// line crossing a box opens there). Lines that meet no box come back unchanged.
std::vector<Polyline> StrokeOutside(const std::vector<Polyline>& lines,
                                    const std::vector<Rect>& boxes);

}  // namespace pdfhost::engine
