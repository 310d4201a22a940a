// Notes at a point: the checks the three commands share, the note and popup entries, and how a
// note is found again only at the very point that made it.
#include "plugin_fixture.h"

namespace {

class PointNoteCommandsTest : public PluginFixture {
  protected:
    void SetUp() override { doc = OpenText({{L"text"}, {L"more"}}); }
    std::string Note(const std::string& point, const std::string& rest) {
        return "{" + FileArg(doc) + R"(,"pageIndex":0,"point":)" + point + R"(,"type":"note",)" +
               rest + "}";
    }
    std::string AddAt(const std::string& point, const std::string& name,
                      const std::string& contents = "hello") {
        return Note(point, R"("contents":")" + contents + R"(","uniqueIDName":")" + name + R"(")");
    }
    std::string At(const std::string& point, const std::string& prefix = "ai_plugin_pt_") {
        return Note(point, R"("uniqueIDPrefix":")" + prefix + R"(")");
    }

    HostDoc doc = nullptr;
};

TEST_F(PointNoteCommandsTest, SharedChecksInOrder) {
    const std::string file = FileArg(doc);
    const std::string point = R"("point":{"x":1,"y":2})";
    const auto ret = [&](const std::string& params) { return Ret("addAnnotAtPoint", params); };
    EXPECT_EQ(ret("{"), 100001);
    EXPECT_EQ(ret(R"({"pageIndex":0})"), 100004);
    EXPECT_EQ(ret(R"({"file":{"id":"{NONE}"},"pageIndex":0})"), 300003);
    for (const char* page : {"", R"(,"pageIndex":"0")", R"(,"pageIndex":0.5)"})
        EXPECT_EQ(ret("{" + file + page + "}"), 100021) << page;
    for (const char* page : {R"(,"pageIndex":-1)", R"(,"pageIndex":2)"})
        EXPECT_EQ(ret("{" + file + page + "}"), 400013) << page;
    for (const char* bad : {"", R"(,"point":{"x":1})", R"(,"point":{"x":"1","y":2})"})
        EXPECT_EQ(ret("{" + file + R"(,"pageIndex":0)" + bad + "}"), 100022) << bad;
    const std::string base = "{" + file + R"(,"pageIndex":0,)" + point;
    EXPECT_EQ(ret(base + R"(,"type":"note","uniqueIDName":"ai_plugin_pt_1"})"), 100012);
    EXPECT_EQ(ret(base + R"(,"contents":"","type":"Note"})"), 100013);
    EXPECT_EQ(ret(base + R"(,"contents":"","type":"note","uniqueIDName":"ai_plugin_1"})"), 100014);
    EXPECT_EQ(Ret("getAnnotsContentAtPoint", base + R"(,"type":"note","uniqueIDPrefix":""})"),
              100014);
    EXPECT_EQ(Ret("removeAnnotsAtPoint", base + R"(,"type":"note"})"), 100014);

    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasView, "addAnnotAtPoint",
                         AddAt(R"({"x":1,"y":2})", "ai_plugin_pt_1")),
              300009);
    FakeDoc inherited;  // a box inherited from the page tree does not count
    inherited.pages.resize(1);
    inherited.pages[0].mediaBox.reset();
    doc = host.OpenPdf(inherited);
    EXPECT_EQ(ret(AddAt(R"({"x":1,"y":2})", "ai_plugin_pt_1")), 400014);
    EXPECT_EQ(Ret("getAnnotsContentAtPoint", At(R"({"x":1,"y":2})")), 400014);
    EXPECT_TRUE(host.Page(doc, 0).annots.empty());
    EXPECT_EQ(host.LiveHandles(), 0);
    host.Doc(doc).hasPdf = false;
    EXPECT_EQ(ret(AddAt(R"({"x":1,"y":2})", "ai_plugin_pt_1")), 300011);
}

