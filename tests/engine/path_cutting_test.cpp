// Paths that cross a redaction box are cut to what lies outside it: the geometry on its own,
// then on pages, in form XObjects and in tiling patterns, read back through MuPDF's device.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/path_cutting.h"
#include "engine/redaction.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

bool StrictlyInside(const PathPoint& p, const Rect& box, float margin = 1e-3f) {
    return p.x > box.left + margin && p.x < box.right - margin && p.y > box.bottom + margin &&
           p.y < box.top - margin;
}

float Area(const std::vector<Polyline>& polygons) {
    float sum = 0;
    for (const Polyline& polygon : polygons) {
        float twice = 0;
        for (std::size_t i = 0; i < polygon.points.size(); ++i) {
            const PathPoint& p = polygon.points[i];
            const PathPoint& q = polygon.points[(i + 1) % polygon.points.size()];
            twice += p.x * q.y - q.x * p.y;
        }
        sum += std::fabs(twice) / 2;
    }
    return sum;
}

// Calls `visit` with the ends of each segment of `lines`, closing segments included.
template <typename Visit>
void ForEachSegment(const std::vector<Polyline>& lines, Visit visit) {
    for (const Polyline& line : lines) {
        const std::size_t n = line.points.size();
        for (std::size_t i = 0; i + 1 < n + (line.closed ? 1 : 0); ++i)
            visit(line.points[i], line.points[(i + 1) % n]);
    }
}

float Length(const std::vector<Polyline>& lines) {
    float sum = 0;
    ForEachSegment(lines, [&](const PathPoint& p, const PathPoint& q) {
        sum += std::hypot(q.x - p.x, q.y - p.y);
    });
    return sum;
}

Polyline Square(float x, float y, float side) {
    return Polyline{{{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}}, true};
}

Polyline Open(std::vector<PathPoint> points) {
    return Polyline{std::move(points), false};
}

struct CutCase {
    const char* name;
    std::vector<Polyline> shapes;
    std::vector<Rect> boxes;
    float fillArea;      // what a fill of the shapes paints outside the boxes
    float strokeLength;  // what a stroke of them draws outside the boxes
};

const float kRoot2 = std::sqrt(2.0f);

const CutCase kCutCases[] = {
    {"square beside the box", {Square(0, 0, 10)}, {{20, 20, 30, 30}}, 100, 40},
    {"square half under the box", {Square(0, 0, 10)}, {{5, -5, 20, 20}}, 50, 20},
    {"box in the middle of a square", {Square(0, 0, 10)}, {{4, 4, 6, 6}}, 96, 40},
    {"square wholly under the box", {Square(2, 2, 4)}, {{0, 0, 10, 10}}, 0, 0},
    {"diagonal line through the box", {Open({{0, 0}, {10, 10}})}, {{4, 4, 6, 6}}, 0, 8 * kRoot2},
    // The sides along the box's edges stay.
    {"triangle across the box",
     {Polyline{{{0, 0}, {10, 0}, {0, 10}}, true}},
     {{0, 0, 5, 2}},
     40,
     20 + 10 * kRoot2},
    {"two boxes on one square", {Square(0, 0, 10)}, {{-1, -1, 3, 11}, {7, -1, 11, 11}}, 40, 8},
    {"open polyline leaving and re-entering",
     {Open({{0, 5}, {10, 5}, {10, 0}, {0, 0}})},
     {{2, -1, 8, 6}},
     20,
     4 + 5 + 4},
};

class PathCuttingTest : public ::testing::TestWithParam<CutCase> {};

TEST_P(PathCuttingTest, WhatLiesOutsideStaysAndNothingInsideRemains) {
    const CutCase& c = GetParam();
    const std::vector<Polyline> fills = FillOutside(c.shapes, c.boxes);
    const std::vector<Polyline> strokes = StrokeOutside(c.shapes, c.boxes);
    EXPECT_NEAR(Area(fills), c.fillArea, 1e-3);
    EXPECT_NEAR(Length(strokes), c.strokeLength, 1e-3);
    for (const auto* parts : {&fills, &strokes}) {
        for (const Polyline& part : *parts) {
            for (const PathPoint& p : part.points) {
                for (const Rect& box : c.boxes)
                    EXPECT_FALSE(StrictlyInside(p, box, 0)) << p.x << " " << p.y;
            }
        }
    }
}

