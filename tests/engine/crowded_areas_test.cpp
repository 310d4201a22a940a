// Many areas on one page answer as each area alone would: a glyph, a path or an image is
// covered, contained or touched by the set exactly when it is by one of its areas.
#include <gtest/gtest.h>

#include <limits>

#include "engine/redaction_areas.h"

namespace pdfhost::engine {
namespace {

TEST(CrowdedAreasTest, ManyAreasAnswerAsTheirAreasAlone) {
    std::vector<Rect> rects;
    for (int i = 0; i < 60; ++i) {
        const float left = static_cast<float>((i * 37) % 500);
        const float bottom = static_cast<float>((i * 53) % 700);
        const float height = i % 7 == 0 ? 300.0f : static_cast<float>(5 + i % 11);
        rects.push_back(Rect{left, bottom, left + 20 + static_cast<float>(i % 5), bottom + height});
    }
    rects.push_back(Rect{-1e6f, 20000.5f, -1e6f + 3, 20010.25f});  // far away, large numbers
    RedactionAreas all;
    std::vector<RedactionAreas> alone(rects.size());
    for (std::size_t i = 0; i < rects.size(); ++i) {
        all.Add(rects[i]);
        alone[i].Add(rects[i]);
    }
    const auto any = [&](auto ask) { return std::any_of(alone.begin(), alone.end(), ask); };
    std::vector<Rect> probes;
    for (float y = -20; y < 1100; y += 7.5f) {
        for (float x = -20; x < 560; x += 13) {
            for (const float h : {1.0f, 9.0f, 40.0f})
                probes.push_back(Rect{x, y, x + h * 0.6f, y + h});
        }
    }
    probes.push_back(Rect{-1e6f + 1, 20001, -1e6f + 2, 20009});
    probes.push_back(Rect{std::numeric_limits<float>::quiet_NaN(), 1, 2, 3});
    int covered = 0;
    for (const Rect& p : probes) {
        const bool covers = any([&](const RedactionAreas& a) { return a.CoversGlyph(p); });
        EXPECT_EQ(all.CoversGlyph(p), covers) << p.left << "," << p.bottom;
        EXPECT_EQ(all.Contains(p), any([&](const RedactionAreas& a) { return a.Contains(p); }))
            << p.left << "," << p.bottom;
        EXPECT_EQ(all.Touches(p), any([&](const RedactionAreas& a) { return a.Touches(p); }))
            << p.left << "," << p.bottom;
        covered += covers ? 1 : 0;
    }
    EXPECT_GT(covered, 100);  // the probes reach the areas
    // Areas added after a question are part of the next one.
    all.Add(Rect{2000, 2000, 2010, 2010});
    EXPECT_TRUE(all.Touches(Rect{2005, 2005, 2006, 2006}));
}

}  // namespace
}  // namespace pdfhost::engine
