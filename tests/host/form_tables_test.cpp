// The interactive form through the tables and the scripted setField line: listing controls,
// names and values, writing values with their hooks, and reading them back from the saved file.

#include "../engine/engine_test_support.h"
#include "form_sample.h"
#include "recording_hooks.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

using ::testing::ElementsAre;

// Kind, name, parent, controls (page, rectangle, on-state), value, options.
std::vector<engine::FieldDescription> Fields() {
    using enum engine::FieldKind;
    return {
        {kText, "ssn", "", {{0, {72, 500, 300, 520}}}, "078-05-1120"},
        {kRadioGroup,
         "size",
         "",
         {{0, {72, 460, 86, 474}, "S"}, {1, {72, 460, 86, 474}, "L"}},
         "S"},
        {kCheckBox, "agree", "", {{0, {72, 420, 86, 434}}}},
        {kComboBox, "city", "", {{0, {72, 380, 200, 396}}}, "Oslo", {"Oslo", "Bergen"}},
        {kPushButton, "send", "", {{0, {72, 340, 140, 360}}}},
        {kText, "name", "person", {{1, {72, 500, 300, 520}}}, "Jane Roe"},
        {kListBox, "pets", "", {{1, {72, 400, 200, 450}}}, "cat", {"cat", "dog"}},
        {kSignature, "sig", "", {{1, {72, 300, 200, 340}}}},
    };
}

constexpr auto FieldFullName = &RecordingHooks::FieldText<NDXFormFieldGetFullName>;
constexpr auto FieldText = &RecordingHooks::FieldText<NDXFormFieldGetValue>;

class FormTables : public HostFixture {
  protected:
    FormTables() {
        path_ = WriteFormPdf(files_, "form.pdf", {{"First"}, {"Second"}}, Fields());
        Call<HostAppRegisterDocEvents>(hooks_.Record());
    }

    HostDocument& Open() {
        HostDocument& document = OpenPath(path_);
        hooks_.Take();
        return document;
    }

    static NdxInterForm FormOf(const HostDocument& document) {
        return Call<NDXInterFormFromEnvironment>(Call<HostDocGetInterForm>(document.Handle()));
    }

    // "<name> <type> <value> @<left>,<bottom>" for each control of a page, as a plug-in lists
    // them.
    static std::vector<std::string> Controls(const HostDocument& document, int index) {
        const NdxInterForm form = FormOf(document);
        const NdxPage page = PageOf(document.Handle(), index);
        std::vector<std::string> rows;
        const int count = Call<NDXInterFormCountPageControls>(form, page);
        for (int i = 0; i < count; ++i) {
            const NdxFormControl control = Call<NDXInterFormGetPageControl>(form, page, i);
            const NdxFormField field = Call<NDXFormControlGetField>(control);
            NdxRect rect{};
            Call<NDXFormControlGetRect>(control, &rect);
            rows.push_back(FieldFullName(field) + " " +
                           std::to_string(Call<NDXFormControlGetType>(control)) + " " +
                           FieldText(field) + " @" + std::to_string(static_cast<int>(rect.left)) +
                           "," + std::to_string(static_cast<int>(rect.bottom)));
        }
        return rows;
    }

    RecordingHooks hooks_;
    std::string path_;
};

TEST_F(FormTables, ControlsOfEachPageWithTheirFieldsTypesValuesAndRectangles) {
    const HostDocument& document = Open();
    EXPECT_THAT(Controls(document, 0),
                ElementsAre("ssn 4 078-05-1120 @72,500", "size 2 S @72,460", "agree 3 Off @72,420",
                            "city 8 Oslo @72,380", "send 1  @72,340"));
    EXPECT_THAT(Controls(document, 1),
                ElementsAre("size 2 S @72,460", "person.name 4 Jane Roe @72,500",
                            "pets 7 cat @72,400", "sig 9  @72,300"));

    const NdxInterForm form = FormOf(document);
    EXPECT_EQ(FieldFullName(Call<NDXInterFormGetField>(form, 0, L"person.name")), "person.name");
    EXPECT_EQ(Call<NDXInterFormGetField>(form, 0, L"person"), nullptr);
    EXPECT_EQ(Call<NDXInterFormGetField>(form, 1, L"ssn"), nullptr);
    EXPECT_EQ(Call<NDXInterFormGetPageControl>(form, nullptr, 0), nullptr);
    // A page of another document is no page of this form.
    const HostDocument& blank = app_.NewDocument();
    const NdxPage foreign = PageOf(blank.Handle(), 0);
    EXPECT_EQ(Call<NDXInterFormCountPageControls>(form, foreign), 0);
    // A document without fields has an empty form.
    EXPECT_NE(FormOf(blank), nullptr);
    EXPECT_EQ(Call<NDXInterFormCountPageControls>(FormOf(blank), foreign), 0);
}

