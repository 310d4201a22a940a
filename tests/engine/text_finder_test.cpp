#include <gtest/gtest.h>

#include "engine/text_finder.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;

// The matches of `needle` in `text`, as (first, count) pairs.
std::vector<TextMatch> Find(const PageText& text, std::u32string_view needle,
                            FindOptions options = {}, int start = 0) {
    const std::optional<TextPattern> pattern = TextPattern::Compile(needle, options);
    EXPECT_TRUE(pattern.has_value());
    return pattern ? pattern->FindAll(text, start) : std::vector<TextMatch>{};
}

std::vector<TextMatch> FindIn(std::u32string_view haystack, std::u32string_view needle,
                              FindOptions options = {}) {
    return Find(PageText::OfPlainText(haystack), needle, options);
}

using Matches = std::vector<TextMatch>;

TEST(TextPatternTest, CaseAndWholeWordFlags) {
    EXPECT_EQ(FindIn(U"John JOHN john", U"john"), (Matches{{0, 4}, {5, 4}, {10, 4}}));
    EXPECT_EQ(FindIn(U"John JOHN john", U"John", {.matchCase = true}), (Matches{{0, 4}}));
    EXPECT_EQ(FindIn(U"J\u00c9R\u00d4ME", U"j\u00e9r\u00f4me"), (Matches{{0, 6}}));

    const std::u32string_view words = U"art party smart art7 (art) art";
    EXPECT_EQ(FindIn(words, U"art").size(), 6u);
    EXPECT_EQ(FindIn(words, U"art", {.wholeWord = true}), (Matches{{0, 3}, {22, 3}, {27, 3}}));
    EXPECT_EQ(FindIn(U"ART art", U"art", {.matchCase = true, .wholeWord = true}),
              (Matches{{4, 3}}));
}

TEST(TextPatternTest, MatchesDoNotOverlapAndStartWhereAsked) {
    EXPECT_EQ(FindIn(U"aaaaa", U"aa"), (Matches{{0, 2}, {2, 2}}));
    EXPECT_EQ(Find(PageText::OfPlainText(U"ab ab ab"), U"ab", {}, 1), (Matches{{3, 2}, {6, 2}}));
    EXPECT_EQ(Find(PageText::OfPlainText(U"ab ab"), U"ab", {}, 99), Matches{});
    EXPECT_EQ(FindIn(U"nothing here", U"absent"), Matches{});
}

TEST(TextPatternTest, WhitespaceRunsMatchAnyWhitespace) {
    EXPECT_EQ(FindIn(U"John   Smith", U"John Smith"), (Matches{{0, 12}}));
    EXPECT_EQ(FindIn(U"John\u00a0Smith", U"John\r\nSmith"), (Matches{{0, 10}}));
    EXPECT_EQ(FindIn(U"JohnSmith", U"John Smith"), Matches{});
    EXPECT_EQ(FindIn(U"x file", U"\ufb01le"), (Matches{{2, 4}}));
    EXPECT_FALSE(TextPattern::Compile(U"", {}).has_value());
    EXPECT_FALSE(TextPattern::Compile(U" \r\n\t", {}).has_value());
}

class TextFinderOnPage : public EngineTest {};

TEST_F(TextFinderOnPage, APhraseFoundAcrossALineBreakHasOneRectanglePerLine) {
    const Document document = factory_.Build(PdfDescription{
        .pages = {PageDescription::TextLines({"Please call John", "Smith today, or John Smith"})}});
    const PageText text = PageText::OfPage(document, 0);
    const Matches matches = Find(text, U"john smith");

    // "Please call John" has 16 characters, so the second line starts at 16.
    ASSERT_EQ(matches, (Matches{{12, 9}, {32, 10}}));
    const std::vector<Rect> rects = text.LineBoxes(matches[0].first, matches[0].count);
    ASSERT_EQ(rects.size(), 2u);
    // "John" ends the first line (baseline 720), "Smith" opens the second (baseline 702).
    EXPECT_LT(rects[0].bottom, 720);
    EXPECT_GT(rects[0].top, 728);
    EXPECT_LT(rects[1].bottom, 702);
    EXPECT_GT(rects[1].top, 710);
    EXPECT_LT(rects[1].top, 720);
    EXPECT_NEAR(rects[1].left, 72, 0.5);
    EXPECT_GT(rects[0].left, 130);
    EXPECT_LT(rects[0].right, 200);

    // Letters never pair across a line break; a phrase on one line gives one rectangle.
    EXPECT_EQ(Find(text, U"JohnSmith"), Matches{});
    EXPECT_EQ(text.LineBoxes(matches[1].first, matches[1].count).size(), 1u);
}

}  // namespace
}  // namespace pdfhost::engine
