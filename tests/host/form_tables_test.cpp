// The interactive form through the tables and the scripted setField line: listing controls,
// names and values, writing values with their hooks, and reading them back from the saved file.
#include <gmock/gmock.h>

#include <sstream>

#include "../engine/engine_test_support.h"
#include "automation/script_session.h"
#include "form_sample.h"
#include "host_test_support.h"
#include "script_lines.h"
#include "wide_text.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;
using ::testing::ElementsAre;

std::vector<engine::FieldDescription> Fields() {
    using engine::FieldKind;
    return {
        {.kind = FieldKind::kText,
         .name = "ssn",
         .controls = {{0, {72, 500, 300, 520}}},
         .value = "078-05-1120"},
        {.kind = FieldKind::kRadioGroup,
         .name = "size",
         .controls = {{0, {72, 460, 86, 474}, "S"}, {1, {72, 460, 86, 474}, "L"}},
         .value = "S"},
        {.kind = FieldKind::kCheckBox, .name = "agree", .controls = {{0, {72, 420, 86, 434}}}},
        {.kind = FieldKind::kComboBox,
         .name = "city",
         .controls = {{0, {72, 380, 200, 396}}},
         .value = "Oslo",
         .options = {"Oslo", "Bergen"}},
        {.kind = FieldKind::kPushButton, .name = "send", .controls = {{0, {72, 340, 140, 360}}}},
        {.kind = FieldKind::kText,
         .name = "name",
         .parent = "person",
         .controls = {{1, {72, 500, 300, 520}}},
         .value = "Jane Roe"},
        {.kind = FieldKind::kListBox,
         .name = "pets",
         .controls = {{1, {72, 400, 200, 450}}},
         .value = "cat",
         .options = {"cat", "dog"}},
        {.kind = FieldKind::kSignature, .name = "sig", .controls = {{1, {72, 300, 200, 340}}}},
    };
}

// Writes down the modified and field-changed hooks: "modified", "field <full name>=<value>".
class FormHooks {
  public:
    FormHooks() {
        record_.setWord(kDocEventClientData, this);
        record_.setWord(kDocEventModified, reinterpret_cast<void*>(&Modified));
        record_.setWord(kDocEventFieldChanged, reinterpret_cast<void*>(&FieldChanged));
    }
    HostDocEventRecord* Record() { return &record_; }
    std::vector<std::string> Take() { return std::exchange(calls_, {}); }

  private:
    static void Modified(void* client, HostDoc) {
        static_cast<FormHooks*>(client)->calls_.push_back("modified");
    }
    static void FieldChanged(void* client, HostDoc, NdxFormField field) {
        static_cast<FormHooks*>(client)->calls_.push_back("field " + Text(field, true) + "=" +
                                                          Text(field, false));
    }
    // The field's name or value, read through the tables as a plug-in would.
    static std::string Text(NdxFormField field, bool name) {
        const HostWideString out = CallHost<Op::HostWideStringNew>();
        if (name) {
            CallHost<Op::NDXFormFieldGetFullName>(field, out);
        } else {
            CallHost<Op::NDXFormFieldGetValue>(field, out);
        }
        std::string text = Utf8Of(testing::WideText(out));
        CallHost<Op::HostWideStringDelete>(out);
        return text;
    }

    HostDocEventRecord record_;
    std::vector<std::string> calls_;
};

class FormTables : public testing::HostFixture {
  protected:
    FormTables() {
        path_ = testing::WriteFormPdf(files_, "form.pdf", {{"First"}, {"Second"}}, Fields());
        CallHost<Op::HostAppRegisterDocEvents>(hooks_.Record());
    }

    HostDocument& Open() {
        HostApp::OpenResult result = app_.OpenDocument(path_);
        EXPECT_NE(result.document, nullptr) << result.error;
        return *result.document;
    }

    static NdxInterForm FormOf(const HostDocument& document) {
        return CallHost<Op::NDXInterFormFromEnvironment>(
            CallHost<Op::HostDocGetInterForm>(document.Handle()));
    }

