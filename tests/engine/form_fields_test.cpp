// Interactive forms: searching field values where they are drawn, flattening widgets into page
// text, and field trees that loop or nest without end (the document opens with the loops broken,
// and the engine's own walks finish on it).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/field_text_finder.h"
#include "engine/flattener.h"
#include "engine/form_builder.h"
#include "engine/form_fields.h"
#include "engine/form_tree_cycles.h"
#include "engine/mupdf_call.h"
#include "engine/permissions.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using enum FieldKind;

// Two pages: a text field, a check box, a radio group of three, a combo box and a push button
// on page 0; a text field under a parent field, a list box and a signature on page 1; the
// radio group has a fourth control on page 1.
std::vector<FieldDescription> SampleFields() {
    return {
        {kText, "ssn", "", {{0, {72, 700, 300, 720}}}, "SSN 078-05-1120 on file"},
        {kCheckBox, "agree", "", {{0, {72, 660, 86, 674}, "Yes"}}, "Yes"},
        {kRadioGroup,
         "size",
         "",
         {{0, {72, 620, 86, 634}, "S"},
          {0, {92, 620, 106, 634}, "M"},
          {0, {112, 620, 126, 634}, "L"},
          {1, {72, 620, 86, 634}, "XL"}},
         "M"},
        {kComboBox, "city", "", {{0, {72, 580, 200, 596}}}, "Oslo", {"Oslo", "Bergen"}},
        {kPushButton, "send", "", {{0, {72, 540, 140, 560}}}},
        {kText, "name", "person", {{1, {72, 700, 300, 720}}}, "Jane Roe"},
        {kListBox, "pets", "", {{1, {72, 640, 200, 690}}}, "cat", {"cat", "dog"}},
        {kSignature, "sig", "", {{1, {72, 560, 200, 600}}}},
    };
}

