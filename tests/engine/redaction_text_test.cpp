// The text that an apply removes: the characters under each Redact annotation's areas, found
// through the glyph centres as the walk of the whole page finds them; and many areas on one page
// answering as each area alone would.
#include <gtest/gtest.h>

#include <limits>

#include "engine/glyph_centres.h"
#include "engine/redaction_areas.h"
#include "engine/redaction_text.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using RedactionTextTest = EngineTest;

TEST_F(RedactionTextTest, TextUnderEachAnnotationByRunOfCharacters) {
    Document document =
        OpenWritten(TextPage({"Client Jane Roe here", "Next line", "Ref 4711 and 4712"}));
    const PageText text = PageText::OfPage(document, 0);
    const struct {
        std::vector<std::string> words;  // one annotation over their rectangles
        std::vector<std::u32string> expected;
    } cases[] = {
        {{"Jane"}, {U"Jane"}},
        {{"Jane", "Roe"}, {U"Jane", U"Roe"}},  // two quads, a space between them uncovered
        {{"4711", "4712"}, {U"4711", U"4712"}},
        {{"Next"}, {U"Next"}},  // the neighbouring lines stay out
    };
    for (const auto& c : cases) {
        std::vector<Rect> rects;
        for (const std::string& word : c.words) {
            const std::vector<Rect> found = WordRects(document, 0, word);
            rects.insert(rects.end(), found.begin(), found.end());
        }
        const AnnotationId id = AddRedact(document, 0, rects, "ai_plugin_t");
        EXPECT_EQ(TextsUnder(text, AreasOfRedaction(document, id.object)), c.expected)
            << c.words.front();
    }
}

// The same on a page crowded with words, for areas of every shape.
TEST_F(RedactionTextTest, CentresFindWhatTheWholePageWalkFinds) {
    std::vector<std::string> lines;
    for (int i = 0; i < 40; ++i)
        lines.push_back("ab cd ef gh ij kl mn op qr st uv wx " + std::to_string(i));
    Document document = OpenWritten(TextPage(lines));
    const PageText text = PageText::OfPage(document, 0);
    ASSERT_GT(text.CharCount(), 1000);
    const GlyphCentres centres(text);
    const Rect page = document.PageBox(0);
    const Rect first = text.Chars().front().box;
    const Rect last = text.Chars().back().box;
    const float h = first.Height();
    const struct {
        const char* what;
        std::vector<Rect> rects;
    } cases[] = {
        {"one glyph", {first}},
        {"the last glyph", {last}},
        {"a word and a word three lines down",
         {Rect{first.left, first.bottom, first.left + 20, first.top},
          Rect{first.left, first.bottom - 3 * h, first.left + 20, first.top - 3 * h}}},
        {"a column across every line",
         {Rect{first.left + 30, page.bottom, first.left + 60, page.top}}},
        {"a band across one line", {Rect{page.left, first.bottom, page.right, first.top}}},
        {"the whole page", {page}},
        {"beside the text", {Rect{page.right - 5, page.bottom, page.right, page.bottom + 5}}},
        {"edges on the glyph's centre",
         {Rect{(first.left + first.right) / 2, first.bottom, first.right,
               (first.bottom + first.top) / 2 + h / 4}}},
    };
    for (const auto& c : cases) {
        RedactionAreas areas;
        for (const Rect& r : c.rects)
            areas.Add(r);
        const std::vector<std::u32string> walked = TextsUnder(text, areas);
        EXPECT_EQ(TextsUnder(text, areas, centres), walked) << c.what;
    }
    // A sanity check that the cases reach text at all.
    RedactionAreas all;
    all.Add(page);
    EXPECT_FALSE(TextsUnder(text, all, centres).empty());
}

// A glyph, a path or an image is covered, contained or touched by the set exactly when it is by
// one of its areas.
TEST(RedactionAreasTest, ManyAreasAnswerAsTheirAreasAlone) {
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