TEST_F(PointNoteCommandsTest, NoteAndPopupEntries) {
    ASSERT_EQ(Ret("addAnnotAtPoint", AddAt(R"({"x":10,"y":10})", "ai_plugin_pt_1")), 0);
    const auto& annots = host.Page(doc, 0).annots;
    ASSERT_EQ(annots.size(), 2u);
    EXPECT_EQ(Describe(*annots[0]->dict),
              "/Type /Annot /Subtype /Text /Name /Note /Rect [10 770 30 790] /F 4 /C [1 1 0] "
              "/P @page0 /Contents (hello) /NM (ai_plugin_pt_1)");
    // At the page's right edge; a y below 120 puts its bottom at 0. /P points to the note.
    EXPECT_EQ(Describe(*annots[1]->dict),
              "/Rect [420 0 600 120] /Type /Annot /Subtype /Popup /P @annot");
    EXPECT_EQ(annots[1]->dict->Get("P")->target, annots[0]->dict);
    EXPECT_EQ(host.calls,
              (std::vector<std::string>{"TouchPage:0", "AddAnnot:-1", "UpdateAnnot", "UndoAdd:1:1",
                                        "AddAnnot:-1", "UpdateAnnot", "SetChanged"}));
    ASSERT_EQ(Ret("addAnnotAtPoint", AddAt(R"({"x":10,"y":300})", "ai_plugin_pt_2")), 0);
    EXPECT_EQ(Describe(*host.Page(doc, 0).annots[3]->dict).substr(0, 20), "/Rect [420 180 600 3");
    EXPECT_EQ(host.LiveHandles(), 0);

    host.refuseAdd = true;
    EXPECT_EQ(Ret("addAnnotAtPoint", AddAt(R"({"x":5,"y":5})", "ai_plugin_pt_3")), 400015);
}

TEST_F(PointNoteCommandsTest, NotesAreFoundOnlyAtTheirPointAndPrefix) {
    ASSERT_EQ(Ret("addAnnotAtPoint", AddAt(R"({"x":10.25,"y":33.5})", "ai_plugin_pt_é7", "a é")),
              0);
    ASSERT_EQ(Ret("addAnnotAtPoint", AddAt(R"({"x":10.25,"y":33.5})", "ai_plugin_pt_8")), 0);
    const Json::Value found = Call("getAnnotsContentAtPoint", At(R"({"x":10.25,"y":33.5})"));
    ASSERT_EQ(found["ret"].asInt(), 0);
    ASSERT_EQ(found["data"].size(), 2u);
    EXPECT_EQ(found["data"][1], JsonOf(R"({"content":"hello\r\n","id":"ai_plugin_pt_8"})"));
    // The PDF string's bytes go out as they are, not decoded.
    EXPECT_NE(found["data"][0]["content"].asString(), "a \xC3\xA9\r\n");
    // A name beyond ASCII is read back from its PDF text string.
    EXPECT_EQ(
        Call("getAnnotsContentAtPoint", At(R"({"x":10.25,"y":33.5})", "ai_plugin_pt_é"))["data"]
            .size(),
        1u);
    for (const std::string& miss : {At(R"({"x":10.25,"y":33.51})"), At(R"({"x":10.3,"y":33.5})"),
                                    At(R"({"x":10.25,"y":33.5})", "ai_plugin_pt_9")}) {
        const Json::Value none = Call("getAnnotsContentAtPoint", miss);
        EXPECT_EQ(none["ret"].asInt(), 0);
        EXPECT_TRUE(none["data"].isNull());
    }
}

TEST_F(PointNoteCommandsTest, RemovalMovesOnPastARemovedNote) {
    for (const char* name : {"ai_plugin_pt_1", "ai_plugin_pt_2"})
        ASSERT_EQ(Ret("addAnnotAtPoint", AddAt(R"({"x":10,"y":10})", name)), 0);
    // Note, popup, note, popup: the second note slides into the first one's place after the
    // first removal; the popup that slides after it is no note. One note stays.
    host.Page(doc, 0).annots.erase(host.Page(doc, 0).annots.begin() + 1);
    host.calls.clear();
    ASSERT_EQ(Ret("removeAnnotsAtPoint", At(R"({"x":10,"y":10})")), 0);
    EXPECT_EQ(host.Page(doc, 0).annots.size(), 2u);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"UndoDelete:1", "DeleteAnnot", "SetChanged"}));
    EXPECT_EQ(host.repaints, (std::vector<std::vector<int>>{{20, 1580, 60, 1540}}));
    ASSERT_EQ(Ret("removeAnnotsAtPoint", At(R"({"x":10,"y":10})")), 0);
    EXPECT_EQ(host.Page(doc, 0).annots.size(), 1u);
    host.Doc(doc).modified = false;
    EXPECT_EQ(Ret("removeAnnotsAtPoint", At(R"({"x":10,"y":10})")), 0);
    EXPECT_TRUE(host.Doc(doc).modified);
}

}  // namespace
