// Finding an annotation from where it last stood: after entries before it were taken off, from
// a place past the end, and among entries that are no dictionaries or stand twice.
#include <gtest/gtest.h>

#include <vector>

#include "annot_test_support.h"
#include "engine/annotations.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::RawPdf;
using testing_support::Ref;

class AnnotationSlotTest : public EngineTest {};

TEST_F(AnnotationSlotTest, FoundFromAnOldPlaceAfterEntriesBeforeItWent) {
    RawPdf pdf;
    const int square = pdf.Add("<< /Type /Annot /Subtype /Square /Rect [10 10 20 20] >>");
    const int number = pdf.Add("7");
    testing_support::RawPage page;
    // A number object, the square, the square again.
    page.annots = "[" + Ref(number) + " " + Ref(square) + " " + Ref(square) + "]";
    const std::string path = PathOf("slots.pdf");
    testing_support::WriteBytes(path, testing_support::RawDocument(pdf, {page}));
    Document document = Document::Open(context_, path);
    Annotations annotations(document);
    std::vector<AnnotationId> made;
    for (int i = 0; i < 40; ++i) {
        made.push_back(annotations.Create(
            0, MatchAnnotation(document, 0, "Redact", {Rect{50, 50, 90, 60}}, "r"), kDocumentTag,
            -1));
    }
    EXPECT_EQ(annotations.IndexOf({0, square}), 1);      // the first place without a hint
    EXPECT_EQ(annotations.IndexOf({0, square}, 2), 2);   // the hinted place when it holds it
    EXPECT_EQ(annotations.IndexOf({0, number}, 0), -1);  // no dictionary: no annotation
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(annotations.Remove(made[static_cast<std::size_t>(i)]).has_value());
    struct Case {
        int made;  // which of the made annotations
        int hint;
        int expected;
    };
    const Case cases[] = {
        {10, 13, 3},   // ten entries before it went
        {39, 42, 32},  // the last, hinted past the end now
        {25, 0, 18},   // hinted far below
        {20, 99, 13},  // a hint out of range: searched from the start
        {5, 8, -1},    // gone
    };
    for (const Case& c : cases) {
        EXPECT_EQ(annotations.IndexOf(made[static_cast<std::size_t>(c.made)], c.hint), c.expected)
            << c.made;
    }
}

}  // namespace
}  // namespace pdfhost::engine
