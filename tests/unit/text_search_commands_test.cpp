// findTexts and findTextList on the fake editor: the order of their checks, which pages they walk,
// how matches are numbered and stored, and the passage search over page breaks.
#include "plugin_fixture.h"

namespace {

class TextSearchCommandsTest : public PluginFixture {
  protected:
    Json::Value FindTexts(HostDoc doc, const std::string& rest) {
        return Call("findTexts", "{" + FileArg(doc) + "," + rest + "}");
    }
    // Where the stored matches of a key lie, in list order.
    std::vector<std::string> Places(HostDoc doc, const std::string& key) {
        std::vector<std::string> places;
        for (int i = 0; Stored(doc, key, i).found(); ++i)
            places.push_back(Where(Stored(doc, key, i)));
        return places;
    }
};

TEST_F(TextSearchCommandsTest, FindTextsChecksInOrder) {
    EXPECT_EQ(Ret("findTexts", "{"), 100001);
    EXPECT_EQ(Ret("findTexts", R"({"text":"a"})"), 100004);
    EXPECT_EQ(Ret("findTexts", R"({"file":{"id":""},"text":"a"})"), 100004);
    const std::string file = R"("file":{"id":"any"})";
    // A text longer than any page holds is refused before the document is looked at.
    const std::string overlong = '"' + std::string(64 * 1024 + 1, 'a') + '"';
    for (const std::string& text :
         {std::string(R"("")"), std::string("null"), std::string(R"(["one"])"), overlong,
          R"(["one",)" + overlong + "]"})
        EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":)" + text + "}"), 100008) << text.size();
    // A number passes the early check and is refused only after the document and range checks.
    EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":5})"), 300001);
    HostDoc doc = OpenText({{L"alpha"}, {L"beta"}});
    EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":5,"startPage":2})"), 100009);
    EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":5})"), 100008);
    for (const char* range : {R"("startPage":2)", R"("endPage":2)", R"("startPage":1,"endPage":0)"})
        EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":"a",)" + range + "}"), 100009) << range;
    EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":"gamma"})"), 400005);
    host.Doc(doc).hasPdf = false;
    EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":"a"})"), 300011);
}

TEST_F(TextSearchCommandsTest, PageTextFirstThenFieldsUnderOneOrdinalRectlessDropped) {
    FakeDoc pdf;
    FakePage page;
    page.lines = {FakeLine{L"Alpha beta alpha"}, FakeLine{L"alpha hidden", false}, FakeLine{L"alp"},
                  FakeLine{L"ha"}};
    page.controls = {FakeControl{L"name", kNdxControlTextField, L"ALPHA", NdxRect{1, 2, 3, 4}},
                     FakeControl{L"box", kNdxControlCheckBox, L"alpha", NdxRect{}}};
    pdf.pages = {page, FakePage{}};
    pdf.pages[1].lines = {FakeLine{L"alpha"}};
    HostDoc doc = host.OpenPdf(pdf);

    const Json::Value reply = FindTexts(doc, R"("text":"alpha")");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    EXPECT_EQ(reply["data"]["count"].asInt(), 5);
    const std::string key = reply["data"]["searchKey"].asString();
    EXPECT_EQ(key.size(), 38u);
    EXPECT_EQ(Places(doc, key), (std::vector<std::string>{"0:0-4#0", "0:11-15#1", "0:28-32#2",
                                                          "0:0-0#3", "1:0-4#0"}));
    // The match over two lines has one rectangle per line; the field match the control's.
    EXPECT_EQ(Stored(doc, key, 2).rects.size(), 2u);
    EXPECT_EQ(Stored(doc, key, 3).rects.at(0).top, 4.0f);
    EXPECT_EQ(Stored(doc, key, 0).file, FromUtf8(FileId(doc)));
    EXPECT_EQ(Stored(doc, key, 0).searchKey, FromUtf8(key));

    // Case by the host's flag; a mode below 1 means no flags.
    EXPECT_EQ(FindTexts(doc, R"("text":"Alpha","mode":1)")["data"]["count"].asInt(), 1);
    EXPECT_EQ(FindTexts(doc, R"("text":"Alpha","mode":-4)")["data"]["count"].asInt(), 5);
    // findTextList keeps field matches at -1, so replacement refuses them.
    const Json::Value list =
        Call("findTextList", "{" + FileArg(doc) + R"(,"textList":[["alpha",0]]})");
    EXPECT_EQ(Places(doc, list["data"][0]["searchKey"].asString())[3], "0:-1--1#3");
}

