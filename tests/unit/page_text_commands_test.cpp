// getFileTexts and runFileOCR: page ranges and the joining of lines, the flattened scratch copy
// that a text field anywhere in the document leads to (and its clean-up), and the OCR run with
// its dialog, progress window, cancel and save.
#include "plugin_fixture.h"

namespace {

namespace fs = std::filesystem;

class PageTextTest : public PluginFixture {
  protected:
    HostDoc OpenPages(std::vector<FakePage> pages, const std::wstring& path = L"/docs/a.pdf") {
        FakeDoc pdf;
        pdf.pages = std::move(pages);
        return host.OpenPdf(std::move(pdf), path);
    }
    Json::Value Texts(const std::string& pageIndex) {
        return Call("getFileTexts", R"({"pageIndex":)" + pageIndex + "}");
    }
    // A document whose field on page 1 holds "edited" in the editor and "Ann" in its file.
    HostDoc OpenFormDocument(const std::wstring& path) {
        std::vector<FakePage> pages{TextPage({L"Name:"}), TextPage({L"Page two"})};
        pages[1].controls = {FakeControl{L"name", kNdxControlTextField, L"Ann", NdxRect{}}};
        host.disk["file-bytes"].pages = pages;
        pages[1].controls[0].value = L"edited";
        return OpenPages(pages, path);
    }
    fs::path Scratch(const std::string& name) const { return host.userData / "temp" / name; }
};

TEST_F(PageTextTest, RangesChecksAndTheJoiningOfLines) {
    EXPECT_EQ(Texts("0")["ret"].asInt(), 300001);
    OpenPages({TextPage({L"a", L"", L"b", L"c"}), TextPage({}), TextPage({L"x", L""})});
    const Json::Value all = Texts("-1");
    ASSERT_EQ(all["ret"].asInt(), 0);
    EXPECT_EQ(all["data"], JsonOf(R"(["a\r\nb\r\nc", "", "x\r\n"])"));
    EXPECT_EQ(Texts("2")["data"], JsonOf(R"(["x\r\n"])"));
    for (const char* outside : {"3", "-2"})
        EXPECT_EQ(Texts(outside)["ret"].asInt(), 400013) << outside;
    for (const char* bad : {"\"1\"", "1.0", "null"})
        EXPECT_EQ(Texts(bad)["ret"].asInt(), 100021) << bad;
    EXPECT_EQ(Ret("getFileTexts", "{}"), 100021);
    EXPECT_EQ(Ret("getFileTexts", "not json"), 100001);
    for (const auto& args : host.textLineArgs)
        EXPECT_EQ(args, std::make_pair(10, 15));
    EXPECT_TRUE(host.hiddenDocs.empty());
    EXPECT_EQ(host.liveStringArrays, 0);
}

TEST_F(PageTextTest, DocumentWithoutTextFieldIsReadAsItStandsInTheEditor) {
    std::vector<FakePage> pages{TextPage({L"unsaved edit"})};
    pages[0].controls = {FakeControl{L"agree", kNdxControlCheckBox, L"Yes", NdxRect{}}};
    OpenPages(pages);
    EXPECT_EQ(Texts("0")["data"], JsonOf(R"(["unsaved edit"])"));
    EXPECT_TRUE(host.hiddenDocs.empty());
}

TEST_F(PageTextTest, TextFieldAnywhereLeadsToAFlattenedCopyOfTheSavedFile) {
    const std::wstring path = WriteFile("form.pdf", "file-bytes");
    HostDoc doc = OpenFormDocument(path);
    // The asked page has no field, but the document has one: the copy is read.
    EXPECT_EQ(Texts("0")["data"], JsonOf(R"(["Name:"])"));
    EXPECT_EQ(host.flattenerCalls, (std::vector<std::string>{"new", "page0:1,0", "done"}));
    const Json::Value all = Texts("-1");
    EXPECT_EQ(all["data"], JsonOf(R"(["Name:", "Page two\r\nAnn"])"));
    EXPECT_EQ(host.savedToFile.back(), Scratch("form.pdf").string() + ":0,1");

    // The copy is closed and deleted, the document in the editor is untouched, and the pane that
    // the close may have hidden is shown again.
    ASSERT_EQ(host.hiddenDocs.size(), 2u);
    EXPECT_EQ(host.closedDocs, host.hiddenDocs);
    EXPECT_FALSE(fs::exists(Scratch("form.pdf")));
    EXPECT_EQ(host.Page(doc, 1).controls[0].value, L"edited");
    EXPECT_EQ(host.active, doc);
    EXPECT_TRUE(app.pane.shown());
    EXPECT_EQ(host.paneCalls.back(), std::make_pair(std::string("BrevanTaskPane"), 1));

    app.ShowTaskPane(false);
    app.batchMode = true;
    app.batchDocument = doc;
    EXPECT_EQ(Texts("1")["ret"].asInt(), 0);
    EXPECT_FALSE(app.pane.shown());
}

TEST_F(PageTextTest, FailuresOfTheCopyLeaveNothingBehind) {
    HostDoc doc = OpenFormDocument(WriteFile("form.pdf", "file-bytes") + L".missing");
    EXPECT_EQ(Texts("0")["ret"].asInt(), 300001);
    host.Close(doc);

    OpenFormDocument(WriteFile("form.pdf", "other bytes"));
    EXPECT_EQ(Texts("0")["ret"].asInt(), 300001);
    EXPECT_FALSE(fs::exists(Scratch("form.pdf")));

    OpenFormDocument(WriteFile("form.pdf", "file-bytes"));
    host.copyHasPdf = false;
    EXPECT_EQ(Texts("0")["ret"].asInt(), 300011);
    host.copyHasPdf = true;
    host.refuseFlattener = true;
    EXPECT_EQ(Texts("0")["ret"].asInt(), 300001);
    EXPECT_EQ(host.closedDocs, host.hiddenDocs);
    EXPECT_FALSE(fs::exists(Scratch("form.pdf")));
}

TEST_F(PageTextTest, AFileInTheTemporaryFolderItselfIsNotDeleted) {
    const fs::path own = Scratch("own.pdf");
    std::ofstream(own, std::ios::binary) << "file-bytes";
    OpenFormDocument(FromUtf8(own.string()));
    EXPECT_EQ(Texts("1")["data"], JsonOf(R"(["Page two\r\nAnn"])"));
    EXPECT_TRUE(fs::exists(own));
    EXPECT_EQ(std::distance(fs::directory_iterator(own.parent_path()), fs::directory_iterator()),
              1);
}

class OcrTest : public PageTextTest {
  protected:
    void SetUp() override {
        host.ocrTable = true;
        doc = OpenPages({TextPage({}), TextPage({}), TextPage({})});
    }
    HostDoc doc = nullptr;
};

TEST_F(OcrTest, ChecksInOrder) {
    host.ocrTable = false;
    EXPECT_EQ(Ret("runFileOCR", "not json"), -1);
    EXPECT_EQ(Ret("runFileOCR", R"({"isShowDlg":true})"), -1);
    host.ocrTable = true;
    for (const char* params :
         {"{}", R"({"isShowDlg":null})", R"({"isShowDlg":"yes"})", R"({"isShowDlg":1})"}) {
        EXPECT_EQ(Ret("runFileOCR", params), 100001) << params;
    }
    host.ocrPageFunction = false;
    EXPECT_EQ(Ret("runFileOCR", R"({"isShowDlg":false})"), 1);
    host.ocrPageFunction = true;
    host.ocrDialogFunction = false;
    EXPECT_EQ(Ret("runFileOCR", R"({"isShowDlg":true})"), 1);
    host.Close(doc);
    EXPECT_EQ(Ret("runFileOCR", ""), 300001);
    EXPECT_TRUE(host.recognisedPages.empty());
    EXPECT_TRUE(platform.sentCommands.empty());
}

TEST_F(OcrTest, RunWithoutDialogRecognisesEveryPageAndSaves) {
    const Json::Value reply = Call("runFileOCR", "");
    EXPECT_EQ(reply["ret"].asInt(), 0);
    EXPECT_TRUE(reply["data"].isNull());
    EXPECT_EQ(host.ocrDialogs, 0);
    EXPECT_EQ(host.recognisedPages, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(host.ocrLanguage, L"English");
    ASSERT_EQ(host.progressWindows.size(), 1u);
    const FakeProgress& window = *host.progressWindows[0];
    EXPECT_EQ(window.flag, 1);
    EXPECT_EQ(window.text, L"Running OCR");
    EXPECT_EQ(window.positions, (std::vector<int>{33, 67, 100}));
    EXPECT_TRUE(window.destroyed);
    EXPECT_TRUE(host.Doc(doc).modified);
    EXPECT_EQ(
        platform.sentCommands,
        (std::vector<std::pair<HostWindow, unsigned>>{{host.HostAppGetMainWindow(), 0xE103}}));
}

TEST_F(OcrTest, DialogChoosesTheLanguageOrCancelsAndTheProgressCancelStops) {
    host.ocrDialogConfirms = false;
    EXPECT_EQ(Ret("runFileOCR", R"({"isShowDlg":true})"), 1);
    EXPECT_FALSE(host.Doc(doc).modified);
    EXPECT_TRUE(host.recognisedPages.empty());

    host.ocrDialogConfirms = true;
    host.cancelAtPump = 2;
    EXPECT_EQ(Ret("runFileOCR", R"({"isShowDlg":true})"), 0);
    EXPECT_EQ(host.ocrLanguage, L"German");
    EXPECT_EQ(host.recognisedPages, std::vector<int>{0});
    EXPECT_EQ(host.progressWindows.back()->text, L"Running OCR (cancel seen)");
    EXPECT_TRUE(host.Doc(doc).modified);
    EXPECT_EQ(platform.sentCommands.size(), 1u);
}

}  // namespace
