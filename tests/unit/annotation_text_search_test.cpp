// The searches also ask the editor's field finder on pages whose annotations draw text of their
// own (free text, stamps), so that what such an annotation shows is found and can be marked.
#include "plugin_fixture.h"

namespace {

class AnnotationTextSearchTest : public PluginFixture {
  protected:
    // Adds an annotation of `subtype` whose /Contents is `contents` to page `page`.
    void Annotate(HostDoc doc, int page, const char* subtype, const char* contents) {
        NdxObject dict = host.NDXDictNew();
        host.NDXDictSetName(dict, "Subtype", subtype);
        HostByteString text = host.HostByteStringNew();
        host.HostByteStringSet(text, contents);
        host.NDXDictSetString(dict, "Contents", text);
        host.HostByteStringDelete(text);
        host.HostPageViewAddAnnot(host.HostDocGetPageView(doc, page), dict, 0);
    }
};

TEST_F(AnnotationTextSearchTest, FreeTextIsSearchedAfterThePageText) {
    HostDoc doc = OpenText({{L"alpha here"}, {L"nothing"}, {L"nothing"}});
    Annotate(doc, 1, "FreeText", "Call ALPHA");
    Annotate(doc, 2, "Square", "alpha");  // draws no text of its own: its page is not asked

    const Json::Value reply = Call("findTexts", "{" + FileArg(doc) + R"(,"text":"alpha"})");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    EXPECT_EQ(reply["data"]["count"].asInt(), 2);
    const std::string key = reply["data"]["searchKey"].asString();
    EXPECT_EQ(Stored(doc, key, 0).page, 0);
    EXPECT_EQ(Where(Stored(doc, key, 1)), "1:0-0#0");
    ASSERT_EQ(Stored(doc, key, 1).rects.size(), 1u);
    EXPECT_EQ(Stored(doc, key, 1).rects[0].left, 9.0f);
    EXPECT_FALSE(Stored(doc, key, 2).found());

    const Json::Value list =
        Call("findTextList", "{" + FileArg(doc) + R"(,"textList":[["call alpha",0]]})");
    ASSERT_EQ(list["ret"].asInt(), 0);
    EXPECT_EQ(list["data"][0]["count"].asInt(), 1);
}

}  // namespace
