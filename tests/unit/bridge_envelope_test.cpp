// The page's envelope: which texts are served, which get the plain-text refusal, which get nothing,
// and the exact reply texts.
#include "plugin_fixture.h"

namespace {

class BridgeEnvelopeTest : public PluginFixture {
  protected:
    void SetUp() override {
        FakeDoc doc;
        doc.path = L"/docs/a.pdf";
        doc.pages.resize(1);
        host.Open(doc);
    }
};

TEST_F(BridgeEnvelopeTest, RepliesCarryTheIdentifiersTextFormAndALineFeed) {
    // A numeric identifier becomes its text; null and "" leave the reply without one. A missing
    // closing bracket is served as the reader left the four elements.
    const std::pair<const char*, const char*> cases[] = {
        {R"(["base","isCurrentDocModified","","id-42"])",
         "{\"data\":false,\"ret\":0,\"uuid\":\"id-42\"}\n"},
        {R"(["base","isCurrentDocModified","",7])", "{\"data\":false,\"ret\":0,\"uuid\":\"7\"}\n"},
        {R"(["base","isCurrentDocModified","",null])", "{\"data\":false,\"ret\":0}\n"},
        {R"(["base","isCurrentDocModified","",""])", "{\"data\":false,\"ret\":0}\n"},
        {R"(["base","isCurrentDocModified","","t")", "{\"data\":false,\"ret\":0,\"uuid\":\"t\"}\n"},
    };
    for (const auto& [text, reply] : cases)
        EXPECT_EQ(Post(text), std::vector<std::string>{reply}) << text;
}

std::string Nested(int depth, const std::string& inner = "") {
    return std::string(depth, '[') + inner + std::string(depth, ']');
}

TEST_F(BridgeEnvelopeTest, ArraysOfAnotherLengthAndNonJsonGetThePlainRefusal) {
    // Nesting past the readers' limit is not JSON either, as the envelope or inside it.
    const std::string tooDeep[] = {Nested(1001), Nested(100000),
                                   R"(["base","getFileTexts",)" + Nested(1001) + R"(,"x"])"};
    for (const std::string& text :
         {std::string(R"(["base","isCurrentDocModified","","id","x"])"), std::string(R"(["base"])"),
          std::string("[]"), std::string("not json at all"), std::string(""), std::string("null"),
          tooDeep[0], tooDeep[1], tooDeep[2]}) {
        EXPECT_EQ(Post(text), std::vector<std::string>{"Error Message Parma"}) << text.size();
    }
}

TEST_F(BridgeEnvelopeTest, NonArraysAndArraysOrObjectsWhereTextBelongsGetNoReply) {
    for (const char* text :
         {R"({"a":1})", "42", "\"text\"", "true", R"([["base"],"isCurrentDocModified","","x"])",
          R"(["base",{"c":1},"","x"])", R"(["base","isCurrentDocModified","",[1]])"}) {
        EXPECT_TRUE(Post(text).empty()) << text;
    }
    // The channel keeps serving afterwards.
    EXPECT_EQ(Post(R"(["base","isCurrentDocModified","","x"])").size(), 1u);
}

TEST_F(BridgeEnvelopeTest, AFailureInsideACommandLeavesItWithoutReplyAndTheChannelServing) {
    const std::string request = R"(["base","isCurrentDocModified","","x"])";
    host.Doc(host.active).faulty = true;
    EXPECT_TRUE(Post(request).empty());
    host.Doc(host.active).faulty = false;
    EXPECT_EQ(Post(request),
              std::vector<std::string>{"{\"data\":false,\"ret\":0,\"uuid\":\"x\"}\n"});
}

TEST_F(BridgeEnvelopeTest, UnknownModuleOrCommandAnswersWithoutIdentifier) {
    for (const char* text :
         {R"(["base","noSuchCommand",{},"id-1"])", R"(["Base","isCurrentDocModified",{},"id-1"])",
          R"(["BASE","isCurrentDocModified",{},"id-1"])",
          R"(["base","iscurrentdocmodified",{},"id-1"])", R"(["base","showMessage","{}","id-1"])",
          R"(["base"," isCurrentDocModified",{},"id-1"])",
          R"([true,"isCurrentDocModified","","x"])"}) {
        EXPECT_EQ(Post(text), std::vector<std::string>{"{\"data\":null,\"ret\":400000}\n"}) << text;
    }
}

// The parameters may come as their JSON text or as the value itself; both read the same. A text
// ends at its first NUL, and only an empty text counts as no parameters at all. Text that is not
// JSON (or nests too deep) only matters to commands that read parameters.
TEST_F(BridgeEnvelopeTest, ParametersReadTheSameAsTextOrAsValue) {
    const auto tooDeep = [](const char* command) {
        return R"(["base",")" + std::string(command) + R"(",")" + Nested(1001) + R"(","x"])";
    };
    const std::pair<std::string, int> cases[] = {
        {R"(["base","getDocMetadata",{"file":{"id":"nope"}},"x"])", 300001},
        {R"(["base","getDocMetadata","{\"file\":{\"id\":\"nope\"}}","x"])", 300001},
        {R"(["base","getDocMetadata","{\"file\":{\"id\":\"nope\"}}\u0000{","x"])", 300001},
        {R"(["base","getDocMetadata",null,"x"])", 100004},
        {R"(["base","getDocMetadata",7,"x"])", 100004},
        {R"(["base","getDocMetadata","","x"])", 100001},
        {R"(["base","getDocMetadata","{","x"])", 100001},
        {R"(["base","redactApply",null,"x"])", 100014},
        {R"(["base","redactApply",{},"x"])", 100014},
        {R"(["base","getCurrentDoc","{{not json","x"])", 0},
        {tooDeep("getDocMetadata"), 100001},
        {tooDeep("getFileTexts"), 100001},
    };
    for (const auto& [text, code] : cases) {
        const std::vector<std::string> replies = Post(text);
        ASSERT_EQ(replies.size(), 1u) << text;
        EXPECT_EQ(JsonOf(replies[0])["ret"], code) << text;
    }
}

}  // namespace