    static std::string Wide(void (*read)(NdxFormField, HostWideString), NdxFormField field) {
        const HostWideString out = CallHost<Op::HostWideStringNew>();
        CallHost<Op::HostWideStringSet>(out, L"left over");
        read(field, out);
        std::string text = Utf8Of(testing::WideText(out));
        CallHost<Op::HostWideStringDelete>(out);
        return text;
    }
    static std::string Name(NdxFormField field) {
        return Wide(
            [](NdxFormField f, HostWideString o) { CallHost<Op::NDXFormFieldGetFullName>(f, o); },
            field);
    }
    static std::string Value(NdxFormField field) {
        return Wide(
            [](NdxFormField f, HostWideString o) { CallHost<Op::NDXFormFieldGetValue>(f, o); },
            field);
    }

    // "<name> <type> <value> @<left>,<bottom>" for each control of a page, as a plug-in lists
    // them.
    static std::vector<std::string> Controls(const HostDocument& document, int index) {
        const NdxInterForm form = FormOf(document);
        const HostPageView view = CallHost<Op::HostDocGetPageView>(document.Handle(), index);
        const NdxPage page = CallHost<Op::HostPageViewGetPage>(view);
        std::vector<std::string> rows;
        const int count = CallHost<Op::NDXInterFormCountPageControls>(form, page);
        for (int i = 0; i < count; ++i) {
            const NdxFormControl control = CallHost<Op::NDXInterFormGetPageControl>(form, page, i);
            const NdxFormField field = CallHost<Op::NDXFormControlGetField>(control);
            NdxRect rect{};
            CallHost<Op::NDXFormControlGetRect>(control, &rect);
            rows.push_back(Name(field) + " " +
                           std::to_string(CallHost<Op::NDXFormControlGetType>(control)) + " " +
                           Value(field) + " @" + std::to_string(static_cast<int>(rect.left)) + "," +
                           std::to_string(static_cast<int>(rect.bottom)));
        }
        return rows;
    }

    FormHooks hooks_;
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
    EXPECT_EQ(Name(CallHost<Op::NDXInterFormGetField>(form, 0, L"person.name")), "person.name");
    EXPECT_EQ(CallHost<Op::NDXInterFormGetField>(form, 0, L"person"), nullptr);
    EXPECT_EQ(CallHost<Op::NDXInterFormGetField>(form, 1, L"ssn"), nullptr);
    EXPECT_EQ(CallHost<Op::NDXInterFormGetPageControl>(form, nullptr, 0), nullptr);
    // A page of another document is no page of this form.
    const HostDocument& blank = app_.NewDocument();
    const NdxPage foreign =
        CallHost<Op::HostPageViewGetPage>(CallHost<Op::HostDocGetPageView>(blank.Handle(), 0));
    EXPECT_EQ(CallHost<Op::NDXInterFormCountPageControls>(form, foreign), 0);
    // A document without fields has an empty form.
    EXPECT_NE(FormOf(blank), nullptr);
    EXPECT_EQ(CallHost<Op::NDXInterFormCountPageControls>(FormOf(blank), foreign), 0);
}

TEST_F(FormTables, SetValuesFireTheirHooksAndStandInTheSavedFile) {
    HostDocument& document = Open();
    const NdxInterForm form = FormOf(document);
    CallHost<Op::NDXInterFormSetUpdateAP>(form, 1);
    const NdxFormField ssn = CallHost<Op::NDXInterFormGetField>(form, 0, L"ssn");
    const NdxFormField size = CallHost<Op::NDXInterFormGetField>(form, 0, L"size");
    const NdxFormField agree = CallHost<Op::NDXInterFormGetField>(form, 0, L"agree");

    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(ssn, L"", 1), 1);
    EXPECT_THAT(hooks_.Take(), ElementsAre("modified", "field ssn="));
    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(size, L"L", 0), 1);
    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(agree, L"true", 1), 1);
    EXPECT_THAT(hooks_.Take(), ElementsAre("field agree=Yes"));
    const auto field = [&](const wchar_t* name) {
        return CallHost<Op::NDXInterFormGetField>(form, 0, name);
    };
    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(field(L"city"), L"Bergen", 0), 1);
    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(field(L"pets"), L"dog", 0), 1);
    // A refused value changes nothing and tells nobody.
    for (const auto& [name, value] :
         {std::pair{L"size", L"M"}, {L"city", L"Paris"}, {L"send", L"x"}, {L"sig", L"x"}}) {
        EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(field(name), value, 1), 0) << Utf8Of(name);
    }
    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(size, nullptr, 1), 0);
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
    const std::string text = engine::testing_support::RunCommand("pdftotext '" + path_ + "' -");
    EXPECT_EQ(text.find("078-05-1120"), std::string::npos) << text;
    EXPECT_NE(text.find("Bergen"), std::string::npos) << text;
}

