#include "engine/path_cutting.h"

#include <algorithm>
#include <array>

namespace pdfhost::engine {
namespace {

// A half-plane a*x + b*y <= c.
struct HalfPlane {
    float a;
    float b;
    float c;
    bool Holds(const PathPoint& p) const { return a * p.x + b * p.y <= c; }
    PathPoint Crossing(const PathPoint& p, const PathPoint& q) const {
        const float dp = a * p.x + b * p.y - c;
        const float dq = a * q.x + b * q.y - c;
        const float t = dp / (dp - dq);
        PathPoint r{p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)};
        // Land exactly on the boundary line, so rounding cannot put the point inside the box.
        if (a != 0)
            r.x = c / a;
        if (b != 0)
            r.y = c / b;
        return r;
    }
};

// One of the four strips around a box, as an intersection of half-planes (unused ones hold
// everywhere).
using Strip = std::array<HalfPlane, 3>;

constexpr HalfPlane kEverywhere{0, 0, 1};

std::array<Strip, 4> StripsAround(const Rect& box) {
    const HalfPlane left{1, 0, box.left};      // x <= left
    const HalfPlane right{-1, 0, -box.right};  // x >= right
    const HalfPlane below{0, 1, box.bottom};   // y <= bottom
    const HalfPlane above{0, -1, -box.top};    // y >= top
    const HalfPlane notLeft{-1, 0, -box.left};
    const HalfPlane notRight{1, 0, box.right};
    return {Strip{left, kEverywhere, kEverywhere}, Strip{right, kEverywhere, kEverywhere},
            Strip{below, notLeft, notRight}, Strip{above, notLeft, notRight}};
}

// Sutherland-Hodgman: the part of a polygon inside a half-plane.
std::vector<PathPoint> ClipTo(const std::vector<PathPoint>& polygon, const HalfPlane& plane) {
    std::vector<PathPoint> out;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const PathPoint& p = polygon[i];
        const PathPoint& q = polygon[(i + 1) % polygon.size()];
        const bool pIn = plane.Holds(p);
        const bool qIn = plane.Holds(q);
        if (pIn)
            out.push_back(p);
        if (pIn != qIn)
            out.push_back(plane.Crossing(p, q));
    }
    return out;
}

Rect BoundsOf(const std::vector<PathPoint>& points) {
    Rect r{points.front().x, points.front().y, points.front().x, points.front().y};
    for (const PathPoint& p : points) {
        r.left = std::min(r.left, p.x);
        r.right = std::max(r.right, p.x);
        r.bottom = std::min(r.bottom, p.y);
        r.top = std::max(r.top, p.y);
    }
    return r;
}

// Whether the closed bounds reach into the open box.
bool Meets(const Rect& bounds, const Rect& box) {
    return bounds.left < box.right && bounds.right > box.left && bounds.bottom < box.top &&
           bounds.top > box.bottom;
}

bool Inside(const PathPoint& p, const Rect& box) {
    return p.x > box.left && p.x < box.right && p.y > box.bottom && p.y < box.top;
}

// The parameter interval [enter, leave] of segment p->q inside the open box (Liang-Barsky);
// false when the segment does not enter it.
bool SpanInside(const PathPoint& p, const PathPoint& q, const Rect& box, float& enter,
                float& leave) {
    enter = 0;
    leave = 1;
    const float dx = q.x - p.x;
    const float dy = q.y - p.y;
    const float edges[4][2] = {
        {-dx, p.x - box.left}, {dx, box.right - p.x}, {-dy, p.y - box.bottom}, {dy, box.top - p.y}};
    for (const auto& [denominator, distance] : edges) {
        if (denominator == 0) {
            if (distance <= 0)
                return false;
            continue;
        }
        const float t = distance / denominator;
        if (denominator < 0)
            enter = std::max(enter, t);
        else
            leave = std::min(leave, t);
    }
    return enter < leave;
}

PathPoint At(const PathPoint& p, const PathPoint& q, float t) {
    return PathPoint{p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)};
}

using Segment = std::array<PathPoint, 2>;

// The pieces of a segment outside a box; end points that fall inside (by rounding) are moved
// onto the nearest edge. False when the segment stays whole.
bool CutSegment(const Segment& segment, const Rect& box, std::vector<Segment>& out) {
    float enter = 0;
    float leave = 0;
    if (!SpanInside(segment[0], segment[1], box, enter, leave)) {
        out.push_back(segment);
        return false;
    }
    auto onEdge = [&](PathPoint p) {
        if (!Inside(p, box))
            return p;
        const float distances[4] = {p.x - box.left, box.right - p.x, p.y - box.bottom,
                                    box.top - p.y};
        const auto nearest = std::min_element(distances, distances + 4) - distances;
        if (nearest == 0)
            p.x = box.left;
        else if (nearest == 1)
            p.x = box.right;
        else if (nearest == 2)
            p.y = box.bottom;
        else
            p.y = box.top;
        return p;
    };
    if (enter > 0)
        out.push_back({segment[0], onEdge(At(segment[0], segment[1], enter))});
    if (leave < 1)
        out.push_back({onEdge(At(segment[0], segment[1], leave)), segment[1]});
    return true;
}

}  // namespace

std::vector<Polyline> FillOutside(const std::vector<Polyline>& polygons,
                                  const std::vector<Rect>& boxes) {
    std::vector<Polyline> current;
    for (const Polyline& polygon : polygons) {
        if (polygon.points.size() >= 3)
            current.push_back(Polyline{polygon.points, true});
    }
    for (const Rect& box : boxes) {
        std::vector<Polyline> next;
        for (Polyline& polygon : current) {
            if (!Meets(BoundsOf(polygon.points), box)) {
                next.push_back(std::move(polygon));
                continue;
            }
            for (const Strip& strip : StripsAround(box)) {
                std::vector<PathPoint> part = polygon.points;
                for (const HalfPlane& plane : strip) {
                    if (part.empty())
                        break;
                    part = ClipTo(part, plane);
                }
                if (part.size() >= 3)
                    next.push_back(Polyline{std::move(part), true});
            }
        }
        current = std::move(next);
    }
    return current;
}

std::vector<Polyline> StrokeOutside(const std::vector<Polyline>& lines,
                                    const std::vector<Rect>& boxes) {
    std::vector<Polyline> result;
    for (const Polyline& line : lines) {
        if (line.points.empty())
            continue;
        const Rect bounds = BoundsOf(line.points);
        if (std::none_of(boxes.begin(), boxes.end(),
                         [&](const Rect& box) { return Meets(bounds, box); })) {
            result.push_back(line);
            continue;
        }
        std::vector<Segment> pieces;
        const std::size_t count = line.points.size();
        for (std::size_t i = 0; i + 1 < count + (line.closed ? 1 : 0); ++i)
            pieces.push_back({line.points[i], line.points[(i + 1) % count]});
        bool cut = false;
        for (const Rect& box : boxes) {
            std::vector<Segment> kept;
            for (const Segment& piece : pieces)
                cut = CutSegment(piece, box, kept) || cut;
            pieces = std::move(kept);
        }
        if (!cut) {
            result.push_back(line);
            continue;
        }
        // Consecutive pieces that meet are drawn as one polyline, so their joins stay.
        const std::size_t first = result.size();
        for (const Segment& piece : pieces) {
            if (result.size() == first || result.back().points.back() != piece[0])
                result.push_back(Polyline{{piece[0]}, false});
            result.back().points.push_back(piece[1]);
        }
    }
    return result;
}

}  // namespace pdfhost::engine
