// redactApply, hasOtherRedact and the clean-up of the store when a document closes: which
// annotations are collected, the prompt, the apply variants and the records that go afterwards.
#include "plugin_fixture.h"

namespace {

class RedactionCommandsTest : public PluginFixture {
  protected:
    void SetUp() override {
        doc = OpenText({{L"one two three"}, {L"four one"}});
        key = Find(doc, "one");  // 0 on page 0, 1 on page 1
        two = Find(doc, "two");
        Annotate(key, 0, "ai_plugin_a");
        Annotate(key, 1, "ai_plugin_b");
        Annotate(two, 0, "ai_plugin_c");
        host.calls.clear();
    }
    void Annotate(const std::string& searchKey, int index, const std::string& name) {
        ASSERT_EQ(Ret("addAnnot", R"({"searchKey":")" + searchKey + R"(","index":)" +
                                      std::to_string(index) +
                                      R"(,"type":"redact","uniqueIDName":")" + name + R"("})"),
                  0);
    }
    HostAnnot Recorded(const wchar_t* name) { return app.searchResults->GetRecordAnnot(name); }

    HostDoc doc = nullptr;
    std::string key;
    std::string two;
};

TEST_F(RedactionCommandsTest, ChecksInOrder) {
    EXPECT_EQ(Ret("redactApply", "{"), 100001);
    for (const char* params : {"{}", R"({"uniqueIDNames":[]})", R"({"uniqueIDNames":"x"})"})
        EXPECT_EQ(Ret("redactApply", params), 100014) << params;
    const std::string names = R"({"uniqueIDNames":["ai_plugin_none","ai_plugin_x"]})";
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasView, "redactApply", names), 300009);
    auto store = std::move(app.searchResults);
    EXPECT_EQ(Ret("redactApply", names), 400003);
    app.searchResults = std::move(store);
    EXPECT_EQ(Ret("redactApply", names), 400023);
    EXPECT_TRUE(host.messageBoxes.empty());
    host.active = nullptr;
    EXPECT_EQ(Ret("redactApply", names), 300001);
}

TEST_F(RedactionCommandsTest, NamedApplyCollectsWhatStandsAndForgetsFailedNamesToo) {
    host.UserDeletes(doc, 0, 1);  // ai_plugin_c's annotation is gone from the page
    host.messageBoxAnswers = {1};
    const Json::Value reply = Call(
        "redactApply", R"({"uniqueIDNames":["ai_plugin_a","ai_plugin_unknown","ai_plugin_c"]})");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    EXPECT_EQ(reply["data"], JsonOf(R"(["ai_plugin_unknown","ai_plugin_c"])"));
    EXPECT_EQ(host.messageBoxes.at(0), L"Sable Mark");
    EXPECT_EQ(host.messageBoxes.at(1).rfind(L"You have decided to redact the keywords", 0), 0u);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"MessageBox:1:parent", "SetCurrentTool:1",
                                                    "ApplyList:1:1"}));
    EXPECT_EQ(host.Page(doc, 0).annots.size(), 0u);
    EXPECT_EQ(host.Page(doc, 1).annots.size(), 1u);
    EXPECT_EQ(Recorded(L"ai_plugin_a"), nullptr);
    EXPECT_EQ(app.searchResults->FindRecordByUniqueID(L"ai_plugin_c").page, -1);
    EXPECT_NE(Recorded(L"ai_plugin_b"), nullptr);
}

TEST_F(RedactionCommandsTest, CancelOrFailedApplyKeepsEverything) {
    const std::string names = R"({"uniqueIDNames":["ai_plugin_a"]})";
    EXPECT_EQ(Ret("redactApply", names), 400024);  // no queued answer: Cancel
    EXPECT_EQ(host.calls, std::vector<std::string>{"MessageBox:1:parent"});
    host.applyFails = true;
    host.messageBoxAnswers = {1};
    EXPECT_EQ(Ret("redactApply", names), 400022);
    EXPECT_NE(Recorded(L"ai_plugin_a"), nullptr);
    EXPECT_EQ(host.Page(doc, 0).annots.size(), 2u);
}

