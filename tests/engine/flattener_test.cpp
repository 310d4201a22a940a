#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/flattener.h"
#include "engine/form_builder.h"
#include "engine/form_fields.h"
#include "engine/mupdf_call.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::EngineTest;

std::string PageString(const Document& document, int page) {
    const PageText text = PageText::OfPage(document, page);
    return EncodeUtf8(text.Slice(0, text.CharCount()));
}

int WidgetCount(const Document& document, int page) {
    fz_context* ctx = document.fz();
    const ObjPtr page_obj = document.PageObject(page, "widgets");
    return CallMupdf(ctx, "widgets", [&] {
        pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
        int count = 0;
        for (int i = 0; i < pdf_array_len(ctx, annots); ++i) {
            count += pdf_name_eq(
                ctx, pdf_dict_get(ctx, pdf_array_get(ctx, annots, i), PDF_NAME(Subtype)),
                PDF_NAME(Widget));
        }
        return count;
    });
}

bool HasForm(const Document& document) {
    fz_context* ctx = document.fz();
    return CallMupdf(ctx, "form", [&] {
        return pdf_dict_getp(ctx, pdf_trailer(ctx, document.pdf()), "Root/AcroForm") != nullptr;
    });
}

class FlattenerTest : public EngineTest {
  protected:
    // Page 0: a filled text field, a hidden text field and a check box; page 1: a text field;
    // page 2: no field.
    Document Sample() {
        Document document =
            factory_.Build(PdfDescription{.pages = {PageDescription::TextLines({"Claim form"}),
                                                    PageDescription::TextLines({"Second page"}),
                                                    PageDescription::TextLines({"Third page"})}});
        AddFormFields(document, {{.kind = FieldKind::kText,
                                  .name = "holder",
                                  .controls = {{0, {72, 600, 300, 620}}},
                                  .value = "Jane Roe 078-05-1120"},
                                 {.kind = FieldKind::kText,
                                  .name = "secret",
                                  .controls = {{0, {72, 560, 300, 580}}},
                                  .value = "hidden value"},
                                 {.kind = FieldKind::kCheckBox,
                                  .name = "agree",
                                  .controls = {{0, {72, 520, 86, 534}, "Yes"}},
                                  .value = "Yes"},
                                 {.kind = FieldKind::kText,
                                  .name = "city",
                                  .controls = {{1, {72, 600, 300, 620}}},
                                  .value = "Oslo"}});
        return document;
    }

    static void Hide(Document& document, const std::string& field) {
        InteractiveForm form(document);
        const ObjPtr found = form.FindField(field);
        fz_context* ctx = document.fz();
        CallMupdf(ctx, "hide",
                  [&] { pdf_dict_put_int(ctx, found.get(), PDF_NAME(F), PDF_ANNOT_IS_HIDDEN); });
    }
};

TEST_F(FlattenerTest, ShownWidgetsBecomePageTextAndAllWidgetsGo) {
    Document document = Sample();
    Hide(document, "secret");
    ASSERT_THAT(PageString(document, 0), Not(HasSubstr("Jane Roe")));

    FlattenPageWidgets(document, 0);
    EXPECT_THAT(PageString(document, 0), HasSubstr("Jane Roe 078-05-1120"));
    EXPECT_THAT(PageString(document, 0), HasSubstr("Claim form"));
    EXPECT_THAT(PageString(document, 0), Not(HasSubstr("hidden value")));
    EXPECT_EQ(WidgetCount(document, 0), 0);
    // Page 1 keeps its field, so the form stays.
    EXPECT_EQ(WidgetCount(document, 1), 1);
    EXPECT_FALSE(DropEmptyForm(document));
    EXPECT_TRUE(HasForm(document));

    FlattenPageWidgets(document, 1);
    FlattenPageWidgets(document, 2);  // nothing to do
    EXPECT_TRUE(DropEmptyForm(document));

    const std::string path = PathOf("flat.pdf");
    document.SaveFull(path);
    const Document reopened = Document::Open(context_, path);
    EXPECT_FALSE(HasForm(reopened));
    for (int page = 0; page < 3; ++page)
        EXPECT_EQ(WidgetCount(reopened, page), 0) << page;
    EXPECT_THAT(PageString(reopened, 0), HasSubstr("Jane Roe 078-05-1120"));
    EXPECT_THAT(PageString(reopened, 1), HasSubstr("Oslo"));
    EXPECT_EQ(PageString(reopened, 2), "Third page");
}

TEST_F(FlattenerTest, ValuesStoredWithoutAppearanceAreBakedAsTyped) {
    Document document = Sample();
    {
        InteractiveForm form(document);
        ASSERT_TRUE(form.SetValue(form.FindField("city").get(), "Bergen", false));
    }
    FlattenPageWidgets(document, 1);
    EXPECT_THAT(PageString(document, 1), HasSubstr("Bergen"));
    EXPECT_THAT(PageString(document, 1), Not(HasSubstr("Oslo")));
    EXPECT_THROW(FlattenPageWidgets(document, 3), Error);
}

}  // namespace
}  // namespace pdfhost::engine
