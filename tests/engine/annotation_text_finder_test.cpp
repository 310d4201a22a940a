// Text drawn by annotations (free text, stamps) is found, and marking what was found takes it out
// of the saved file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/annotation_text_finder.h"
#include "engine/redaction.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::EngineTest;
using testing_support::InflatedBytes;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::PdfToText;
using testing_support::RawDocument;
using testing_support::RawPage;
using testing_support::RawPdf;
using testing_support::Ref;
using testing_support::WriteBytes;

// An annotation of `subtype` at `rect` whose appearance shows `text` in Helvetica.
int TextAnnotation(RawPdf& pdf, const std::string& subtype, const std::string& rect,
                   const std::string& text) {
    const int font = pdf.Add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    const int ap = pdf.AddStream(
        "/Type /XObject /Subtype /Form /BBox [0 0 200 30] /Resources << /Font << /F1 " + Ref(font) +
            " >> >>",
        "BT /F1 10 Tf 5 10 Td (" + text + ") Tj ET");
    return pdf.Add("<< /Type /Annot /Subtype /" + subtype + " /Rect " + rect + " /AP << /N " +
                   Ref(ap) + " >> >>");
}

class AnnotationTextFinderTest : public EngineTest {
  protected:
    Document Open() {
        RawPdf pdf;
        const int note = TextAnnotation(pdf, "FreeText", "[72 690 272 720]", "Call Ana Lind");
        const int stamp = TextAnnotation(pdf, "Stamp", "[72 590 272 620]", "Approved: ANA LIND");
        const int mark = TextAnnotation(pdf, "Redact", "[72 490 272 520]", "Ana Lind");
        const std::string path = PathOf("in.pdf");
        WriteBytes(path, RawDocument(
                             pdf, {{"BT /F1 12 Tf 72 400 Td (Kept text) Tj ET", RawPage{}.resources,
                                    "[" + Ref(note) + " " + Ref(stamp) + " " + Ref(mark) + "]"}}));
        return Document::Open(context_, path);
    }
};

TEST_F(AnnotationTextFinderTest, FreeTextAndStampsAreFoundWhereTheyAreDrawn) {
    Document document = Open();
    const std::vector<AnnotationMatch> found =
        FindInAnnotationAppearances(document, 0, *TextPattern::Compile(U"ana lind", {}));
    ASSERT_EQ(found.size(), 2u);  // the redaction mark's own text is not searched
    const float tops[] = {720, 620};
    for (std::size_t i = 0; i < found.size(); ++i) {
        ASSERT_EQ(found[i].rects.size(), 1u);
        const Rect& box = found[i].rects[0];
        EXPECT_GT(box.left, 95);  // after "Call " / "Approved: "
        EXPECT_LT(box.right, 272);
        EXPECT_GT(box.bottom, tops[i] - 30);
        EXPECT_LT(box.top, tops[i]);
    }
    EXPECT_TRUE(
        FindInAnnotationAppearances(document, 0, *TextPattern::Compile(U"Kept", {})).empty());
    EXPECT_TRUE(
        FindInAnnotationAppearances(document, 7, *TextPattern::Compile(U"Ana", {})).empty());
}

TEST_F(AnnotationTextFinderTest, MarkingTheMatchesTakesTheirTextOutOfTheFile) {
    Document document = Open();
    std::vector<AnnotationId> boxes;
    for (const AnnotationMatch& match :
         FindInAnnotationAppearances(document, 0, *TextPattern::Compile(U"ana lind", {}))) {
        boxes.push_back(Annotations(document).Create(
            0, MatchAnnotation(document, 0, "Redact", match.rects, "box"), kDocumentTag, -1));
    }
    ASSERT_EQ(boxes.size(), 2u);
    Redactor(document).Apply(boxes, RedactionOptions{});
    const std::string output = PathOf("out.pdf");
    document.SaveFull(output);

    const std::string bytes = InflatedBytes(context_, output);
    EXPECT_THAT(bytes, Not(HasSubstr("Call Ana Lind")));
    EXPECT_THAT(bytes, Not(HasSubstr("ANA LIND")));
    EXPECT_THAT(PdfToText(output), HasSubstr("Kept text"));
    Document reopened = Document::Open(context_, output);
    EXPECT_TRUE(
        FindInAnnotationAppearances(reopened, 0, *TextPattern::Compile(U"ana lind", {})).empty());
}

}  // namespace
}  // namespace pdfhost::engine
