// Search, annotation and redaction commands against real PDF files in pdfhost, checked on what a
// reader of the saved file sees: pdftotext's text, Info entries, and the leak checker for copies
// of the redacted words anywhere in the file.
#include <gmock/gmock.h>

#include "annotation_editor.h"
#include "engine/document.h"
#include "leak_check.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::Document;
using pdfhost::engine::PageDescription;
using ::testing::HasSubstr;

class RedactionInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }
};

// The words go from the page and from the rest of the file too: the words searched for and the
// characters under the boxes, wherever the file holds them as text; the other Info entries stay.
TEST_F(RedactionInHostTest, RedactedWordsAreGoneFromTheWholeFileAndTheRestStays) {
    const std::string path = OpenPdf(
        "people.pdf", {.pages = {PageDescription::TextLines(
                           {"Jane Roe lives at 12 Elm Street", "Contact jane.roe@example.com",
                            "Keep this sentence intact", "Jane Roe signed on Monday"})},
                       .info = {{"Title", "File of JANE ROE"},
                                {"Author", "jane.roe@example.com"},
                                {"Keywords", "Jane\nRoe, insurance"},
                                {"Subject", "Quarterly insurance review"}}});
    ASSERT_NE(leak_check::Leaks(path, {"Jane Roe", "jane.roe@example.com"}), "");
    const Json::Value names = Find("Jane Roe");
    ASSERT_EQ(names["ret"].asInt(), 0) << names;
    ASSERT_EQ(names["data"]["count"].asInt(), 2);
    const Json::Value mail = Find("jane.roe@example.com");
    ASSERT_EQ(mail["data"]["count"].asInt(), 1);

    EXPECT_EQ(AddAnnot(names["data"]["searchKey"], 0, "redact", "ai_plugin_a")["ret"].asInt(), 0);
    EXPECT_EQ(AddAnnot(names["data"]["searchKey"], 1, "redact", "ai_plugin_b")["ret"].asInt(), 0);
    EXPECT_EQ(AddAnnot(mail["data"]["searchKey"], 0, "redact", "ai_plugin_c")["ret"].asInt(), 0);
    EXPECT_EQ(Call("isCurrentDocModified")["data"], Json::Value(true));

    const Json::Value applied = Apply({"ai_plugin_a", "ai_plugin_b", "ai_plugin_c", "nope"});
    EXPECT_EQ(applied["ret"].asInt(), 0) << applied;
    ASSERT_EQ(applied["data"].size(), 1u);
    EXPECT_EQ(applied["data"][0].asString(), "nope");
    Save();

    EXPECT_EQ(leak_check::Leaks(path, {"Jane Roe", "jane.roe@example.com"}), "");
    const std::string text = PdfToText(path);
    for (const char* kept :
         {"Keep this sentence intact", "lives at 12 Elm Street", "signed on Monday"})
        EXPECT_THAT(text, HasSubstr(kept));
    Document saved = Document::Open(host->Engine(), path);
    EXPECT_EQ(saved.InfoString("Title"), "File of ");
    EXPECT_EQ(saved.InfoString("Keywords"), ", insurance");
    EXPECT_EQ(saved.InfoString("Subject"), "Quarterly insurance review");
    EXPECT_EQ(saved.InfoString("Author"), "");
}

// The user presses Ctrl+Z after the scan: the last mark goes. The apply names it as not
// applied, which is what the page tells the user; marked again, it is applied too.
TEST_F(RedactionInHostTest, MarkUndoneBeforeTheApplyIsNamedAndCanBeMarkedAgain) {
    const std::string path =
        OpenPdf("undo.pdf", {.pages = {PageDescription::TextLines(
                                 {"Client: Jane Roe", "SSN 536-22-4107", "Keep this"})}});
    Mark("Jane Roe", "ai_plugin_name");
    Mark("536-22-4107", "ai_plugin_ssn");
    pdfhost::HostDocument* document = host->Documents().Active();
    ASSERT_NE(document, nullptr);
    ASSERT_TRUE(pdfhost::AnnotationEditor(*host).UndoLast(*document));

    const Json::Value failed = Apply({"ai_plugin_name", "ai_plugin_ssn"});
    EXPECT_EQ(failed["ret"].asInt(), 0) << failed;
    ASSERT_EQ(failed["data"].size(), 1u);
    EXPECT_EQ(failed["data"][0].asString(), "ai_plugin_ssn");

    Mark("536-22-4107", "ai_plugin_ssn_again");
    const Json::Value applied = Apply({"ai_plugin_ssn_again"});
    EXPECT_EQ(applied["ret"].asInt(), 0) << applied;
    EXPECT_EQ(applied["data"].size(), 0u) << applied;
    Save();
    EXPECT_EQ(leak_check::Leaks(path, {"Jane Roe", "536-22-4107"}), "");
}

}  // namespace