TEST_F(RedactionCommandsTest, ApplyAllAndBatchApply) {
    host.messageBoxAnswers = {1};
    const Json::Value all = Call("redactApply", "");
    ASSERT_EQ(all["ret"].asInt(), 0);
    EXPECT_EQ(all["data"], Json::Value(Json::arrayValue));
    EXPECT_EQ(host.messageBoxes.at(1).rfind(L"You have decided to redact the content", 0), 0u);
    EXPECT_EQ(host.calls.back(), "ApplyAll:1");
    EXPECT_TRUE(host.Page(doc, 1).annots.empty());
    EXPECT_NE(Recorded(L"ai_plugin_b"), nullptr);  // entries stay with stale handles

    // In a batch: no prompt, the batch variant whatever the names, records of the names erased.
    HostDoc batchDoc = OpenText({{L"one"}});
    const std::string batchKey = Find(batchDoc, "one");
    host.Doc(batchDoc).hasView = false;
    app.batchMode = true;
    app.batchDocument = batchDoc;
    Annotate(batchKey, 0, "ai_plugin_z");
    host.calls.clear();
    const Json::Value batch = Call("redactApply", R"({"uniqueIDNames":["ai_plugin_z"]})");
    EXPECT_EQ(batch["ret"].asInt(), 0);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"SetCurrentTool:1", "ApplyBatch:1:16777216"}));
    EXPECT_EQ(Recorded(L"ai_plugin_z"), nullptr);
    EXPECT_EQ(host.messageBoxes.size(), 2u);
}

TEST_F(RedactionCommandsTest, OtherRedactionsAreThoseWithoutARecord) {
    EXPECT_EQ(Call("hasOtherRedact")["data"], Json::Value(false));
    host.UserRedacts(doc, 1, "ai_plugin_b");  // a name with a record counts as ours
    EXPECT_EQ(Call("hasOtherRedact")["data"], Json::Value(false));
    host.UserRedacts(doc, 1, "");
    EXPECT_EQ(Call("hasOtherRedact")["data"], Json::Value(true));
    EXPECT_EQ(RetWithout(doc, &FakeDoc::hasView, "hasOtherRedact"), 300009);
    host.Doc(doc).hasPdf = false;
    EXPECT_EQ(Ret("hasOtherRedact"), 300001);
    host.active = nullptr;
    EXPECT_EQ(Ret("hasOtherRedact"), 300001);
}

TEST_F(RedactionCommandsTest, ClosingADocumentDropsItsResultsAndAnnotationEntries) {
    HostDoc other = OpenText({{L"one"}});
    const std::string otherKey = Find(other, "one");
    Annotate(otherKey, 0, "ai_plugin_o");
    const std::wstring id = FromUtf8(FileId(doc));
    host.Close(doc);
    EXPECT_FALSE(app.searchResults->GetResult(id, FromUtf8(key), 0).found());
    EXPECT_EQ(Recorded(L"ai_plugin_a"), nullptr);
    EXPECT_EQ(app.searchResults->annots().size(), 1u);
    EXPECT_TRUE(Stored(other, otherKey, 0).found());
}

TEST_F(RedactionCommandsTest, AfterUnloadCommandsAnswerWithoutTheGoneStoreAndRegistry) {
    app.Unload();
    ASSERT_FALSE(app.searchResults);
    const std::string file = R"("file":{"id":"x"})";
    EXPECT_EQ(Ret("findTexts", "{" + file + R"(,"text":"one"})"), 400003);
    EXPECT_EQ(Ret("findTextList", "{" + file + R"(,"textList":[["one",0]]})"), 400003);
    EXPECT_EQ(Ret("markTexts", R"({"searchKey":")" + key + R"(","index":0})"), 400004);
    EXPECT_EQ(Ret("redactApply", R"({"uniqueIDNames":["ai_plugin_a"]})"), 400003);
    EXPECT_EQ(Ret("hasOtherRedact"), 400003);
    EXPECT_EQ(Ret("getAllFormFields"), 400004);
    EXPECT_EQ(Ret("setFormFieldValue", "{" + file + R"(,"fieldName":"f","value":"v"})"), 300003);
}

}  // namespace