TEST_F(TextSearchCommandsTest, PageListWalksItsOrderRangeStillChecked) {
    HostDoc doc = OpenText({{L"x"}, {L"x x"}, {L"y"}, {L"x"}});
    const std::string key =
        FindTexts(doc, R"("text":"x","pageList":[3,1,-2,9,3])")["data"]["searchKey"].asString();
    EXPECT_EQ(Places(doc, key),
              (std::vector<std::string>{"3:0-0#0", "1:0-0#0", "1:2-2#1", "3:0-0#0"}));
    EXPECT_EQ(FindTexts(doc, R"("text":"x","pageList":[-1,-3])")["ret"].asInt(), 400005);
    EXPECT_EQ(FindTexts(doc, R"("text":"x","pageList":[1],"endPage":4)")["ret"].asInt(), 100009);
    // An empty list walks the range; a negative startPage counts as absent.
    const Json::Value ranged =
        FindTexts(doc, R"("text":"x","pageList":[],"startPage":-1,"endPage":1)");
    EXPECT_EQ(ranged["data"]["count"].asInt(), 3);
    EXPECT_EQ(FindTexts(doc, R"("text":"x","startPage":2)")["data"]["count"].asInt(), 1);
}

TEST_F(TextSearchCommandsTest, PassageOverPageBreaksKeepsLastFirstPartAndItsPieces) {
    HostDoc doc = OpenText({{L"end of a line, end of a"},
                            {L"nothing here"},
                            {L"goes on"},
                            {L"still goes on and ends"}});
    const Json::Value reply =
        FindTexts(doc, R"("text":["end of a","goes on","and ends"],"pageList":[3])");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    EXPECT_EQ(reply["data"]["count"].asInt(), 1);
    const SearchRecord& passage = Stored(doc, reply["data"]["searchKey"].asString(), 0);
    EXPECT_EQ(Where(passage), "0:15-22#1+2:0-6+3:14-21");
    EXPECT_TRUE(passage.file.empty() && passage.searchKey.empty());
    // A part the pages never reach leaves nothing found.
    EXPECT_EQ(FindTexts(doc, R"("text":["goes on","missing"])")["ret"].asInt(), 400005);
}

TEST_F(TextSearchCommandsTest, PassageStagesNeverShareAPageAndAStartedFirstStageEnds) {
    // The second part stands on the first part's page only: not found.
    HostDoc doc = OpenText({{L"goes on and ends"}, {L"nothing"}});
    EXPECT_EQ(FindTexts(doc, R"("text":["goes on","ends"]})")["ret"].asInt(), 400005);
    // A page whose finder does not start is passed over; the first one that starts ends the
    // first stage even without a match, and the stored record then has no page.
    HostDoc other = OpenText({{L"goes on"}, {L"nothing"}, {L"and ends"}});
    host.Page(other, 0).startFails = true;
    const Json::Value reply = FindTexts(other, R"("text":["goes on","ends"])");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    EXPECT_EQ(Where(Stored(other, reply["data"]["searchKey"].asString(), 0)), "-1:-1--1#-1+2:4-7");
}

TEST_F(TextSearchCommandsTest, FindTextListEntriesInOrderAndMalformedEntriesWhenReached) {
    EXPECT_EQ(Ret("findTextList", R"({"file":{"id":"f"},"textList":"x"})"), 100008);
    EXPECT_EQ(Ret("findTextList", R"({"file":{"id":"f"},"textList":[]})"), 300001);
    HostDoc doc = OpenText({{L"one two"}, {L"two"}});
    const std::string file = FileArg(doc);
    EXPECT_EQ(Ret("findTextList", "{" + file + R"(,"textList":[]})"), 400005);
    EXPECT_EQ(Ret("findTextList", "{" + file + R"(,"textList":[["none",0]]})"), 400005);
    const std::string overlong = R"([["one",0],[")" + std::string(64 * 1024 + 1, 'a') + R"(",0]])";
    for (const std::string& bad :
         {std::string(R"([["one",0],["two"]])"), std::string(R"([["one",0],null])"),
          std::string(R"([["one",0],["two","flags"]])"), std::string(R"([[["one"],0]])"),
          overlong}) {
        const Json::Value reply = Call("findTextList", "{" + file + R"(,"textList":)" + bad + "}");
        EXPECT_EQ(reply["ret"].asInt(), 100013) << bad.size();
        EXPECT_TRUE(reply["data"].isNull()) << bad.size();
    }
    const Json::Value reply = Call(
        "findTextList", "{" + file + R"(,"textList":[["two",0],["none",0],["ONE",1],["one",0]]})");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    ASSERT_EQ(reply["data"].size(), 4u);
    const std::vector<int> counts = {2, 0, 0, 1};
    for (Json::ArrayIndex i = 0; i < 4; ++i)
        EXPECT_EQ(reply["data"][i]["count"].asInt(), counts[i]) << i;
    EXPECT_NE(reply["data"][0]["searchKey"], reply["data"][1]["searchKey"]);
    EXPECT_EQ(Places(doc, reply["data"][0]["searchKey"].asString()),
              (std::vector<std::string>{"0:4-6#0", "1:0-2#0"}));
}

}  // namespace
