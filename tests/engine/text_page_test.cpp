#include <gtest/gtest.h>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;

class PageTextTest : public EngineTest {
  protected:
    Document TwoLines() {
        return factory_.Build(
            PdfDescription{.pages = {PageDescription::TextLines({"Hello world", "Second line"})}});
    }

    void SetRotation(Document& document, int degrees) {
        fz_context* ctx = document.fz();
        const ObjPtr page = document.PageObject(0, "rotate");
        CallMupdf(ctx, "rotate",
                  [&] { pdf_dict_put_int(ctx, page.get(), PDF_NAME(Rotate), degrees); });
        document.MarkChanged();
    }
};

TEST_F(PageTextTest, CharactersAreNumberedLineByLineWithoutIndexesForLineBreaks) {
    const Document document = TwoLines();
    const PageText text = PageText::OfPage(document, 0);

    ASSERT_EQ(text.CharCount(), 22);
    EXPECT_EQ(text.Slice(0, 22), U"Hello worldSecond line");
    ASSERT_EQ(text.Lines().size(), 2u);
    EXPECT_EQ(text.Lines()[1].first, 11);
    EXPECT_EQ(text.Chars()[10].line, 0);
    EXPECT_EQ(text.Chars()[11].line, 1);
    EXPECT_EQ(text.Chars()[0].folded, U'h');
}

TEST_F(PageTextTest, GeometryIsInPdfPageSpaceWhateverThePageRotation) {
    for (const int rotation : {0, 90, 180, 270}) {
        Document document = TwoLines();
        SetRotation(document, rotation);
        const PageText text = PageText::OfPage(document, 0);
        ASSERT_EQ(text.CharCount(), 22) << rotation;

        const TextChar& h = text.Chars()[0];
        EXPECT_NEAR(h.origin.x, 72, 0.01) << rotation;
        EXPECT_NEAR(h.origin.y, 720, 0.01) << rotation;
        EXPECT_NEAR(h.box.left, 72, 0.5) << rotation;
        EXPECT_LT(h.box.bottom, 720) << rotation;
        EXPECT_GT(h.box.top, 728) << rotation;
        EXPECT_NEAR(h.size, 12, 0.01) << rotation;
        EXPECT_NEAR(text.Lines()[0].direction.x, 1, 1e-4) << rotation;
        EXPECT_NEAR(text.Lines()[0].direction.y, 0, 1e-4) << rotation;

        // The second line stands 18 pt lower: one box per line, the lower one first in order.
        const std::vector<Rect> boxes = text.LineBoxes(6, 10);
        ASSERT_EQ(boxes.size(), 2u) << rotation;
        EXPECT_NEAR(boxes[0].bottom - boxes[1].bottom, 18, 0.5) << rotation;
        EXPECT_NEAR(boxes[1].left, 72, 0.5) << rotation;
        EXPECT_GT(boxes[0].left, 100) << rotation;
    }
}

TEST_F(PageTextTest, NumberingIgnoresAnnotationsAndRepeatsExactly) {
    Document document = TwoLines();
    const PageText before = PageText::OfPage(document, 0);

    fz_context* ctx = document.fz();
    const PagePtr page = document.LoadPage(0, "annotate");
    CallMupdf(ctx, "annotate", [&] {
        pdf_annot* note = pdf_create_annot(ctx, page.get(), PDF_ANNOT_FREE_TEXT);
        pdf_set_annot_contents(ctx, note, "Inserted words");
        pdf_set_annot_rect(ctx, note, fz_rect{72, 72, 300, 100});
        pdf_update_annot(ctx, note);
        pdf_drop_annot(ctx, note);
    });
    const PageText after = PageText::OfPage(document, 0);

    ASSERT_EQ(after.CharCount(), before.CharCount());
    for (int i = 0; i < before.CharCount(); ++i) {
        const TextChar& a = before.Chars()[static_cast<std::size_t>(i)];
        const TextChar& b = after.Chars()[static_cast<std::size_t>(i)];
        EXPECT_EQ(a.code, b.code);
        EXPECT_EQ(a.box, b.box);
    }
}

TEST_F(PageTextTest, CharacterClasses) {
    EXPECT_TRUE(IsWordChar(U'a'));
    EXPECT_TRUE(IsWordChar(U'7'));
    EXPECT_TRUE(IsWordChar(U'\u00e9'));
    EXPECT_TRUE(IsWordChar(U'\u0416'));
    EXPECT_FALSE(IsWordChar(U'-'));
    EXPECT_FALSE(IsWordChar(U' '));
    EXPECT_TRUE(IsSpaceChar(U'\u00a0'));
    EXPECT_TRUE(IsSpaceChar(U'\r'));
    EXPECT_FALSE(IsSpaceChar(U'_'));
    EXPECT_EQ(FoldCase(U'\u00c9'), U'\u00e9');
    EXPECT_EQ(DecodeUtf8("J\xc3\xa9r\xc3\xb4me"), U"J\u00e9r\u00f4me");
    EXPECT_EQ(EncodeUtf8(U"J\u00e9r\u00f4me"), "J\xc3\xa9r\xc3\xb4me");
}

}  // namespace
}  // namespace pdfhost::engine
