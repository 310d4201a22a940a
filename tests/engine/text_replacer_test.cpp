// Replacing a match by new text on the page, written by the content writer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/content_stream.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/redaction.h"
#include "engine/text_replacer.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class TextReplacerTest : public EngineTest {
  protected:
    // The placement of the first match of `needle` on page 0.
    MatchPlacement Placement(const Document& document, std::u32string_view needle) {
        const PageText text = PageText::OfPage(document, 0);
        const std::vector<TextMatch> matches = TextPattern::Compile(needle, {})->FindAll(text);
        EXPECT_FALSE(matches.empty());
        return matches.empty() ? MatchPlacement{} : PlacementOf(text, matches.front());
    }

    std::string SavedText(Document& document) {
        return RunCommand("pdftotext -layout '" + Saved(document, "saved.pdf") + "' -");
    }
};

TEST_F(TextReplacerTest, TheMatchGivesWayToTheNewTextAndNothingElseMoves) {
    // 12 pt lines only 10 pt apart, the same words above and below the match.
    PageDescription page;
    for (const float y : {720.0f, 710.0f, 700.0f})
        page.Add(TextItem{.x = 72, .y = y, .size = 12, .text = "Hello John Smith here"});
    Document document = factory_.Build(PdfDescription{.pages = {page}});
    const PageText before = PageText::OfPage(document, 0);
    const std::vector<TextMatch> johns = TextPattern::Compile(U"John", {})->FindAll(before);
    ASSERT_EQ(johns.size(), 3u);
    const MatchPlacement middle = PlacementOf(before, johns[1]);
    EXPECT_NEAR(middle.origin.y, 710, 0.01);
    EXPECT_NEAR(middle.size, 12, 0.01);
    ASSERT_EQ(middle.bands.size(), 1u);
    EXPECT_GT(middle.bands[0].bottom, 712);
    EXPECT_LT(middle.bands[0].top, 717);

    ReplaceMatch(document, 0, middle, "Jane");

    const PageText after = PageText::OfPage(document, 0);
    // The untouched lines keep their characters; the new text comes last in the numbering.
    EXPECT_EQ(TextPattern::Compile(U"John", {})->FindAll(after).size(), 2u);
    const std::vector<TextMatch> janes = TextPattern::Compile(U"Jane", {})->FindAll(after);
    ASSERT_EQ(janes.size(), 1u);
    EXPECT_EQ(janes[0].first + janes[0].count, after.CharCount());
    const TextChar& j = after.Chars()[static_cast<std::size_t>(janes[0].first)];
    EXPECT_NEAR(j.origin.x, middle.origin.x, 0.01);
    EXPECT_NEAR(j.origin.y, 710, 0.01);
    EXPECT_NEAR(j.size, 12, 0.01);
    // " Smith here" of the middle line stays where it stood.
    const std::vector<TextMatch> smiths = TextPattern::Compile(U"Smith", {})->FindAll(after);
    ASSERT_EQ(smiths.size(), 3u);
    const std::vector<TextMatch> smithsBefore = TextPattern::Compile(U"Smith", {})->FindAll(before);
    const Rect& moved = after.Chars()[static_cast<std::size_t>(smiths[1].first)].box;
    const Rect& stood = before.Chars()[static_cast<std::size_t>(smithsBefore[1].first)].box;
    EXPECT_NEAR(moved.left, stood.left, 0.01);
    EXPECT_NEAR(moved.bottom, stood.bottom, 0.01);

    const std::string text = SavedText(document);
    EXPECT_THAT(text, HasSubstr("Jane"));
    EXPECT_EQ(std::count(text.begin(), text.end(), 'J'), 3);
}

TEST_F(TextReplacerTest, OtherRedactAnnotationsOfThePageStayUnapplied) {
    Document document = factory_.Build(TextPage({"secret one", "secret two"}));
    {
        fz_context* ctx = document.fz();
        const PagePtr page = document.LoadPage(0, "load");
        CallMupdf(ctx, "redact", [&] {
            pdf_annot* pending = pdf_create_annot(ctx, page.get(), PDF_ANNOT_REDACT);
            pdf_set_annot_rect(ctx, pending, fz_rect{60, 80, 300, 100});  // over "secret two"
            pdf_drop_annot(ctx, pending);
        });
    }
    ReplaceMatch(document, 0, Placement(document, U"one"), "1");

    EXPECT_EQ(Redactor(document).RedactAnnotations().size(), 1u);
    EXPECT_THAT(SavedText(document),
                AllOf(HasSubstr("secret two"), HasSubstr("secret 1"), Not(HasSubstr("one"))));
}

TEST_F(TextReplacerTest, ReplacingTheSameMatchTwiceKeepsOnlyTheLastText) {
    Document document = factory_.Build(TextPage({"Call Alice now"}));
    const MatchPlacement alice = Placement(document, U"Alice");
    ReplaceMatch(document, 0, alice, "Bob");
    ReplaceMatch(document, 0, alice, "Carol");

    EXPECT_THAT(SavedText(document), AllOf(HasSubstr("Carol"), Not(HasSubstr("Bob")),
                                           Not(HasSubstr("Alice")), HasSubstr("now")));
}

TEST_F(TextReplacerTest, ADocumentThatForbidsChangesIsLeftAsItWas) {
    PdfDescription recipe{.pages = {PageDescription::TextLines({"Call Alice now"})}};
    recipe.encryption = Encryption{.owner_password = "owner", .permissions = 0};
    const std::string path = WritePdf("locked.pdf", recipe);
    Document document = Document::Open(context_, path);
    const std::uint64_t revision = document.Revision();

    EXPECT_THROW(ReplaceMatch(document, 0, Placement(document, U"Alice"), "Bob"), Error);
    EXPECT_EQ(document.Revision(), revision);
    EXPECT_THROW(ReplaceMatch(document, 0, MatchPlacement{}, "Bob"), Error);
}

TEST(PdfTextLiteralTest, EscapesAndMapsToLatin1) {
    EXPECT_EQ(PdfTextLiteral("plain text"), "(plain text)");
    EXPECT_EQ(PdfTextLiteral("a(b)c\\d"), "(a\\(b\\)c\\\\d)");
    EXPECT_EQ(PdfTextLiteral("tab\there\n"), "(tab\\011here\\012)");
    EXPECT_EQ(PdfTextLiteral("Zo\xC3\xAB M\xC3\xBCller"), "(Zo\xEB M\xFCller)");
    EXPECT_EQ(PdfTextLiteral("\xE2\x82\xAC 5 \xF0\x9F\x98\x80"), "(? 5 ?)");
    // Malformed, overlong and truncated sequences: one '?' per bad byte, nothing lost after.
    EXPECT_EQ(PdfTextLiteral("a\xFFz"), "(a?z)");
    EXPECT_EQ(PdfTextLiteral("\xC1\xA9"),
              "(?"
              "?)");
    EXPECT_EQ(PdfTextLiteral("end\xC3"), "(end?)");
}

TEST(ContentStreamTest, NumbersArePlainShortDecimals) {
    ContentStream content;
    content.MapUnitSquareTo({10.5f, 20.25f, 110.6f, 70.25f});
    content.Text("F1", 12, -0.0001f, 700.125f, "x");
    EXPECT_EQ(content.str(), "100.1 0 0 50 10.5 20.25 cm\nBT /F1 12 Tf 0 700.125 Td (x) Tj ET\n");
}

}  // namespace
}  // namespace pdfhost::engine
