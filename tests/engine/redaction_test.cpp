// Applying Redact annotations, checked with an independent reader (poppler) on the saved file:
// the text, pixels and vector art under the boxes are gone, everything else stays.
#include <gtest/gtest.h>

#include <gmock/gmock.h>

#include <algorithm>

#include "engine/error.h"
#include "engine/redaction.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class RedactionTest : public EngineTest {
  protected:
    AnnotationId RedactWord(Document& document, int page, const std::string& word) {
        const std::vector<Rect> rects = WordRects(document, page, word);
        EXPECT_FALSE(rects.empty()) << word;
        return AddRedact(document, page, rects, word);
    }
};

TEST_F(RedactionTest, OnlyTheListedBoxesAreAppliedAndTheirTextIsGone) {
    Document document = OpenWritten(PdfDescription{
        .pages = {PageDescription::TextLines({"Alpha secret one", "Bravo hidden two"}),
                  PageDescription::TextLines({"Charlie private three"})}});
    const AnnotationId secret = RedactWord(document, 0, "secret");
    const AnnotationId hidden = RedactWord(document, 0, "hidden");
    const AnnotationId priv = RedactWord(document, 1, "private");

    Redactor redactor(document);
    EXPECT_EQ(redactor.RedactAnnotations(), (std::vector<AnnotationId>{secret, hidden, priv}));
    EXPECT_EQ(redactor.Apply({secret, priv}, RedactionOptions{}).applied, 2);
    EXPECT_EQ(redactor.RedactAnnotations(), (std::vector<AnnotationId>{hidden}))
        << "applied annotations go, the other one stays";

    const std::string text = PdfToText(Saved(document, "saved.pdf"));
    EXPECT_THAT(text, AllOf(Not(HasSubstr("secret")), Not(HasSubstr("private"))));
    for (const char* kept : {"Alpha", "one", "Charlie", "three"})
        EXPECT_THAT(text, HasSubstr(kept));
    EXPECT_THAT(text, HasSubstr("hidden")) << "an annotation not listed is not applied";
    EXPECT_EQ(RunCommand("grep -c secret '" + PathOf("saved.pdf") + "'"), "0\n")
        << "no trace of the text anywhere in the file";
}

TEST_F(RedactionTest, TightLinePitchKeepsTheNeighbouringLines) {
    PageDescription page;
    // 12 pt text on a 12 pt pitch: the character boxes of adjacent lines overlap.
    page.Add(TextItem{72, 700, 12, "above line stays"});
    page.Add(TextItem{72, 688, 12, "middle line goes"});
    page.Add(TextItem{72, 676, 12, "below line stays"});
    Document document = OpenWritten(PdfDescription{.pages = {page}});
    const std::vector<Rect> line = WordRects(document, 0, "middle line goes");
    ASSERT_EQ(line.size(), 1u);
    ASSERT_GT(line.front().Height(), 12.0f) << "the box is taller than the pitch";
    Redactor(document).Apply({AddRedact(document, 0, line)}, RedactionOptions{});

    const std::string text = PdfToText(Saved(document, "saved.pdf"));
    EXPECT_THAT(text, AllOf(Not(HasSubstr("middle")), Not(HasSubstr("goes")),
                            HasSubstr("above line stays"), HasSubstr("below line stays")));
}