TEST(PathCuttingShapeTest, ShapesMeetingNoBoxComeBackUnchanged) {
    const std::vector<Polyline> shapes = {Square(0, 0, 10), Open({{20, 0}, {30, 0}, {30, 5}})};
    const std::vector<Rect> boxes = {Rect{50, 50, 60, 60}};
    EXPECT_EQ(StrokeOutside(shapes, boxes), shapes);
    EXPECT_EQ(FillOutside({shapes[0]}, boxes), (std::vector<Polyline>{shapes[0]}));
}

INSTANTIATE_TEST_SUITE_P(Shapes, PathCuttingTest, ::testing::ValuesIn(kCutCases),
                         [](const auto& info) { return CaseName(info.param.name); });

// ---- In documents: every subpath MuPDF draws on page 1 (curves by their control points), in
// PDF page space.

struct PathCollector {
    fz_device super;
    fz_matrix ctm;
    std::vector<Polyline>* lines;
};

PathPoint OnPage(void* arg, float x, float y) {
    const fz_point p = fz_transform_point_xy(x, y, static_cast<PathCollector*>(arg)->ctm);
    return PathPoint{p.x, 792 - p.y};  // MuPDF space is y down
}

void MoveTo(fz_context*, void* arg, float x, float y) {
    static_cast<PathCollector*>(arg)->lines->push_back(Polyline{{OnPage(arg, x, y)}, false});
}

void LineTo(fz_context*, void* arg, float x, float y) {
    static_cast<PathCollector*>(arg)->lines->back().points.push_back(OnPage(arg, x, y));
}

void CurveTo(fz_context* ctx, void* arg, float x1, float y1, float x2, float y2, float x3,
             float y3) {
    LineTo(ctx, arg, x1, y1);
    LineTo(ctx, arg, x2, y2);
    LineTo(ctx, arg, x3, y3);
}

void ClosePath(fz_context*, void* arg) {
    static_cast<PathCollector*>(arg)->lines->back().closed = true;
}

void RectTo(fz_context*, void* arg, float x1, float y1, float x2, float y2) {
    static_cast<PathCollector*>(arg)->lines->push_back(Polyline{
        {OnPage(arg, x1, y1), OnPage(arg, x2, y1), OnPage(arg, x2, y2), OnPage(arg, x1, y2)},
        true});
}

void Walk(fz_context* ctx, fz_device* dev, const fz_path* path, fz_matrix ctm) {
    static const fz_path_walker walker = {MoveTo,  LineTo,  CurveTo, ClosePath,
                                          nullptr, nullptr, nullptr, RectTo};
    auto* collector = reinterpret_cast<PathCollector*>(dev);
    collector->ctm = ctm;
    fz_walk_path(ctx, path, &walker, collector);
}

// Whether some point of a segment of `lines` lies inside `box` (sampled finely).
bool AnySegmentEnters(const std::vector<Polyline>& lines, const Rect& box) {
    constexpr int kSamples = 256;
    bool enters = false;
    ForEachSegment(lines, [&](const PathPoint& p, const PathPoint& q) {
        for (int k = 0; k <= kSamples; ++k) {
            const float t = static_cast<float>(k) / kSamples;
            enters |= StrictlyInside({p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)}, box, 0.01f);
        }
    });
    return enters || std::any_of(lines.begin(), lines.end(), [&](const Polyline& line) {
               return line.points.size() == 1 && StrictlyInside(line.points[0], box, 0.01f);
           });
}

std::vector<Polyline> PathsOf(Context& context, const std::string& path) {
    Document document = Document::Open(context, path);
    fz_context* ctx = document.fz();
    std::vector<Polyline> lines;
    CallMupdf(ctx, "collect paths", [&] {
        auto* dev = static_cast<PathCollector*>(fz_new_derived_device(ctx, PathCollector));
        dev->lines = &lines;
        dev->super.fill_path = [](fz_context* c, fz_device* d, const fz_path* p, int, fz_matrix m,
                                  fz_colorspace*, const float*, float,
                                  fz_color_params) { Walk(c, d, p, m); };
        dev->super.stroke_path = [](fz_context* c, fz_device* d, const fz_path* p,
                                    const fz_stroke_state*, fz_matrix m, fz_colorspace*,
                                    const float*, float, fz_color_params) { Walk(c, d, p, m); };
        dev->super.clip_path = [](fz_context* c, fz_device* d, const fz_path* p, int, fz_matrix m,
                                  fz_rect) { Walk(c, d, p, m); };
        const PagePtr page = document.LoadPage(0, "load");
        fz_try(ctx) {
            fz_run_page(ctx, &page.get()->super, &dev->super, fz_identity, nullptr);
            fz_close_device(ctx, &dev->super);
        }
        fz_always(ctx) {
            fz_drop_device(ctx, &dev->super);
        }
        fz_catch(ctx) fz_rethrow(ctx);
    });
    return lines;
}