TEST_F(FormTables, SetValuesFireTheirHooksAndStandInTheSavedFile) {
    HostDocument& document = Open();
    const NdxInterForm form = FormOf(document);
    Call<NDXInterFormSetUpdateAP>(form, 1);
    const NdxFormField ssn = Call<NDXInterFormGetField>(form, 0, L"ssn");
    const NdxFormField size = Call<NDXInterFormGetField>(form, 0, L"size");
    const NdxFormField agree = Call<NDXInterFormGetField>(form, 0, L"agree");

    EXPECT_EQ(Call<NDXFormFieldSetValue>(ssn, L"", 1), 1);
    EXPECT_THAT(hooks_.Take(), ElementsAre("modified 1", "field ssn="));
    EXPECT_EQ(Call<NDXFormFieldSetValue>(size, L"L", 0), 1);
    EXPECT_EQ(Call<NDXFormFieldSetValue>(agree, L"true", 1), 1);
    EXPECT_THAT(hooks_.Take(), ElementsAre("field agree=Yes"));
    const auto field = [&](const wchar_t* name) {
        return Call<NDXInterFormGetField>(form, 0, name);
    };
    EXPECT_EQ(Call<NDXFormFieldSetValue>(field(L"city"), L"Bergen", 0), 1);
    EXPECT_EQ(Call<NDXFormFieldSetValue>(field(L"pets"), L"dog", 0), 1);
    // A refused value changes nothing and tells nobody.
    for (const auto& [name, value] :
         {std::pair{L"size", L"M"}, {L"city", L"Paris"}, {L"send", L"x"}, {L"sig", L"x"}}) {
        EXPECT_EQ(Call<NDXFormFieldSetValue>(field(name), value, 1), 0) << Utf8Of(name);
    }
    EXPECT_EQ(Call<NDXFormFieldSetValue>(size, nullptr, 1), 0);
    EXPECT_TRUE(hooks_.Take().empty());
    EXPECT_TRUE(document.IsModified());

    ASSERT_EQ(app_.SaveDocument(document), 1);
    app_.CloseDocument(document);
    const HostDocument& reopened = Open();
    EXPECT_THAT(Controls(reopened, 0),
                ElementsAre("ssn 4  @72,500", "size 2 L @72,460", "agree 3 Yes @72,420",
                            "city 8 Bergen @72,380", "send 1  @72,340"));
    EXPECT_THAT(Controls(reopened, 1),
                ElementsAre("size 2 L @72,460", "person.name 4 Jane Roe @72,500",
                            "pets 7 dog @72,400", "sig 9  @72,300"));
    // The rebuilt appearance no longer shows the old value to an independent reader.
    EXPECT_THAT(engine::testing_support::RunCommand("pdftotext '" + path_ + "' -"),
                HoldsWords({"Bergen"}, {"078-05-1120"}));
}

TEST_F(FormTables, StaleAndNullHandlesAnswerNeutrally) {
    HostDocument& document = Open();
    const NdxInterForm form = FormOf(document);
    const HostFormEnv env = Call<HostDocGetInterForm>(document.Handle());
    const NdxFormField ssn = Call<NDXInterFormGetField>(form, 0, L"ssn");
    const NdxPage page = PageOf(document.Handle(), 0);
    const NdxFormControl control = Call<NDXInterFormGetPageControl>(form, page, 0);
    const HostDoc closed = document.Handle();
    app_.CloseDocument(document);

    EXPECT_EQ(Call<HostDocGetInterForm>(closed), nullptr);
    EXPECT_EQ(Call<NDXInterFormFromEnvironment>(env), nullptr);
    EXPECT_EQ(Call<NDXInterFormGetField>(form, 0, L"ssn"), nullptr);
    EXPECT_EQ(FieldFullName(ssn), "");
    EXPECT_EQ(FieldText(ssn), "");
    EXPECT_EQ(Call<NDXFormFieldSetValue>(ssn, L"x", 1), 0);
    EXPECT_EQ(Call<NDXFormControlGetType>(control), 0);
    EXPECT_EQ(Call<NDXFormControlGetField>(control), nullptr);
    NdxRect rect{1, 2, 3, 4};
    Call<NDXFormControlGetRect>(control, &rect);
    EXPECT_EQ(rect.right, 0);
    EXPECT_EQ(Call<NDXInterFormFromEnvironment>(nullptr), nullptr);
    EXPECT_EQ(Call<NDXFormControlGetType>(nullptr), 0);
    EXPECT_EQ(hooks_.Take(), std::vector<std::string>{"closing 1"});
}

TEST_F(FormTables, TheScriptedUserTypesIntoAField) {
    Scripted script(app_);
    script.session.OpenFile(path_);
    hooks_.Take();

    EXPECT_TRUE(script
                    .Run({R"({"host":"setField","doc":1,"name":"person.name","value":"John Doe"})",
                          R"({"host":"setField","doc":1,"name":"agree","value":true})"})
                    .empty());
    EXPECT_THAT(hooks_.Take(),
                ElementsAre("modified 1", "field person.name=John Doe", "field agree=Yes"));

    std::vector<std::string> errors;
    for (const Json::Value& line :
         script.Run({R"({"host":"setField","doc":1,"name":"nobody","value":"x"})",
                     R"({"host":"setField","doc":1,"name":"size","value":"XL"})",
                     R"({"host":"setField","doc":1,"name":"ssn"})",
                     R"({"host":"setField","doc":7,"name":"ssn","value":"x"})"}))
        errors.push_back(line["error"].asString());
    EXPECT_THAT(errors, ElementsAre("no field nobody in document 1",
                                    "field size does not take the value XL",
                                    "\"setField\" needs a \"value\" string", "no document 7"));
    EXPECT_TRUE(hooks_.Take().empty());
}

}  // namespace
}  // namespace pdfhost::testing