class FormTest : public EngineTest {
  protected:
    Document Sample() {
        Document document =
            factory_.Build(PdfDescription{.pages = {PageDescription::TextLines({"Application"}),
                                                    PageDescription::TextLines({"Second page"})}});
        AddFormFields(document, SampleFields());
        return document;
    }
    // Page 0: a filled text field, a hidden text field and a check box; page 1: a text field;
    // page 2: no field.
    Document ClaimForm() {
        Document document =
            factory_.Build(PdfDescription{.pages = {PageDescription::TextLines({"Claim form"}),
                                                    PageDescription::TextLines({"Second page"}),
                                                    PageDescription::TextLines({"Third page"})}});
        AddFormFields(document,
                      {{kText, "holder", "", {{0, {72, 600, 300, 620}}}, "Jane Roe 078-05-1120"},
                       {kText, "secret", "", {{0, {72, 560, 300, 580}}}, "hidden value"},
                       {kCheckBox, "agree", "", {{0, {72, 520, 86, 534}, "Yes"}}, "Yes"},
                       {kText, "city", "", {{1, {72, 600, 300, 620}}}, "Oslo"}});
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

TEST_F(FormTest, ChoiceFieldsAreSearchedInTheirValuesAndTheOptionsTheyShow) {
    Document document = Sample();
    // The combo box "city" (Oslo of Oslo, Bergen) shows its value; the list box "pets" (cat of
    // cat, dog) shows every option, one per line.
    const struct {
        int page;
        const char32_t* needle;
        std::u32string value;  // empty: the match is in an option the control shows
        Rect control;
    } cases[] = {
        {0, U"oslo", U"Oslo", {72, 580, 200, 596}},
        {1, U"cat", U"cat", {72, 640, 200, 690}},
        {1, U"DOG", U"", {72, 640, 200, 690}},
    };
    for (const auto& c : cases) {
        const std::vector<FieldMatch> found =
            FindInFieldValues(document, c.page, *TextPattern::Compile(c.needle, FindOptions{}));
        ASSERT_EQ(found.size(), 1u) << EncodeUtf8(c.needle);
        EXPECT_EQ(found[0].value, c.value);
        EXPECT_EQ(found[0].match.count, 3 + static_cast<int>(c.value == U"Oslo"));
        ASSERT_EQ(found[0].rects.size(), 1u);
        // The drawn word: inside the control and well narrower than it.
        const Rect& box = found[0].rects[0];
        EXPECT_GE(box.left, c.control.left);
        EXPECT_LE(box.right, c.control.left + (c.control.right - c.control.left) / 2);
        EXPECT_GE(box.bottom, c.control.bottom - 1);
        EXPECT_LE(box.top, c.control.top + 1);
    }
    // The list's lines stand one under the other: "cat" above "dog".
    const auto boxOf = [&](const char32_t* needle) {
        return FindInFieldValues(document, 1, *TextPattern::Compile(needle, {}))[0].rects[0];
    };
    EXPECT_GT(boxOf(U"cat").bottom, boxOf(U"dog").bottom + 5);
    // An option that the combo box does not show is no text of the page.
    EXPECT_TRUE(FindInFieldValues(document, 0, *TextPattern::Compile(U"Bergen", {})).empty());
}

TEST_F(FormTest, ADocumentThatForbidsFillingInTakesNoValue) {
    Document plain = Sample();
    const std::string locked = PathOf("locked-encrypted.pdf");
    {
        pdf_write_options options = pdf_default_write_options;
        options.do_encrypt = PDF_ENCRYPT_AES_128;
        options.permissions = static_cast<int>(0xFFFFF0C0u | permission::kPrint);
        std::snprintf(options.opwd_utf8, sizeof options.opwd_utf8, "owner");
        CallMupdf(plain.fz(), "encrypt",
                  [&] { pdf_save_document(plain.fz(), plain.pdf(), locked.c_str(), &options); });
    }
    Document restricted = Document::Open(context_, locked);
    InteractiveForm form(restricted);
    EXPECT_FALSE(form.SetValue(form.FindField("ssn").get(), "changed", true));
    EXPECT_EQ(form.Value(form.FindField("ssn").get()), "SSN 078-05-1120 on file");
}

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

TEST_F(FormTest, ShownWidgetsBecomePageTextAndAllWidgetsGo) {
    Document document = ClaimForm();
    Hide(document, "secret");
    ASSERT_THAT(PageString(document, 0), Not(HasSubstr("Jane Roe")));

    FlattenPageWidgets(document, 0);
    EXPECT_THAT(PageString(document, 0),
                AllOf(HasSubstr("Jane Roe 078-05-1120"), HasSubstr("Claim form"),
                      Not(HasSubstr("hidden value"))));
    EXPECT_EQ(WidgetCount(document, 0), 0);
    // Page 1 keeps its field, so the form stays.
    EXPECT_EQ(WidgetCount(document, 1), 1);
    EXPECT_FALSE(DropEmptyForm(document));
    EXPECT_TRUE(HasForm(document));

    FlattenPageWidgets(document, 1);
    FlattenPageWidgets(document, 2);  // nothing to do
    EXPECT_TRUE(DropEmptyForm(document));

    const std::string path = Saved(document, "flat.pdf");
    const Document reopened = Document::Open(context_, path);
    EXPECT_FALSE(HasForm(reopened));
    for (int page = 0; page < 3; ++page)
        EXPECT_EQ(WidgetCount(reopened, page), 0) << page;
    EXPECT_THAT(PageString(reopened, 0), HasSubstr("Jane Roe 078-05-1120"));
    EXPECT_THAT(PageString(reopened, 1), HasSubstr("Oslo"));
    EXPECT_EQ(PageString(reopened, 2), "Third page");
}

// A value stored without a new appearance, by the engine or by another writer that asked readers
// for new appearances, is flattened as the value reads, not as the old appearance shows.
TEST_F(FormTest, ValuesStoredWithoutAppearanceAreBakedAsTyped) {
    for (const bool byEngine : {true, false}) {
        SCOPED_TRACE(byEngine);
        Document document = ClaimForm();
        fz_context* ctx = document.fz();
        const ObjPtr city = InteractiveForm(document).FindField("city");
        if (byEngine) {
            ASSERT_TRUE(InteractiveForm(document).SetValue(city.get(), "Bergen", false));
        } else {
            CallMupdf(ctx, "form", [&] {
                pdf_dict_put_text_string(ctx, city.get(), PDF_NAME(V), "Bergen");
                pdf_dict_putp(ctx, pdf_trailer(ctx, document.pdf()),
                              "Root/AcroForm/NeedAppearances", PDF_TRUE);
            });
        }
        EXPECT_TRUE(CallMupdf(ctx, "form", [&] {
            return pdf_to_bool(ctx, pdf_dict_getp(ctx, pdf_trailer(ctx, document.pdf()),
                                                  "Root/AcroForm/NeedAppearances"));
        }));
        FlattenPageWidgets(document, 1);
        EXPECT_THAT(PageString(document, 1), AllOf(HasSubstr("Bergen"), Not(HasSubstr("Oslo"))));
        EXPECT_THROW(FlattenPageWidgets(document, 3), Error);
    }
}

// A one-page file with a line of text and the given objects from number 10 on; its /AcroForm
// lists `fields`, its page `annots`. No cross-reference table: the engine rebuilds it.
std::string LoopPdf(const std::string& fields, const std::string& annots,
                    const std::vector<std::string>& objects) {
    const std::string content = "BT /F1 12 Tf 72 720 Td (Hello loop) Tj ET";
    std::string pdf = "%PDF-1.7\n1 0 obj <</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[" + fields +
                      "]>>>> endobj\n2 0 obj <</Type/Pages/Kids[3 0 R]/Count 1>> endobj\n" +
                      "3 0 obj <</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Resources<</Font"
                      "<</F1 5 0 R>>>>/Contents 4 0 R/Annots[" +
                      annots + "]>> endobj\n" + "4 0 obj <</Length " +
                      std::to_string(content.size()) + ">>stream\n" + content +
                      "\nendstream endobj\n" +
                      "5 0 obj <</Type/Font/Subtype/Type1/BaseFont/Helvetica>> endobj\n";
    for (std::size_t i = 0; i < objects.size(); ++i)
        pdf += std::to_string(10 + i) + " 0 obj " + objects[i] + " endobj\n";
    return pdf + "trailer <</Root 1 0 R>>\n%%EOF\n";
}

std::string Widget(const std::string& extra) {
    return "<</Type/Annot/Subtype/Widget/FT/Tx/Rect[100 100 200 120]/P 3 0 R" + extra + ">>";
}

// A chain of `length` fields, each the only kid of the one before.
std::vector<std::string> DeepChain(int length) {
    std::vector<std::string> objects;
    for (int i = 0; i < length; ++i) {
        const std::string parent = i > 0 ? "/Parent " + std::to_string(9 + i) + " 0 R" : "";
        const std::string kids =
            i + 1 < length ? "/Kids[" + std::to_string(11 + i) + " 0 R]" : "/Rect[0 0 9 9]";
        objects.push_back("<</FT/Tx/T(f" + std::to_string(i) + ")" + parent + kids + ">>");
    }
    return objects;
}

using FormTreeCyclesTest = EngineTest;

TEST_F(FormTreeCyclesTest, LoopingTreesAreBrokenAndEveryWalkFinishes) {
    const std::pair<const char*, std::string> cases[] = {
        {"field is its own kid", LoopPdf("10 0 R", "10 0 R 11 0 R",
                                         {Widget("/T(parent)/Kids[10 0 R 11 0 R]/V(kidvalue)"),
                                          Widget("/Parent 10 0 R/T(kid)")})},
        {"two fields are each other's kid",
         LoopPdf("10 0 R", "12 0 R",
                 {"<</FT/Tx/T(a)/Kids[11 0 R]/Parent 11 0 R>>",
                  "<</T(b)/Kids[10 0 R 12 0 R]/Parent 10 0 R>>", Widget("/Parent 11 0 R/T(w)")})},
        {"widget's parent chain loops outside the tree",
         LoopPdf("", "10 0 R",
                 {Widget("/Parent 11 0 R"), "<</T(x)/Parent 12 0 R>>", "<</T(y)/Parent 11 0 R>>"})},
        {"tree deeper than any form", LoopPdf("10 0 R", "", DeepChain(3000))},
    };
    for (const auto& [name, pdf] : cases) {
        SCOPED_TRACE(name);
        Document document = OpenBytes(pdf, "loop.pdf");
        EXPECT_EQ(BreakFormTreeCycles(document), 0) << "the open broke every loop already";

        InteractiveForm form(document);
        for (const ObjPtr& control : form.PageControls(0))
            form.FullName(form.FieldOf(control.get()));
        form.FindField("no such field", 0);
        FlattenPageWidgets(document, 0);
        EXPECT_THAT(PageString(document, 0), HasSubstr("Hello loop"));
        EXPECT_EQ(Document::Open(context_, Saved(document, "saved.pdf")).PageCount(), 1);
    }
}

TEST_F(FormTreeCyclesTest, WellFormedFormsAreLeftAlone) {
    Document document = OpenBytes(LoopPdf("10 0 R", "11 0 R 12 0 R",
                                          {"<</FT/Tx/T(name)/Kids[11 0 R 12 0 R]>>",
                                           Widget("/Parent 10 0 R"), Widget("/Parent 10 0 R")}));
    fz_context* ctx = document.fz();
    EXPECT_FALSE(
        CallMupdf(ctx, "changes", [&] { return pdf_has_unsaved_changes(ctx, document.pdf()); }));
    InteractiveForm form(document);
    EXPECT_EQ(form.PageControls(0).size(), 2u);
    EXPECT_NE(form.FindField("name", 0).get(), nullptr);
}

}  // namespace
}  // namespace pdfhost::engine