// Paths crossing the box (72..272 x 690..730 in page space) around its edges, drawn by each
// kind of painting operator, with the far corner (300, 750) outside the box on each.
const std::string kCrossingPaths =
    "0 0 1 RG 2 w 50 700 m 300 750 l S\n"              // a stroke
    "50 710 m 300 710 l S\n"                           // a level stroke
    "0 1 0 rg 60 680 240 70 re f\n"                    // a rectangle round the box's edge
    "1 0 0 rg 100 650 m 300 750 l 150 760 l h f*\n"    // a triangle, even-odd
    "0 0 0 rg 60 710 m 200 800 300 600 300 750 c b\n"  // a curve, filled and stroked
    "q 100 700 m 300 750 l 120 760 l h W n 0 0 612 792 re f Q\n";  // a clip

const Rect kBox{72, 690, 272, 730};

struct PathPlace {
    const char* name;
    std::string (*build)(RawPdf&);
};

const PathPlace kPathPlaces[] = {
    {"page content", [](RawPdf& pdf) { return RawDocument(pdf, {{kCrossingPaths}}); }},
    {"form XObject",
     [](RawPdf& pdf) {
         const int inner = pdf.AddStream("/Type /XObject /Subtype /Form /BBox [-100 -100 700 900]",
                                         kCrossingPaths);
         const int outer = pdf.AddStream(
             "/Type /XObject /Subtype /Form /BBox [-100 -100 700 900] /Matrix [1 0 0 1 10 0] "
             "/Resources << /XObject << /I " +
                 Ref(inner) + " >> >>",
             "q 1 0 0 1 -10 0 cm /I Do Q");
         return RawDocument(pdf, {{"/O Do\n", "<< /XObject << /O " + Ref(outer) + " >> >>"}});
     }},
    {"tiling pattern",
     [](RawPdf& pdf) {
         // One tile, placed on the page where it is painted.
         const int pattern = pdf.AddStream(
             "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 612 792] "
             "/XStep 612 /YStep 792 /Resources << >>",
             kCrossingPaths);
         return RawDocument(pdf, {{"/Pattern cs /P1 scn 0 0 612 792 re f\n",
                                   "<< /Pattern << /P1 " + Ref(pattern) + " >> >>"}});
     }},
};

void PrintTo(const PathPlace& place, std::ostream* out) {
    *out << place.name;
}

class PathPlacesTest : public EngineTest, public ::testing::WithParamInterface<PathPlace> {};

TEST_P(PathPlacesTest, CrossingPathsKeepNothingUnderTheBox) {
    RawPdf raw;
    Document document = OpenBytes(GetParam().build(raw));
    ASSERT_TRUE(AnySegmentEnters(PathsOf(context_, PathOf("in.pdf")), kBox));

    const std::string output = ApplyAndSave(document, {AddRedact(document, 0, {kBox})},
                                            PathOf("out.pdf"), RedactionOptions{false});

    const std::vector<Polyline> after = PathsOf(context_, output);
    EXPECT_FALSE(AnySegmentEnters(after, kBox));
    // The far corner shared by the paths stays, once per path at least.
    int corners = 0;
    for (const Polyline& line : after) {
        corners += static_cast<int>(
            std::count_if(line.points.begin(), line.points.end(), [](const PathPoint& p) {
                return std::fabs(p.x - 300) < 0.01f && std::fabs(p.y - 750) < 0.01f;
            }));
    }
    EXPECT_GE(corners, 4);
    EXPECT_THAT(PdfInfo(output), Not(HasSubstr("Error")));
    // What lies outside the box still paints: the stroke's start, left of the box.
    EXPECT_LT(GreyAt(output, 55, 701), 250);
}

INSTANTIATE_TEST_SUITE_P(Places, PathPlacesTest, ::testing::ValuesIn(kPathPlaces),
                         [](const auto& info) { return CaseName(info.param.name); });

}  // namespace
}  // namespace pdfhost::engine
