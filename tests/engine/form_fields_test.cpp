#include <gtest/gtest.h>

#include "engine/field_text_finder.h"
#include "engine/form_builder.h"
#include "engine/form_fields.h"
#include "engine/mupdf_call.h"
#include "engine/permissions.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;

// Two pages: a text field, a check box, a radio group of three, a combo box and a push button
// on page 0; a text field under a parent field, a list box and a signature on page 1; the
// radio group has a fourth control on page 1.
std::vector<FieldDescription> SampleFields() {
    return {
        {.kind = FieldKind::kText,
         .name = "ssn",
         .controls = {{0, {72, 700, 300, 720}}},
         .value = "SSN 078-05-1120 on file"},
        {.kind = FieldKind::kCheckBox,
         .name = "agree",
         .controls = {{0, {72, 660, 86, 674}, "Yes"}},
         .value = "Yes"},
        {.kind = FieldKind::kRadioGroup,
         .name = "size",
         .controls = {{0, {72, 620, 86, 634}, "S"},
                      {0, {92, 620, 106, 634}, "M"},
                      {0, {112, 620, 126, 634}, "L"},
                      {1, {72, 620, 86, 634}, "XL"}},
         .value = "M"},
        {.kind = FieldKind::kComboBox,
         .name = "city",
         .controls = {{0, {72, 580, 200, 596}}},
         .value = "Oslo",
         .options = {"Oslo", "Bergen"}},
        {.kind = FieldKind::kPushButton, .name = "send", .controls = {{0, {72, 540, 140, 560}}}},
        {.kind = FieldKind::kText,
         .name = "name",
         .parent = "person",
         .controls = {{1, {72, 700, 300, 720}}},
         .value = "Jane Roe"},
        {.kind = FieldKind::kListBox,
         .name = "pets",
         .controls = {{1, {72, 640, 200, 690}}},
         .value = "cat",
         .options = {"cat", "dog"}},
        {.kind = FieldKind::kSignature, .name = "sig", .controls = {{1, {72, 560, 200, 600}}}},
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
};

TEST_F(FormTest, FieldValuesAreSearchedWithTheDrawnPositionOfTheMatch) {
    Document document = Sample();
    const std::optional<TextPattern> pattern = TextPattern::Compile(U"078-05-1120", FindOptions{});
    ASSERT_TRUE(pattern);

    const std::vector<FieldMatch> found = FindInFieldValues(document, 0, *pattern);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].match, (TextMatch{4, 11}));
    EXPECT_EQ(found[0].value, U"SSN 078-05-1120 on file");
    ASSERT_EQ(found[0].rects.size(), 1u);
    const Rect& rect = found[0].rects[0];
    // Inside the field, past "SSN " and well short of its right edge.
    EXPECT_GT(rect.left, 85);
    EXPECT_LT(rect.right, 200);
    EXPECT_GE(rect.bottom, 699);
    EXPECT_LE(rect.top, 721);

    EXPECT_TRUE(FindInFieldValues(document, 1, *pattern).empty());
    // The page's own text is no field text.
    EXPECT_TRUE(FindInFieldValues(document, 0, *TextPattern::Compile(U"Application", {})).empty());
}

TEST_F(FormTest, ChoiceFieldsAreSearchedInTheirValuesAndTheOptionsTheyShow) {
    Document document = Sample();
    struct Case {
        int page;
        const char32_t* needle;
        std::u32string value;  // empty: the match is in an option the control shows
        Rect control;
    };
    // The combo box "city" (Oslo of Oslo, Bergen) shows its value; the list box "pets" (cat of
    // cat, dog) shows every option, one per line.
    const Case cases[] = {
        {0, U"oslo", U"Oslo", {72, 580, 200, 596}},
        {1, U"cat", U"cat", {72, 640, 200, 690}},
        {1, U"DOG", U"", {72, 640, 200, 690}},
    };
    for (const Case& c : cases) {
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
    const std::string path = PathOf("locked.pdf");
    {
        Document document = Sample();
        document.SaveFull(path);
    }
    Document plain = Document::Open(context_, path);
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

}  // namespace
}  // namespace pdfhost::engine
