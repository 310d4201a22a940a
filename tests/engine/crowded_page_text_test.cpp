// The text under a Redact annotation found through the glyph centres gives what the walk of
// the whole page gives, for areas of every shape on a page crowded with words.
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/glyph_centres.h"
#include "engine/redaction_text.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;

class CrowdedPageTextTest : public EngineTest {};

TEST_F(CrowdedPageTextTest, CentresFindWhatTheWholePageWalkFinds) {
    std::vector<std::string> lines;
    for (int i = 0; i < 40; ++i)
        lines.push_back("ab cd ef gh ij kl mn op qr st uv wx " + std::to_string(i));
    Document document = Document::Open(
        context_,
        WritePdf("crowded.pdf", PdfDescription{.pages = {PageDescription::TextLines(lines)}}));
    const PageText text = PageText::OfPage(document, 0);
    ASSERT_GT(text.CharCount(), 1000);
    const GlyphCentres centres(text);
    const Rect page = document.PageBox(0);
    const Rect first = text.Chars().front().box;
    const Rect last = text.Chars().back().box;
    const float h = first.Height();
    struct Case {
        const char* what;
        std::vector<Rect> rects;
    };
    const Case cases[] = {
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
    for (const Case& c : cases) {
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

}  // namespace
}  // namespace pdfhost::engine
