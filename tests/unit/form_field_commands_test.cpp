// getAllFormFields and setFormFieldValue: the list of controls with their shared keys, the
// records they leave in the store, and the checks of both commands in order.
#include "plugin_fixture.h"

namespace {

class FormFieldCommandsTest : public PluginFixture {
  protected:
    void SetUp() override {
        FakeDoc pdf;
        pdf.pages.resize(3);
        pdf.pages[0].controls = {
            FakeControl{L"choice", kNdxControlRadioButton, L"B", NdxRect{1, 1, 5, 5}},
            FakeControl{L"", kNdxControlTextField, L"unnamed", NdxRect{}},
            FakeControl{L"name", kNdxControlTextField, L"Ann", NdxRect{10, 20, 90, 40}},
            FakeControl{L"choice", kNdxControlRadioButton, L"B", NdxRect{6, 1, 9, 5}}};
        pdf.pages[1].available = false;
        pdf.pages[1].controls = {FakeControl{L"hidden", kNdxControlTextField, L"x", NdxRect{}}};
        pdf.pages[2].controls = {
            FakeControl{L"choice", kNdxControlRadioButton, L"B", NdxRect{1, 1, 5, 5}},
            FakeControl{L"agree", kNdxControlCheckBox, L"Yes", NdxRect{}},
            FakeControl{L"notes", kNdxControlRichText, L"rich", NdxRect{}},
            FakeControl{L"odd", 12, L"", NdxRect{}}};
        doc = host.OpenPdf(pdf);
    }
    std::string SetValue(const std::string& rest) { return "{" + FileArg(doc) + "," + rest + "}"; }

    HostDoc doc = nullptr;
};

TEST_F(FormFieldCommandsTest, ControlsInPageOrderWithOneKeyPerFieldName) {
    const Json::Value reply = Call("getAllFormFields", "not json is not read");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    const Json::Value& data = reply["data"];
    ASSERT_EQ(data.size(), 7u);
    std::vector<std::string> rows;
    for (const Json::Value& e : data) {
        rows.push_back(e["name"].asString() + "|" + e["type"].asString() + "|" +
                       e["value"].asString() + "|" + std::to_string(e["index"].asInt()));
    }
    EXPECT_EQ(rows, (std::vector<std::string>{"choice|RadioButton||0", "name|TextField|Ann|0",
                                              "choice|RadioButton||1", "choice|RadioButton||2",
                                              "agree|CheckBox||0", "notes|RichText|rich|0",
                                              "odd|Unknown||0"}));
    const std::string choice = data[0]["searchKey"].asString();
    EXPECT_EQ(data[2]["searchKey"].asString(), choice);
    EXPECT_EQ(data[3]["searchKey"].asString(), choice);
    EXPECT_NE(data[1]["searchKey"].asString(), choice);

    // The reply's index is the place in the key's list; the record's own index the control's
    // place on its page (the unnamed control counts).
    const SearchRecord& second = Stored(doc, choice, 1);
    EXPECT_EQ(Where(second), "0:-1--1#3");
    EXPECT_TRUE(second.file.empty() && second.searchKey.empty());
    ASSERT_EQ(second.rects.size(), 1u);
    EXPECT_EQ(second.rects[0].left, 6.0f);
    EXPECT_EQ(Stored(doc, choice, 2).page, 2);

    // A field's record can be annotated like a match; a new run makes new keys.
    EXPECT_EQ(Ret("addAnnot", R"({"searchKey":")" + data[1]["searchKey"].asString() +
                                  R"(","index":0,"type":"redact","uniqueIDName":"ai_plugin_f"})"),
              0);
    EXPECT_NE(Call("getAllFormFields")["data"][0]["searchKey"].asString(), choice);
}

TEST_F(FormFieldCommandsTest, ListChecksInOrder) {
    host.Doc(doc).hasInterForm = false;
    EXPECT_EQ(Ret("getAllFormFields"), 300009);
    host.Doc(doc).hasForm = false;
    EXPECT_EQ(Ret("getAllFormFields"), 300009);
    app.documents->erase(FromUtf8(FileId(doc)));
    EXPECT_EQ(Ret("getAllFormFields"), 400004);
    host.Doc(doc).hasPdf = false;
    EXPECT_EQ(Ret("getAllFormFields"), 300011);
    host.active = nullptr;
    EXPECT_EQ(Ret("getAllFormFields"), 300001);
}

TEST_F(FormFieldCommandsTest, SetValueChecksInOrderAndWritesText) {
    EXPECT_EQ(Ret("setFormFieldValue", "{"), 100001);
    EXPECT_EQ(Ret("setFormFieldValue", R"({"fieldName":"name","value":"x"})"), 100004);
    EXPECT_EQ(Ret("setFormFieldValue", SetValue(R"("value":"x")")), 100019);
    for (const char* value : {"", R"(,"value":null)", R"(,"value":{"a":1})"})
        EXPECT_EQ(Ret("setFormFieldValue", SetValue(std::string(R"("fieldName":"name")") + value)),
                  100020)
            << value;
    EXPECT_EQ(Ret("setFormFieldValue", R"({"file":{"id":"{X}"},"fieldName":"name","value":"x"})"),
              300003);
    EXPECT_EQ(Ret("setFormFieldValue", SetValue(R"("fieldName":"missing","value":"x")")), 400011);
    host.refuseValue = true;
    EXPECT_EQ(Ret("setFormFieldValue", SetValue(R"("fieldName":"name","value":"x")")), 400012);
    EXPECT_FALSE(host.Doc(doc).modified);
    host.refuseValue = false;

    // Numbers are written as their text, "" clears; a value needs no current document.
    host.active = nullptr;
    host.calls.clear();
    ASSERT_EQ(Ret("setFormFieldValue", SetValue(R"("fieldName":"name","value":42)")), 0);
    EXPECT_EQ(host.Page(doc, 0).controls[2].value, L"42");
    EXPECT_EQ(host.calls, (std::vector<std::string>{"SetUpdateAP:1", "SetValue:1", "SetChanged"}));
    ASSERT_EQ(Ret("setFormFieldValue", SetValue(R"("fieldName":"name","value":"")")), 0);
    EXPECT_EQ(host.Page(doc, 0).controls[2].value, L"");

    host.Doc(doc).hasInterForm = false;
    EXPECT_EQ(Ret("setFormFieldValue", SetValue(R"("fieldName":"name","value":"x")")), 400010);
    host.Doc(doc).hasForm = false;
    EXPECT_EQ(Ret("setFormFieldValue", SetValue(R"("fieldName":"name","value":"x")")), 400009);
    const std::string closed = SetValue(R"("fieldName":"name","value":"x")");
    host.Close(doc);
    EXPECT_EQ(Ret("setFormFieldValue", closed), 300003);
}

}  // namespace