TEST_F(RedactionTest, CoveredPixelsVectorArtAndFormTextAreRemoved) {
    PageDescription page;
    page.Add(ImageItem{.placement = {300, 300, 500, 450}, .seed = 3});
    page.Add(ImageItem{.placement = {100, 500, 160, 540}, .seed = 4});
    page.Add(PathItem{.rect = {100, 100, 150, 150}, .fill = true});
    page.Add(PathItem{.rect = {300, 100, 500, 150}, .fill = true});
    page.Add(FormItem{.placement = {72, 600, 372, 700}, .text = "formsecret"});
    Document document = OpenWritten(PdfDescription{.pages = {page}});
    const std::vector<Rect> boxes = {
        Rect{350, 350, 400, 400},  // part of the first image
        Rect{90, 490, 170, 550},   // all of the second image
        Rect{90, 90, 160, 160},    // all of the first path
        Rect{450, 90, 520, 160},   // part of the second path
    };
    std::vector<AnnotationId> targets;
    for (const Rect& box : boxes)
        targets.push_back(AddRedact(document, 0, {box}));
    targets.push_back(RedactWord(document, 0, "formsecret"));
    Redactor(document).Apply(targets, RedactionOptions{.fillAreas = false});
    const std::string path = Saved(document, "saved.pdf");

    EXPECT_EQ(GreyAt(path, 375, 375), 255) << "covered pixels are white";
    EXPECT_LT(GreyAt(path, 320, 320), 250) << "the rest of the picture stays";
    EXPECT_EQ(GreyAt(path, 130, 520), 255) << "a wholly covered image goes";
    EXPECT_EQ(GreyAt(path, 125, 125), 255) << "a wholly covered path goes";
    EXPECT_LT(GreyAt(path, 350, 125), 250) << "a path that only crosses a box stays";
    EXPECT_THAT(PdfToText(path), Not(HasSubstr("formsecret")));
    const std::string images = RunCommand("pdfimages -list '" + path + "'");
    EXPECT_EQ(std::count(images.begin(), images.end(), '\n'), 3)
        << "two header lines and the one image left:\n"
        << images;
}

TEST_F(RedactionTest, AreasAreFilledWithTheInteriorColourAndLinksUnderThemGo) {
    Document document = OpenWritten(TextPage({"fill me"}));
    const std::vector<Rect> rects = WordRects(document, 0, "fill");
    PdfValue entries = MatchAnnotation(document, 0, "Redact", rects, "blue");
    entries.Set("IC", Numbers({0, 0, 1}));
    const AnnotationId blue = Annotations(document).Create(0, entries, kDocumentTag, -1);
    PdfValue link = PdfValue::Dictionary();
    link.Set("Subtype", PdfValue::Name("Link"));
    link.Set("Rect", Numbers({rects[0].left, rects[0].bottom, rects[0].right, rects[0].top}));
    Annotations(document).Create(0, link, kDocumentTag, -1);

    Redactor(document).Apply({blue}, RedactionOptions{});
    EXPECT_TRUE(Annotations(document).OnPage(0).empty());
    const std::string path = Saved(document, "saved.pdf");
    const int grey =
        GreyAt(path, (rects[0].left + rects[0].right) / 2, (rects[0].bottom + rects[0].top) / 2);
    EXPECT_GT(grey, 0) << "blue, not black";
    EXPECT_LT(grey, 100);
    EXPECT_THAT(PdfToText(path), HasSubstr("me"));
}

TEST_F(RedactionTest, FailedApplyLeavesTheDocumentAsItWas) {
    Document document =
        OpenWritten(PdfDescription{.pages = {PageDescription::TextLines({"first secret"}),
                                             PageDescription::TextLines({"second page"})}});
    const AnnotationId good = RedactWord(document, 0, "secret");
    const AnnotationId highlight = Annotations(document).Create(
        1, MatchAnnotation(document, 1, "Highlight", WordRects(document, 1, "second"), "h"),
        kDocumentTag, -1);
    const std::uint64_t revision = document.Revision();

    // Every target is checked before any page changes.
    EXPECT_THROW(Redactor(document).Apply({good, highlight}, RedactionOptions{}), Error);
    EXPECT_EQ(document.Revision(), revision);
    EXPECT_EQ(Redactor(document).RedactAnnotations(), (std::vector<AnnotationId>{good}));
    EXPECT_TRUE(Annotations(document).IsOnPage(highlight));
    EXPECT_THAT(PdfToText(Saved(document, "saved.pdf")), HasSubstr("first secret"));

    EXPECT_EQ(Redactor(document).Apply({good}, RedactionOptions{}).applied, 1)
        << "the document still works after the rollback";
    EXPECT_THAT(PdfToText(Saved(document, "saved.pdf")), Not(HasSubstr("secret")));
}

}  // namespace
}  // namespace pdfhost::engine
