#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "engine/error.h"
#include "engine/ocr_layer.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;

class OcrLayerTest : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        if (!OcrRecognizer::FindDataFolder("eng").has_value())
            GTEST_SKIP() << "no English recognition data installed";
    }

    // A page that shows `lines` only as a picture, as a scanner makes it.
    std::string WriteScan(const std::string& name, const std::vector<std::string>& lines) {
        PageDescription text;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            text.Add(TextItem{
                .x = 72, .y = 700 - 40.0f * static_cast<float>(i), .size = 24, .text = lines[i]});
        }
        const Document typed = factory_.Build(PdfDescription{.pages = {text}});
        auto picture = std::make_shared<RgbImage>(typed.Render(0, 150));
        PageDescription scan;
        scan.Add(ImageItem{.placement = {0, 0, 612, 792}, .picture = std::move(picture)});
        return WritePdf(name, PdfDescription{.pages = {scan}});
    }
};

TEST_F(OcrLayerTest, AScannedPageBecomesSearchableWithoutChangingHowItLooks) {
    const std::string path = WriteScan("scan.pdf", {"INVOICE NUMBER 48213", "Payment due soon"});
    Document document = Document::Open(context_, path);
    ASSERT_EQ(PageText::OfPage(document, 0).CharCount(), 0);
    const RgbImage before = document.Render(0, 72);

    OcrRecognizer recognizer("eng");
    EXPECT_GE(AddOcrTextLayer(document, 0, recognizer), 6);

    const PageText text = PageText::OfPage(document, 0);
    const std::string all = EncodeUtf8(text.Slice(0, text.CharCount()));
    EXPECT_THAT(all, HasSubstr("INVOICE NUMBER 48213"));
    EXPECT_THAT(all, HasSubstr("Payment due soon"));
    // The words stand where the picture shows them: the first line above the second.
    const std::vector<TextMatch> invoice = TextPattern::Compile(U"INVOICE", {})->FindAll(text);
    const std::vector<TextMatch> payment = TextPattern::Compile(U"Payment", {})->FindAll(text);
    ASSERT_EQ(invoice.size(), 1u);
    ASSERT_EQ(payment.size(), 1u);
    const Rect first = text.LineBoxes(invoice[0].first, invoice[0].count).front();
    const Rect second = text.LineBoxes(payment[0].first, payment[0].count).front();
    EXPECT_NEAR(first.left, 72, 6);
    EXPECT_GT(first.bottom, second.top - 2);
    EXPECT_NEAR(first.bottom, 700, 10);

    const RgbImage after = document.Render(0, 72);
    EXPECT_EQ(before.pixels, after.pixels);

    const std::string saved = Saved(document, "searchable.pdf");
    EXPECT_THAT(RunCommand("pdftotext '" + saved + "' -"), HasSubstr("INVOICE NUMBER 48213"));
}

TEST_F(OcrLayerTest, ABlankPageGetsNoText) {
    Document document = factory_.Build(PdfDescription{.pages = {PageDescription::Blank()}});
    OcrRecognizer recognizer("eng");
    EXPECT_EQ(AddOcrTextLayer(document, 0, recognizer), 0);
    EXPECT_EQ(PageText::OfPage(document, 0).CharCount(), 0);
    EXPECT_THROW(AddOcrTextLayer(document, 1, recognizer), Error);
}

}  // namespace
}  // namespace pdfhost::engine
