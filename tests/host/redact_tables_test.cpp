// Applying redaction through the tables, checked with poppler's pdftotext on the saved file:
// only the listed annotations, every one, in a document without a view, and failures that
// leave the document as it was.

#include "annot_calls.h"

namespace pdfhost::testing {
namespace {

using engine::testing_support::PdfToText;
using ::testing::HasSubstr;

class RedactTablesTest : public AnnotationTablesTest {
  protected:
    static HostPtrArray ListOf(std::initializer_list<HostAnnot> annots) {
        const HostPtrArray array = Call<HostPtrArrayNew>();
        for (const HostAnnot annot : annots)
            Call<HostPtrArrayAdd>(array, annot);
        return array;
    }
};

const engine::PdfDescription kThreeSecrets{
    .pages = {engine::PageDescription::TextLines(
        {"Name: Ada Quill", "Card 4111 2222", "Phone 555 0100"})}};

TEST_F(RedactTablesTest, ListAppliesOnlyItsAnnotations) {
    HostDocument& document = Open(kThreeSecrets);
    const HostAnnot name = RedactWord(document, 0, "Ada Quill");
    const HostAnnot card = RedactWord(document, 0, "4111 2222");
    const HostAnnot phone = RedactWord(document, 0, "555 0100");
    const HostPtrArray list = ListOf({name, phone});
    EXPECT_EQ(Call<NDXRedactApplyList>(document.Handle(), list, 1), 1);
    Call<HostPtrArrayDestroy>(list);

    const HostPageView view = Call<HostDocGetPageView>(document.Handle(), 0);
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(view, name), 0);
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(view, card), 1) << "not listed, not applied";
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(view, phone), 0);
    EXPECT_TRUE(document.IsModified());
    EXPECT_THAT(PdfToText(Save(document)),
                HoldsWords({"4111 2222", "Name:", "Phone"}, {"Ada", "0100"}));
}

TEST_F(RedactTablesTest, ApplyAllCoversTheUsersRedactionsToo) {
    HostDocument& document = Open(kThreeSecrets);
    RedactWord(document, 0, "Ada Quill");
    // One drawn by the user, without a name, over the card number.
    const auto card = engine::testing_support::WordRects(document.Engine(), 0, "4111");
    const NdxObject dict = Call<NDXDictNew>();
    Call<NDXDictSetName>(dict, "Subtype", "Redact");
    Call<NDXDictSetRect>(dict, "Rect",
                         NdxRect{card[0].left, card[0].bottom, card[0].right, card[0].top});
    ASSERT_NE(AddThroughView(document, 0, dict), nullptr);

    EXPECT_EQ(Call<NDXRedactApplyAll>(document.Handle(), 1), 1);
    EXPECT_EQ(Call<HostPageViewCountAnnots>(Call<HostDocGetPageView>(document.Handle(), 0)), 0);
    EXPECT_THAT(PdfToText(Save(document)), HoldsWords({"2222", "555 0100"}, {"Ada", "4111"}));
}

TEST_F(RedactTablesTest, BatchApplyWorksWithoutAView) {
    HostDocument& document = Open(kThreeSecrets, false);
    const NdxDoc pdf = document.PdfHandle();
    const NdxPage page = LoadPage(pdf, 0);
    const NdxAnnotList list = Call<NDXAnnotListGet>(page);
    for (const char* word : {"Quill", "0100"}) {
        const auto rects = engine::testing_support::WordRects(document.Engine(), 0, word);
        const NdxObject dict = MatchDict(document, 0, "Redact", rects, WideOf(word));
        Call<NDXAnnotListInsert>(list, Call<NDXAnnotListCount>(list), Call<NDXAnnotNew>(dict));
        Call<NDXObjectDestroy>(dict);
    }
    Call<NDXPageDestroy>(page);
    ASSERT_EQ(Call<HostDocGetView>(document.Handle()), nullptr);

    EXPECT_EQ(Call<NDXRedactApplyBatch>(document.Handle(), 1, 0x1000000u), 1);
    EXPECT_THAT(PdfToText(Save(document)), HoldsWords({"Ada", "Phone 555"}, {"Quill", "0100"}));
}

TEST_F(RedactTablesTest, FailedApplyLeavesEverythingAsItWas) {
    HostDocument& document = Open(kThreeSecrets);
    HostDocument& other = Open(kThreeSecrets);
    const HostAnnot name = RedactWord(document, 0, "Ada Quill");
    const HostAnnot card = RedactWord(document, 0, "4111 2222");
    const HostAnnot foreign = RedactWord(other, 0, "555 0100");
    const HostPageView view = Call<HostDocGetPageView>(document.Handle(), 0);
    ASSERT_EQ(Call<HostPageViewDeleteAnnot>(view, card), 1);
    app_.SaveDocument(document);
    ASSERT_FALSE(document.IsModified());

    for (const HostPtrArray list :
         {ListOf({name, card}), ListOf({name, foreign}), ListOf({}), ListOf({name, nullptr})}) {
        EXPECT_EQ(Call<NDXRedactApplyList>(document.Handle(), list, 1), 0);
        Call<HostPtrArrayDestroy>(list);
    }
    EXPECT_EQ(Call<NDXRedactApplyList>(document.Handle(), nullptr, 1), 0);
    EXPECT_EQ(Call<NDXRedactApplyAll>(nullptr, 1), 0);
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(view, name), 1);
    EXPECT_THAT(PdfToText(document.Path()), HasSubstr("Ada Quill"));
}

}  // namespace
}  // namespace pdfhost::testing