TEST_F(FormTables, StaleAndNullHandlesAnswerNeutrally) {
    HostDocument& document = Open();
    const NdxInterForm form = FormOf(document);
    const HostFormEnv env = CallHost<Op::HostDocGetInterForm>(document.Handle());
    const NdxFormField ssn = CallHost<Op::NDXInterFormGetField>(form, 0, L"ssn");
    const NdxPage page =
        CallHost<Op::HostPageViewGetPage>(CallHost<Op::HostDocGetPageView>(document.Handle(), 0));
    const NdxFormControl control = CallHost<Op::NDXInterFormGetPageControl>(form, page, 0);
    const HostDoc closed = document.Handle();
    app_.CloseDocument(document);

    EXPECT_EQ(CallHost<Op::HostDocGetInterForm>(closed), nullptr);
    EXPECT_EQ(CallHost<Op::NDXInterFormFromEnvironment>(env), nullptr);
    EXPECT_EQ(CallHost<Op::NDXInterFormGetField>(form, 0, L"ssn"), nullptr);
    EXPECT_EQ(Name(ssn), "");
    EXPECT_EQ(Value(ssn), "");
    EXPECT_EQ(CallHost<Op::NDXFormFieldSetValue>(ssn, L"x", 1), 0);
    EXPECT_EQ(CallHost<Op::NDXFormControlGetType>(control), 0);
    EXPECT_EQ(CallHost<Op::NDXFormControlGetField>(control), nullptr);
    NdxRect rect{1, 2, 3, 4};
    CallHost<Op::NDXFormControlGetRect>(control, &rect);
    EXPECT_EQ(rect.right, 0);
    EXPECT_EQ(CallHost<Op::NDXInterFormFromEnvironment>(nullptr), nullptr);
    EXPECT_EQ(CallHost<Op::NDXFormControlGetType>(nullptr), 0);
    EXPECT_TRUE(hooks_.Take().empty());
}

TEST_F(FormTables, TheScriptedUserTypesIntoAField) {
    std::ostringstream out;
    ScriptSession session(app_, out);
    session.OpenFile(path_);
    out.str("");
    hooks_.Take();

    session.HandleLine(R"({"host":"setField","doc":1,"name":"person.name","value":"John Doe"})");
    session.HandleLine(R"({"host":"setField","doc":1,"name":"agree","value":true})");
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(hooks_.Take(),
                ElementsAre("modified", "field person.name=John Doe", "field agree=Yes"));

    session.HandleLine(R"({"host":"setField","doc":1,"name":"nobody","value":"x"})");
    session.HandleLine(R"({"host":"setField","doc":1,"name":"size","value":"XL"})");
    session.HandleLine(R"({"host":"setField","doc":1,"name":"ssn"})");
    session.HandleLine(R"({"host":"setField","doc":7,"name":"ssn","value":"x"})");
    std::vector<std::string> errors;
    for (const Json::Value& line : testing::ParseScriptLines(out.str()))
        errors.push_back(line["error"].asString());
    EXPECT_THAT(errors, ElementsAre("no field nobody in document 1",
                                    "field size does not take the value XL",
                                    "\"setField\" needs a \"value\" string", "no document 7"));
    EXPECT_TRUE(hooks_.Take().empty());
}

}  // namespace
}  // namespace pdfhost
