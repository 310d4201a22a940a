// addAnnot, removeAnnots, markTexts, clearMarkTexts and replaceText over stored matches: the order
// of their checks, the dictionary entries the plug-in writes, the batch way in without a view, and
// what each hands the editor.
#include "plugin_fixture.h"

namespace {

class AnnotationCommandsTest : public PluginFixture {
  protected:
    void SetUp() override {
        doc = OpenText({{L"secret word", L"top sec", L"ret end"}, {L"page two secret"}});
        key = Find(doc, "secret");  // 0: line 0; 1: over lines 1 and 2; 2: page 1
    }
    std::string Args(int index, const std::string& type, const std::string& more = "") {
        return R"({"searchKey":")" + key + R"(","index":)" + std::to_string(index) +
               R"(,"type":")" + type + R"(")" + more + "}";
    }
    std::string Add(int index, const std::string& type, const std::string& name) {
        return Args(index, type, R"(,"contents":"check this","uniqueIDName":")" + name + R"(")");
    }
    std::string Remove(int index) { return Args(index, "redact", R"(,"uniqueIDPrefix":"ai_")"); }
    std::string Mark(int index) {
        return R"({"searchKey":")" + key + R"(","index":)" + std::to_string(index) + "}";
    }
    const FakeObject& AnnotDict(int page, std::size_t position) {
        return *host.Page(doc, page).annots.at(position)->dict;
    }

    HostDoc doc = nullptr;
    std::string key;
};

TEST_F(AnnotationCommandsTest, AddAnnotChecksInOrder) {
    const std::string k = R"("searchKey":")" + key + R"(")";
    EXPECT_EQ(Ret("addAnnot", "{"), 100001);
    EXPECT_EQ(Ret("addAnnot", R"({"index":0})"), 100010);
    for (const char* index : {"", R"(,"index":"0")", R"(,"index":1.5)", R"(,"index":-1)"})
        EXPECT_EQ(Ret("addAnnot", "{" + k + index + "}"), 100011) << index;
    EXPECT_EQ(Ret("addAnnot", "{" + k + R"(,"index":0})"), 100013);
    EXPECT_EQ(Ret("addAnnot", Args(0, "Highlight")), 100015);
    EXPECT_EQ(Ret("addAnnot", Args(0, "highlight", R"(,"uniqueIDName":"ai_plugin_1")")), 100012);
    EXPECT_EQ(Ret("addAnnot", Args(0, "redact", R"(,"uniqueIDName":"x_ai_plugin_1")")), 100014);
    EXPECT_EQ(Ret("addAnnot", Args(0, "redact")), 100014);

    const std::string good = Add(0, "redact", "ai_plugin_");
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasPdf, "addAnnot", good), 300011);
    std::wstring id = FromUtf8(FileId(doc));
    app.documents->erase(id);
    EXPECT_EQ(Ret("addAnnot", good), 400004);
    app.documents->bindDoc(id, doc);
    auto store = std::move(app.searchResults);
    EXPECT_EQ(Ret("addAnnot", good), 400003);
    app.searchResults = std::move(store);
    EXPECT_EQ(Ret("addAnnot", Add(3, "redact", "ai_plugin_")), 400005);
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasView, "addAnnot", good), 300009);
    host.refuseAdd = true;
    EXPECT_EQ(Ret("addAnnot", good), 400015);
    EXPECT_FALSE(host.Doc(doc).modified);
    EXPECT_EQ(host.LiveHandles(), 0);
    host.Close(doc);
    EXPECT_EQ(Ret("addAnnot", good), 300001);
}

TEST_F(AnnotationCommandsTest, AnnotationDictionariesHoldExactlyTheirEntries) {
    EXPECT_EQ(Call("addAnnot", Add(0, "highlight", "ai_plugin_h"))["data"], Json::Value());
    EXPECT_EQ(Describe(AnnotDict(0, 0)),
              "/Type /Annot /Subtype /Highlight /Rect [0 700 60 710] /F 4 "
              "/QuadPoints [0 700 60 700 0 710 60 710] /C [1 1 0] /Subj (Highlight) /P @page0 "
              "/Contents (check this) /NM (ai_plugin_h)");
    // A match over two lines: one /Rect around both, eight numbers per line; no /Contents.
    ASSERT_EQ(Ret("addAnnot", Args(1, "redact", R"(,"uniqueIDName":"ai_plugin_r")")), 0);
    EXPECT_EQ(Describe(AnnotDict(0, 1)),
              "/Type /Annot /Subtype /Redact /Rect [0 660 70 690] /F 4 "
              "/QuadPoints [40 680 70 680 40 690 70 690 0 660 30 660 0 670 30 670] /C [1 0 0] "
              "/IC [0 0 0] /Subj (Redact) /P @page0 /NM (ai_plugin_r)");
    EXPECT_EQ(host.calls, (std::vector<std::string>{"AddAnnot:-1", "UndoAdd:1:1", "UpdateAnnot",
                                                    "SetChanged", "AddAnnot:-1", "UndoAdd:1:1",
                                                    "UpdateAnnot", "SetChanged"}));
    // A second request for the same match changes nothing.
    const Json::Value again = Call("addAnnot", Add(0, "redact", "ai_plugin_other"));
    EXPECT_EQ(again["ret"].asInt(), 0);
    EXPECT_EQ(again["data"]["message"].asString(), "the annot has been added");
    EXPECT_EQ(host.Page(doc, 0).annots.size(), 2u);
    EXPECT_EQ(app.searchResults->GetRecordAnnot(L"ai_plugin_other"), nullptr);
}

