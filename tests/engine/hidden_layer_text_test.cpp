// Text in a layer the file hides is still in the file: it is read and redacted like any other,
// and the layer stays hidden for the viewer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/redaction.h"
#include "engine/text_page.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::EngineTest;
using testing_support::InflatedBytes;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::RawDocument;
using testing_support::RawPage;
using testing_support::RawPdf;
using testing_support::Ref;
using testing_support::WriteBytes;

TEST_F(EngineTest, TextOfAHiddenLayerIsReadAndRedactedWhileTheLayerStaysHidden) {
    RawPdf raw;
    const int layer = raw.Add("<< /Type /OCG /Name (Draft notes) >>");
    RawPage page{
        "BT /F1 12 Tf 72 700 Td (Shown line) Tj ET\n"
        "/OC /L1 BDC BT /F1 12 Tf 72 400 Td (layersecret) Tj ET EMC\n"};
    page.resources.insert(page.resources.size() - 2, " /Properties << /L1 " + Ref(layer) + " >>");
    const std::string input = PathOf("layer.pdf");
    WriteBytes(input, RawDocument(raw, {page}, {},
                                  " /OCProperties << /OCGs [" + Ref(layer) + "] /D << /OFF [" +
                                      Ref(layer) + "] >> >>"));
    Document document = Document::Open(context_, input);

    const PageText text = PageText::OfPage(document, 0);
    const std::u32string all = text.Slice(0, text.CharCount());
    const std::size_t at = all.find(U"layersecret");
    ASSERT_NE(at, std::u32string::npos) << "the hidden layer's text is read";
    EXPECT_EQ(pdf_layer_is_enabled(document.fz(), document.pdf(), 0), 0)
        << "the layer is hidden again afterwards";

    const Rect box = text.Chars()[at].box;
    const AnnotationId mark = Annotations(document).Create(
        0,
        MatchAnnotation(document, 0, "Redact",
                        {Rect{box.left - 2, box.bottom - 2, 300, box.top + 2}}, "m"),
        kDocumentTag, -1);
    Redactor(document).Apply({mark}, RedactionOptions{});
    const std::string output = PathOf("out.pdf");
    document.SaveFull(output);
    EXPECT_THAT(InflatedBytes(context_, output), Not(HasSubstr("layersecret")));
    EXPECT_THAT(InflatedBytes(context_, output), HasSubstr("Shown line"));
}

}  // namespace
}  // namespace pdfhost::engine
