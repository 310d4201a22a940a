// Annotations made from the entries a plug-in gives: taking them off a page and putting them
// back, and entries that cannot be written.
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/annotations.h"
#include "engine/error.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::Numbers;
using testing_support::PageObjectNumber;
using testing_support::WordRects;

class AnnotationsTest : public EngineTest {
  protected:
    Document Open(const PdfDescription& layout) {
        return Document::Open(context_, WritePdf("doc.pdf", layout));
    }
};

TEST_F(AnnotationsTest, RemovedAnnotationGoesWithItsPopupAndComesBackInPlace) {
    Document document = Open(PdfDescription{.pages = {PageDescription::TextLines({"one two"})}});
    Annotations annotations(document);
    const auto rects = WordRects(document, 0, "one");
    const AnnotationId first = annotations.Create(
        0, MatchAnnotation(document, 0, "Highlight", rects, "a"), kDocumentTag, -1);
    const AnnotationId second =
        annotations.Create(0, MatchAnnotation(document, 0, "Redact", rects, "b"), kDocumentTag, -1);
    PdfValue popup = PdfValue::Dictionary();
    popup.Set("Subtype", PdfValue::Name("Popup"));
    popup.Set("P", PdfValue::Reference(second.object, kDocumentTag));
    const AnnotationId attached = annotations.Create(0, popup, kDocumentTag, -1);
    const AnnotationId third =
        annotations.Create(0, MatchAnnotation(document, 0, "Redact", rects, "c"), kDocumentTag, 1);
    EXPECT_EQ(annotations.OnPage(0),
              (std::vector<int>{first.object, third.object, second.object, attached.object}));

    const auto removed = annotations.Remove(second);
    ASSERT_TRUE(removed.has_value());
    EXPECT_EQ(annotations.OnPage(0), (std::vector<int>{first.object, third.object}));
    EXPECT_FALSE(annotations.IsOnPage(second));
    EXPECT_FALSE(annotations.Remove(second).has_value());

    EXPECT_TRUE(annotations.Restore(*removed));
    EXPECT_EQ(annotations.OnPage(0),
              (std::vector<int>{first.object, third.object, second.object, attached.object}));
    EXPECT_FALSE(annotations.Restore(*removed)) << "it stands already";
}

TEST_F(AnnotationsTest, RefusesEntriesItCannotWriteAndLeavesThePage) {
    Document other_source = Open(PdfDescription{.pages = {PageDescription::Blank()}});
    Annotations annotations(other_source);
    PdfValue no_subtype = PdfValue::Dictionary();
    no_subtype.Set("Rect", Numbers({0, 0, 10, 10}));
    EXPECT_THROW(annotations.Create(0, no_subtype, kDocumentTag, -1), Error);

    PdfValue foreign = PdfValue::Dictionary();
    foreign.Set("Subtype", PdfValue::Name("Square"));
    foreign.Set("P", PdfValue::Reference(PageObjectNumber(other_source, 0), kDocumentTag + 1));
    EXPECT_THROW(annotations.Create(0, foreign, kDocumentTag, -1), Error);
    EXPECT_THROW(annotations.Create(3, foreign, kDocumentTag, -1), Error);
    EXPECT_TRUE(annotations.OnPage(0).empty());
}

}  // namespace
}  // namespace pdfhost::engine