TEST_F(AnnotationCommandsTest, BatchRunInsertsIntoTheListOfALoadedPage) {
    host.Doc(doc).hasView = false;
    app.batchMode = true;
    app.batchDocument = doc;
    ASSERT_EQ(Ret("addAnnot", Add(2, "redact", "ai_plugin_b")), 0);
    ASSERT_EQ(host.Page(doc, 1).annots.size(), 1u);
    EXPECT_EQ(AnnotDict(1, 0).Get("NM")->text, "ai_plugin_b");
    EXPECT_EQ(host.calls,
              (std::vector<std::string>{"ReloadAnnots:1", "RefreshPageAnnots:1:0", "SetChanged"}));
    EXPECT_EQ(host.LiveHandles(), 0);  // the page and the dictionary went with the command

    host.listInsertIgnored = true;
    const Json::Value refused = Call("addAnnot", Add(0, "redact", "ai_plugin_c"));
    EXPECT_EQ(refused["ret"].asInt(), 400015);
    EXPECT_EQ(refused["data"]["message"].asString(),
              "after NDXAnnotListInsert, the AnnotList not change!");
    EXPECT_EQ(app.searchResults->GetRecordAnnot(L"ai_plugin_c"), nullptr);
}

TEST_F(AnnotationCommandsTest, RemoveAnnotsChecksAndHandleStates) {
    EXPECT_EQ(Ret("removeAnnots", Args(0, "redact")), 100014);
    EXPECT_EQ(Ret("removeAnnots", Args(0, "note", R"(,"uniqueIDPrefix":"a")")), 100015);
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasView, "removeAnnots", Remove(0)), 300009);
    EXPECT_EQ(Ret("removeAnnots", Remove(5)), 400005);
    EXPECT_EQ(Ret("removeAnnots", Remove(0)), 400007);  // never annotated

    ASSERT_EQ(Ret("addAnnot", Add(0, "redact", "ai_plugin_a")), 0);
    host.calls.clear();
    EXPECT_EQ(Ret("removeAnnots", Remove(0)), 0);
    EXPECT_TRUE(host.Page(doc, 0).annots.empty());
    EXPECT_EQ(host.calls, (std::vector<std::string>{"UndoDelete:1", "TouchPage:0", "DeleteAnnot",
                                                    "SetChanged"}));
    // The rectangle grown by half a point, in device space (twice the page's numbers).
    EXPECT_EQ(host.repaints, (std::vector<std::vector<int>>{{-1, 1421, 121, 1399}}));

    // The match can be annotated again; once the user deleted it, the handle goes stale.
    ASSERT_EQ(Ret("addAnnot", Add(0, "redact", "ai_plugin_a")), 0);
    host.UserDeletes(doc, 0, 0);
    EXPECT_EQ(Call("addAnnot", Add(0, "redact", "ai_plugin_a"))["data"]["message"].asString(),
              "the annot has been added");
    EXPECT_EQ(Ret("removeAnnots", Remove(0)), 400006);
    EXPECT_EQ(Ret("removeAnnots", Remove(0)), 400007);
}

TEST_F(AnnotationCommandsTest, MarkTextsChecksSelectionAndScrolling) {
    EXPECT_EQ(Ret("markTexts", R"({"index":0})"), 100010);
    EXPECT_EQ(Ret("markTexts", R"({"searchKey":"k","index":1.5})"), 100011);
    EXPECT_EQ(Ret("markTexts", Mark(3)), 400005);
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasTool, "markTexts", Mark(0)), 300010);
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasView, "markTexts", Mark(0)), 300009);

    // Another page: selected there, the view goes to it; fully visible, so no scroll.
    ASSERT_EQ(Ret("markTexts", Mark(2)), 0);
    EXPECT_EQ(host.selection->page, 1);
    EXPECT_EQ(host.selection->rects.size(), 1u);
    EXPECT_EQ(host.calls, std::vector<std::string>{"GotoPage:1"});
    EXPECT_TRUE(host.scrolls.empty());
    EXPECT_FALSE(host.Doc(doc).modified);

    // Left of and above the visible part: the x of 0 keeps the view's left edge.
    host.Doc(doc).currentPage = 0;
    host.Page(doc, 0).visible = NdxRect{100, 0, 600, 650};
    ASSERT_EQ(Ret("markTexts", Mark(0)), 0);
    // Past the right edge and inside vertically: the y keeps the view's top edge.
    host.Page(doc, 0).visible = NdxRect{0, 0, 40, 800};
    ASSERT_EQ(Ret("markTexts", Mark(0)), 0);
    EXPECT_EQ(host.scrolls, (std::vector<std::pair<int, int>>{{200, 1420}, {40, 1600}}));

    EXPECT_EQ(Ret("clearMarkTexts", "not json"), 0);
    EXPECT_FALSE(host.selection);
    host.Doc(doc).hasTool = false;
    EXPECT_EQ(Ret("clearMarkTexts"), 300010);
}

