// Applying redaction through the tables, checked with poppler's pdftotext on the saved file:
// only the listed annotations, every one, in a document without a view, and failures that
// leave the document as it was.
#include <gmock/gmock.h>

#include "annot_calls.h"

namespace pdfhost {
namespace {

using testing::AnnotationTablesTest;
using testing::CallHost;
using ::testing::HasSubstr;
using ::testing::Not;
using Op = hostops::Op;
using engine::testing_support::PdfToText;

class RedactTablesTest : public AnnotationTablesTest {
  protected:
    static HostPtrArray ListOf(std::initializer_list<HostAnnot> annots) {
        const HostPtrArray array = CallHost<Op::HostPtrArrayNew>();
        for (const HostAnnot annot : annots)
            CallHost<Op::HostPtrArrayAdd>(array, annot);
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
    EXPECT_EQ(CallHost<Op::NDXRedactApplyList>(document.Handle(), list, 1), 1);
    CallHost<Op::HostPtrArrayDestroy>(list);

    const HostPageView view = CallHost<Op::HostDocGetPageView>(document.Handle(), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(view, name), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(view, card), 1) << "not listed, not applied";
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(view, phone), 0);
    EXPECT_TRUE(document.IsModified());
    const std::string text = PdfToText(Save(document));
    EXPECT_THAT(text, Not(HasSubstr("Ada")));
    EXPECT_THAT(text, Not(HasSubstr("0100")));
    EXPECT_THAT(text, HasSubstr("4111 2222"));
    EXPECT_THAT(text, HasSubstr("Name:"));
    EXPECT_THAT(text, HasSubstr("Phone"));
}

TEST_F(RedactTablesTest, ApplyAllCoversTheUsersRedactionsToo) {
    HostDocument& document = Open(kThreeSecrets);
    RedactWord(document, 0, "Ada Quill");
    // One drawn by the user, without a name, over the card number.
    const auto card = engine::testing_support::WordRects(document.Engine(), 0, "4111");
    const NdxObject dict = CallHost<Op::NDXDictNew>();
    CallHost<Op::NDXDictSetName>(dict, "Subtype", "Redact");
    CallHost<Op::NDXDictSetRect>(dict, "Rect",
                                 NdxRect{card[0].left, card[0].bottom, card[0].right, card[0].top});
    ASSERT_NE(AddThroughView(document, 0, dict), nullptr);

    EXPECT_EQ(CallHost<Op::NDXRedactApplyAll>(document.Handle(), 1), 1);
    EXPECT_EQ(CallHost<Op::HostPageViewCountAnnots>(
                  CallHost<Op::HostDocGetPageView>(document.Handle(), 0)),
              0);
    const std::string text = PdfToText(Save(document));
    EXPECT_THAT(text, Not(HasSubstr("Ada")));
    EXPECT_THAT(text, Not(HasSubstr("4111")));
    EXPECT_THAT(text, HasSubstr("2222"));
    EXPECT_THAT(text, HasSubstr("555 0100"));
}

TEST_F(RedactTablesTest, BatchApplyWorksWithoutAView) {
    HostDocument& document = Open(kThreeSecrets, false);
    const NdxDoc pdf = document.PdfHandle();
    const NdxPage page = CallHost<Op::NDXPageNew>();
    CallHost<Op::NDXPageLoad>(page, pdf, CallHost<Op::NDXDocGetPage>(pdf, 0), 0);
    CallHost<Op::NDXPageParse>(page, nullptr);
    const NdxAnnotList list = CallHost<Op::NDXAnnotListGet>(page);
    for (const char* word : {"Quill", "0100"}) {
        const auto rects = engine::testing_support::WordRects(document.Engine(), 0, word);
        const NdxObject dict = MatchDict(document, 0, "Redact", rects, WideOf(word));
        CallHost<Op::NDXAnnotListInsert>(list, CallHost<Op::NDXAnnotListCount>(list),
                                         CallHost<Op::NDXAnnotNew>(dict));
        CallHost<Op::NDXObjectDestroy>(dict);
    }
    CallHost<Op::NDXPageDestroy>(page);
    ASSERT_EQ(CallHost<Op::HostDocGetView>(document.Handle()), nullptr);

    EXPECT_EQ(CallHost<Op::NDXRedactApplyBatch>(document.Handle(), 1, 0x1000000u), 1);
    const std::string text = PdfToText(Save(document));
    EXPECT_THAT(text, Not(HasSubstr("Quill")));
    EXPECT_THAT(text, Not(HasSubstr("0100")));
    EXPECT_THAT(text, HasSubstr("Ada"));
    EXPECT_THAT(text, HasSubstr("Phone 555"));
}

TEST_F(RedactTablesTest, FailedApplyLeavesEverythingAsItWas) {
    HostDocument& document = Open(kThreeSecrets);
    HostDocument& other = Open(kThreeSecrets);
    const HostAnnot name = RedactWord(document, 0, "Ada Quill");
    const HostAnnot card = RedactWord(document, 0, "4111 2222");
    const HostAnnot foreign = RedactWord(other, 0, "555 0100");
    const HostPageView view = CallHost<Op::HostDocGetPageView>(document.Handle(), 0);
    ASSERT_EQ(CallHost<Op::HostPageViewDeleteAnnot>(view, card), 1);
    app_.SaveDocument(document);
    ASSERT_FALSE(document.IsModified());

    for (const HostPtrArray list :
         {ListOf({name, card}), ListOf({name, foreign}), ListOf({}), ListOf({name, nullptr})}) {
        EXPECT_EQ(CallHost<Op::NDXRedactApplyList>(document.Handle(), list, 1), 0);
        CallHost<Op::HostPtrArrayDestroy>(list);
    }
    EXPECT_EQ(CallHost<Op::NDXRedactApplyList>(document.Handle(), nullptr, 1), 0);
    EXPECT_EQ(CallHost<Op::NDXRedactApplyAll>(nullptr, 1), 0);
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(view, name), 1);
    EXPECT_THAT(PdfToText(document.Path()), HasSubstr("Ada Quill"));
}

}  // namespace
}  // namespace pdfhost
