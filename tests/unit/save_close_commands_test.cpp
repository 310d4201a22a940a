// saveDocument, reload and closeCurrentFile: the plain save through the host's Save command with
// the bookkeeping of the saved and closed hooks, the Save As dialog and its name, the batch's
// save and close, and the reload that answers without identifier.
#include "bridge/command_table.h"
#include "document/save_as_name.h"
#include "plugin_fixture.h"

namespace {

constexpr unsigned kSave = 0xE103;

class SaveCloseTest : public PluginFixture {
  protected:
    HostDoc OpenAt(const std::wstring& path, bool modified = false) {
        HostDoc doc = host.OpenPdf(FakeDoc{}, path);
        host.Doc(doc).modified = modified;
        return doc;
    }
    // The host's Save command: a document with a file is saved in place; a temporary one is
    // saved to `savePath` (none: the user cancels), closed, and the saved file opened instead.
    void HostSavesOnCommand(std::optional<std::wstring> savePath = L"/docs/saved.pdf") {
        platform.onCommand = [this, savePath](unsigned command) {
            HostDoc doc = host.active;
            if (command != kSave || doc == nullptr)
                return;
            if (!host.Doc(doc).temporary) {
                host.Doc(doc).modified = false;
                host.FireDidSave(doc, 1);
                return;
            }
            host.FireDidSave(doc, savePath ? 1 : 0);
            if (savePath) {
                host.Close(doc);
                OpenAt(*savePath);
            }
        };
    }
    HostDoc OpenTemporary() {
        FakeDoc temporary;
        temporary.temporary = true;
        temporary.pages.resize(1);
        return host.Open(temporary);
    }
};

TEST_F(SaveCloseTest, PlainSaveGoesThroughTheHostsSaveCommand) {
    EXPECT_EQ(Ret("saveDocument", "not json"), 100001);
    EXPECT_EQ(Ret("saveDocument"), 300001);
    HostDoc doc = OpenAt(L"/docs/report.pdf", true);
    // The host left the document modified: the save failed.
    EXPECT_EQ(Ret("saveDocument"), 300002);
    HostSavesOnCommand();
    const Json::Value reply = Call("saveDocument", "{}");
    EXPECT_EQ(reply["ret"].asInt(), 0);
    EXPECT_TRUE(reply["data"].isNull());
    ASSERT_EQ(platform.sentCommands.size(), 2u);
    EXPECT_EQ(platform.sentCommands[1], std::make_pair(host.HostAppGetMainWindow(), kSave));
    EXPECT_FALSE(Call("isCurrentDocModified")["data"].asBool());
    EXPECT_EQ(host.Doc(doc).path, L"/docs/report.pdf");
    // Values without a boolean meaning are not a request for Save As.
    for (const char* params : {R"({"isSaveAs":"yes"})", R"({"isSaveAs":[]})", R"({"isSaveAs":0})"})
        EXPECT_EQ(Ret("saveDocument", params), 0) << params;
    EXPECT_TRUE(platform.dialogSettings.empty());
}

TEST_F(SaveCloseTest, TemporaryDocumentSaveIsToldByTheSavedHookAndKeepsThePane) {
    OpenTemporary();
    app.ShowTaskPane(true);
    HostSavesOnCommand(std::nullopt);
    EXPECT_EQ(Ret("saveDocument"), 300002);
    EXPECT_FALSE(app.temporarySave.saved());

    HostSavesOnCommand();
    const std::size_t paneCallsBefore = host.paneCalls.size();
    EXPECT_EQ(Ret("saveDocument"), 0);
    EXPECT_FALSE(app.temporarySave.saved());
    // The close within the save left the pane up and cleared the flag.
    for (std::size_t i = paneCallsBefore; i < host.paneCalls.size(); ++i)
        EXPECT_EQ(host.paneCalls[i].second, 1);
    EXPECT_TRUE(app.pane.shown());
    EXPECT_FALSE(app.temporarySave.underway());
    EXPECT_EQ(host.Doc(host.active).path, L"/docs/saved.pdf");

    // A later close of the last document hides the pane as usual.
    host.Close(host.active);
    EXPECT_EQ(host.paneCalls.back(), std::make_pair(std::string("BrevanTaskPane"), 0));
}

TEST_F(SaveCloseTest, SaveAsOffersTheSuffixedNameAndSavesWithTheHost) {
    HostDoc doc = OpenAt(L"/docs/report.pdf");
    platform.dialogAnswers.push_back(std::vector<std::wstring>{L"/out/report_redacted.pdf"});
    EXPECT_EQ(Ret("saveDocument", R"({"isSaveAs":true,"suffix":"_redacted"})"), 0);
    ASSERT_EQ(platform.dialogSettings.size(), 1u);
    const FileDialogSettings& dialog = platform.dialogSettings[0];
    EXPECT_TRUE(dialog.save);
    EXPECT_EQ(dialog.initialName, L"report_redacted.pdf");
    EXPECT_EQ(dialog.parent, host.HostAppGetMainWindow());
    ASSERT_EQ(host.savedAs, std::vector<std::wstring>{L"/out/report_redacted.pdf"});
    EXPECT_EQ(host.saveAsOptions[0].fullSave, 1);
    EXPECT_TRUE(platform.sentCommands.empty());

    // A suffix that is not text is ignored; a cancel, an empty path and a failed save fail.
    EXPECT_EQ(Ret("saveDocument", R"({"isSaveAs":1,"suffix":5})"), 400025);
    EXPECT_EQ(platform.dialogSettings[1].initialName, L"report_redacted.pdf");
    platform.dialogAnswers.push_back(std::vector<std::wstring>{L""});
    EXPECT_EQ(Ret("saveDocument", R"({"isSaveAs":true})"), 300002);
    host.refuseSaveAs = true;
    platform.dialogAnswers.push_back(std::vector<std::wstring>{L"/out/x.pdf"});
    EXPECT_EQ(Ret("saveDocument", R"({"isSaveAs":true})"), 300002);
    EXPECT_EQ(host.savedAs.size(), 2u);
    EXPECT_EQ(host.Doc(doc).path, L"/out/report_redacted.pdf");
}

TEST(SaveAsNameTest, SuffixGoesBetweenStemAndExtension) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"report.pdf", L"report_r.pdf"},
        {L"archive.tar.gz", L"archive.tar_r.gz"},
        {L"README", L"README_r"},
        {L".hidden", L".hidden_r"},
        {L"name.pdf:stream", L"name_r.pdf"},
        {L"..", L".._r"},
        {L"folder/a.b", L"a_r.b"},
        {L"C:\\docs\\a.b", L"a_r.b"},
        {L"d\\e/f\\g", L"g_r"},
        {L"x.", L"x_r."},
        {L"", L"_r"},
    };
    for (const auto& [name, offered] : cases)
        EXPECT_EQ(SaveAsName(name, L"_r"), offered) << name;
}

// Reload answers the page without its identifier; that it reloads its owner is the host view
// channel's test.
TEST_F(SaveCloseTest, ReloadAnswersWithoutIdentifier) {
    EXPECT_EQ(Post(R"(["base","reload",{},"req-7"])"),
              std::vector<std::string>{"{\"data\":\"\",\"ret\":0}\n"});
}

}  // namespace