TEST_F(AnnotationCommandsTest, MatchWithoutRectanglesIsSelectedByCharacterRanges) {
    FakeDoc pdf;
    pdf.pages.resize(3);
    pdf.pages[0].lines = {FakeLine{L"xx end of a", false}};
    pdf.pages[1].lines = {FakeLine{L"goes on"}};
    pdf.pages[2].lines = {FakeLine{L"and ends"}};
    HostDoc passageDoc = host.OpenPdf(pdf);
    key = Call("findTexts", "{" + FileArg(passageDoc) +
                                R"(,"text":["end of a","goes on","ends"]})")["data"]["searchKey"]
              .asString();
    ASSERT_EQ(Ret("markTexts", Mark(0)), 0);
    EXPECT_EQ(host.selection->ranges,
              (std::map<int, std::pair<int32_t, int32_t>>{{0, {3, 10}}, {1, {0, 6}}, {2, {4, 7}}}));
    EXPECT_EQ(host.scrolls, (std::vector<std::pair<int, int>>{{0, 0}}));
    EXPECT_EQ(host.LiveHandles(), 0);
    // Without rectangles there is nothing to annotate.
    EXPECT_EQ(Ret("addAnnot", Add(0, "redact", "ai_plugin_p")), 400005);
}

TEST_F(AnnotationCommandsTest, ReplaceTextHandsTheOrdinalOnItsPageOfTheActiveDocument) {
    const std::string k = R"({"searchKey":")" + key + R"(","text":"new")";
    EXPECT_EQ(Ret("replaceText", R"({"text":"new","index":0})"), 100010);
    EXPECT_EQ(Ret("replaceText", k + R"(,"index":0,"text":""})"), 100008);
    for (const char* index : {"}", R"(,"index":-1})", R"(,"index":"1"})"})
        EXPECT_EQ(Ret("replaceText", k + index), 100011) << index;
    EXPECT_EQ(Ret("replaceText", k + R"(,"index":3})"), 400005);

    // The list position 2 is the first match of page 1; 1.5 counts as 1.
    ASSERT_EQ(Ret("replaceText", k + R"(,"index":2})"), 0);
    ASSERT_EQ(Ret("replaceText", k + R"(,"index":1.5})"), 0);
    EXPECT_EQ(host.replacements,
              (std::vector<std::tuple<int, int, std::wstring>>{{1, 0, L"new"}, {0, 1, L"new"}}));
    EXPECT_TRUE(host.Doc(doc).modified);

    // Not the batch's document: the active one, whose results are elsewhere.
    app.batchMode = true;
    app.batchDocument = doc;
    host.active = OpenText({{L"plain"}});
    EXPECT_EQ(Ret("replaceText", k + R"(,"index":0})"), 400005);
    host.active = nullptr;
    EXPECT_EQ(Ret("replaceText", k + R"(,"index":0})"), 300001);
}

TEST_F(AnnotationCommandsTest, ReplaceTextRefusesFieldRecordsOfTheListSearch) {
    FakeDoc pdf;
    pdf.pages.resize(1);
    pdf.pages[0].controls = {FakeControl{L"name", kNdxControlTextField, L"secret", NdxRect{}}};
    pdf.pages[0].controls[0].rect = NdxRect{1, 1, 9, 9};
    HostDoc form = host.OpenPdf(pdf);
    const std::string fromTexts = Find(form, "secret");
    const std::string fromList =
        Call("findTextList",
             "{" + FileArg(form) + R"(,"textList":[["secret",0]]})")["data"][0]["searchKey"]
            .asString();
    const auto replace = [&](const std::string& searchKey) {
        return Ret("replaceText", R"({"searchKey":")" + searchKey + R"(","text":"x","index":0})");
    };
    EXPECT_EQ(replace(fromTexts), 0);
    EXPECT_EQ(replace(fromList), 400005);
}

}  // namespace
