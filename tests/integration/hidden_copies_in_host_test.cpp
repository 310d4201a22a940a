// An apply through the plug-in in pdfhost removes the redacted words from the rest of the file
// too: the words the page searched for and the characters under the boxes, wherever the file
// holds them as text; the saved file is checked by the leak checker.
#include "annotation_editor.h"
#include "bridge/json_text.h"
#include "engine/pdf_factory.h"
#include "leak_check.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;

class HiddenCopiesInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }

    // Finds `text` and marks its first match for redaction as `name`.
    void Mark(const std::string& text, const std::string& name) {
        Json::Value find(Json::objectValue);
        find["file"]["id"] = Call("getCurrentDoc")["data"][0]["id"];
        find["text"] = text;
        const Json::Value found = Call("findTexts", find);
        ASSERT_GE(found["data"]["count"].asInt(), 1) << found;
        Json::Value add(Json::objectValue);
        add["searchKey"] = found["data"]["searchKey"];
        add["index"] = 0;
        add["type"] = "redact";
        add["uniqueIDName"] = name;
        ASSERT_EQ(Call("addAnnot", add)["ret"].asInt(), 0);
    }
    // Applies the marks named; returns the names the host could not use.
    Json::Value Apply(const std::vector<std::string>& names) {
        Json::Value answer(Json::objectValue);
        answer["host"] = "answer";
        answer["dialog"] = "messageBox";
        answer["value"] = 1;
        Line(answer);
        Json::Value params(Json::objectValue);
        for (const std::string& name : names)
            params["uniqueIDNames"].append(name);
        const Json::Value applied = Call("redactApply", params);
        EXPECT_EQ(applied["ret"].asInt(), 0) << applied;
        return applied["data"];
    }
    void ApplyAndSave(const std::vector<std::string>& names) {
        EXPECT_EQ(Apply(names).size(), 0u);
        Json::Value save(Json::objectValue);
        save["host"] = "save";
        save["doc"] = 1;
        for (const Json::Value& output : Line(save))
            EXPECT_FALSE(output.isMember("error")) << output;
    }
};

TEST_F(HiddenCopiesInHostTest, NameAndMailGoFromTheInfoDictionaryAndTheOtherEntriesStay) {
    PdfDescription description;
    description.pages.push_back(PageDescription::TextLines(
        {"Client: Jane Roe", "Contact jane.roe@example.com", "Keep this sentence"}));
    description.info = {{"Title", "File of JANE ROE"},
                        {"Author", "jane.roe@example.com"},
                        {"Keywords", "Jane\nRoe, insurance"},
                        {"Subject", "Quarterly insurance review"}};
    const std::string path = MakePdf("client.pdf", description);
    ASSERT_GT(Open(path), 0);
    ASSERT_NE(leak_check::Leaks(path, {"Jane Roe", "jane.roe@example.com"}), "");

    Mark("Jane Roe", "ai_plugin_name");
    Mark("jane.roe@example.com", "ai_plugin_mail");
    ApplyAndSave({"ai_plugin_name", "ai_plugin_mail"});

    EXPECT_EQ(leak_check::Leaks(path, {"Jane Roe", "jane.roe@example.com"}), "");
    pdfhost::engine::Context context;
    pdfhost::engine::Document saved = pdfhost::engine::Document::Open(context, path);
    EXPECT_EQ(saved.InfoString("Title"), "File of ");
    EXPECT_EQ(saved.InfoString("Keywords"), ", insurance");
    EXPECT_EQ(saved.InfoString("Subject"), "Quarterly insurance review");
    EXPECT_EQ(saved.InfoString("Author"), "");
}

// The user presses Ctrl+Z after the scan: the last mark goes. The apply names it as not
// applied, which is what the page tells the user; marked again, it is applied too.
TEST_F(HiddenCopiesInHostTest, MarkUndoneBeforeTheApplyIsNamedAndCanBeMarkedAgain) {
    PdfDescription description;
    description.pages.push_back(
        PageDescription::TextLines({"Client: Jane Roe", "SSN 536-22-4107", "Keep this"}));
    const std::string path = MakePdf("undo.pdf", description);
    ASSERT_GT(Open(path), 0);
    Mark("Jane Roe", "ai_plugin_name");
    Mark("536-22-4107", "ai_plugin_ssn");
    pdfhost::HostDocument* document = host->Documents().Active();
    ASSERT_NE(document, nullptr);
    ASSERT_TRUE(pdfhost::AnnotationEditor(*host).UndoLast(*document));

    const Json::Value failed = Apply({"ai_plugin_name", "ai_plugin_ssn"});
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].asString(), "ai_plugin_ssn");

    Mark("536-22-4107", "ai_plugin_ssn_again");
    ApplyAndSave({"ai_plugin_ssn_again"});
    EXPECT_EQ(leak_check::Leaks(path, {"Jane Roe", "536-22-4107"}), "");
}

}  // namespace
