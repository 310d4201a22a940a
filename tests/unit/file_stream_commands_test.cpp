// getFileStream and releaseFileStream: blocks of a file in base64, the end of the file and the
// failed state it leaves, the checks in order, the save of a modified document, the channel's own
// stream and the upload bar.
#include <filesystem>

#include "bridge/command_table.h"
#include "document/file_stream_dispatchers.h"
#include "logging/async_logger.h"
#include "plugin_fixture.h"

namespace {

constexpr const char* kPicked = "{7A0B1C2D-0000-4000-8000-000000000001}";

class FileStreamTest : public PluginFixture {
  protected:
    // A file known to the registry but not open, as one picked in the file dialog.
    std::wstring Pick(const std::string& name, const std::string& bytes, const char* id = kPicked) {
        const std::wstring path = WriteFile(name, bytes);
        app.documents->bindPath(FromUtf8(id), path);
        return path;
    }
    static std::string Block(const std::string& id, const std::string& offset,
                             const std::string& blockSize, const std::string& filePath = "x") {
        return R"({"file":{"id":")" + id + R"(","filePath":")" + filePath + R"("},"offset":)" +
               offset + R"(,"blockSize":)" + blockSize + "}";
    }
    Json::Value Read(int offset, int blockSize, const std::string& id = kPicked) {
        return Call("getFileStream", Block(id, std::to_string(offset), std::to_string(blockSize)));
    }
};

TEST_F(FileStreamTest, TwoBlocksThenTheEndThenFailedUntilReleased) {
    const std::wstring path = Pick("two.bin", "abcdef");
    const Json::Value first = Read(0, 3);
    ASSERT_EQ(first["ret"].asInt(), 0);
    EXPECT_EQ(first["uuid"].asString(), "req");
    Json::Value expected = JsonOf(R"({"content":"YWJj","dataSize":3,"isEnd":false,"fileSize":6,)"
                                  R"("name":"two.bin","id":")" +
                                  std::string(kPicked) + "\"}");
    expected["filePath"] = ToUtf8(path);
    EXPECT_EQ(first["data"], expected);

    expected["content"] = "ZGVm";
    EXPECT_EQ(Read(3, 3)["data"], expected);
    expected["content"] = "";
    expected["dataSize"] = 0;
    expected["isEnd"] = true;
    EXPECT_EQ(Read(6, 3)["data"], JsonOf(WriteJson(expected)));
    EXPECT_EQ(Read(0, 3)["ret"].asInt(), 400002);

    // The upload bar followed the blocks and stays up until the release.
    ASSERT_NE(host.Bar(), nullptr);
    EXPECT_EQ(host.Bar()->text, L"Uploading file...");
    EXPECT_EQ(host.Bar()->positions, (std::vector<int>{50, 100, 100}));

    Post(R"(["base","releaseFileStream","","req"])");
    EXPECT_EQ(endpoint.replies, std::vector<std::string>{"{\"data\":\"\",\"ret\":0}\n"});
    EXPECT_EQ(host.Bar(), nullptr);
    EXPECT_EQ(Read(0, 6)["data"]["content"].asString(), "YWJjZGVm");
    EXPECT_EQ(host.liveEncoders, 0);
}

TEST_F(FileStreamTest, EmptyFilesOffsetsAndBlockSizes) {
    Pick("empty.bin", "");
    const Json::Value empty = Read(0, 1024)["data"];
    EXPECT_TRUE(empty["isEnd"].asBool());
    EXPECT_EQ(empty["dataSize"].asInt(), 0);
    EXPECT_EQ(empty["fileSize"].asInt(), 0);
    EXPECT_EQ(Ret("releaseFileStream"), 0);
    EXPECT_EQ(Ret("releaseFileStream"), 0);

    Pick("six.bin", "abcdef");
    EXPECT_TRUE(Read(100, 4)["data"]["isEnd"].asBool());
    Call("releaseFileStream");
    // A block size of 0 or below reads nothing and never reaches the end.
    for (int size : {0, -5}) {
        const Json::Value nothing = Read(2, size)["data"];
        EXPECT_EQ(nothing["dataSize"].asInt(), 0) << size;
        EXPECT_FALSE(nothing["isEnd"].asBool()) << size;
    }
    EXPECT_EQ(Read(-1, 4)["ret"].asInt(), 400002);
    Call("releaseFileStream");

    const std::pair<std::string, int> malformed[] = {
        {Block(kPicked, "\"0\"", "4"), 100005},
        {Block(kPicked, "1.0", "4"), 100005},
        {Block(kPicked, "2147483648", "4"), 100005},
        {Block(kPicked, "0", "null"), 100006},
        {Block(kPicked, "0", "2147483648"), 100006},
        {Block(kPicked, "0", std::to_string(GetFileStreamDispatcher::kLargestBlock + 1)), 100006},
    };
    for (const auto& [params, code] : malformed)
        EXPECT_EQ(Ret("getFileStream", params), code) << params;
    EXPECT_EQ(Read(0, GetFileStreamDispatcher::kLargestBlock)["data"]["dataSize"].asInt(), 6);
}

TEST_F(FileStreamTest, ChecksInOrderLeaveAClosedStreamClosed) {
    EXPECT_EQ(Ret("getFileStream", "not json"), 100001);
    EXPECT_EQ(Ret("getFileStream", R"({"offset":0,"blockSize":1})"), 100004);
    EXPECT_EQ(Ret("getFileStream", R"({"file":{"id":"unknown"},"offset":0,"blockSize":1})"),
              100004);
    EXPECT_EQ(Ret("getFileStream", Block("unknown", "\"x\"", "1")), 100005);
    EXPECT_EQ(Ret("getFileStream", Block("unknown", "0", "1")), 300004);

    // A path that cannot be opened fails the open, and the next request opens afresh.
    app.documents->bindPath(FromUtf8(kPicked), WriteFile("gone.bin", "") + L".missing");
    EXPECT_EQ(Read(0, 1)["ret"].asInt(), 400001);
    EXPECT_EQ(host.Bar(), nullptr);
    Pick("back.bin", "z");
    EXPECT_EQ(Read(0, 1)["data"]["content"].asString(), "eg==");
}

TEST_F(FileStreamTest, ModifiedOpenDocumentIsSavedBeforeItsFirstBlock) {
    const std::wstring path = WriteFile("open.pdf", "%PDF-1.7");
    HostDoc doc = host.OpenPdf(FakeDoc{}, path);
    host.Doc(doc).modified = true;
    host.refuseSave = true;
    EXPECT_EQ(Read(0, 4, FileId(doc))["ret"].asInt(), 300002);
    EXPECT_EQ(host.Bar(), nullptr);

    host.refuseSave = false;
    const Json::Value reply = Read(0, 4, FileId(doc));
    EXPECT_EQ(reply["data"]["content"].asString(), "JVBERg==");
    EXPECT_EQ(reply["data"]["filePath"].asString(), ToUtf8(path));
    EXPECT_EQ(host.HostDocIsModified(doc), 0);
    EXPECT_FALSE(app.temporarySave.underway());
    Call("releaseFileStream");

    // After the document is closed its file can still be read through the registry.
    const std::string id = FileId(doc);
    host.Close(doc);
    EXPECT_EQ(Read(4, 4, id)["data"]["content"].asString(), "LTEuNw==");
}

TEST_F(FileStreamTest, AnOpenStreamStaysOnItsFileAndEachChannelHasItsOwn) {
    Pick("a.bin", "AAAA");
    const std::wstring other = Pick("b.bin", "BBBB", "{OTHER}");
    EXPECT_EQ(Read(0, 1)["data"]["content"].asString(), "QQ==");
    // Another id reads on in the bound file, but the reply names the document asked for.
    Json::Value mixed = Read(1, 1, "{OTHER}")["data"];
    EXPECT_EQ(mixed["filePath"].asString(), ToUtf8(other));
    mixed.removeMember("filePath");
    EXPECT_EQ(mixed, JsonOf(R"({"content":"QQ==","dataSize":1,"isEnd":false,"fileSize":4,)"
                            R"("name":"b.bin","id":"{OTHER}"})"));

    RecordingEndpoint secondPage;
    WebMessageChannel second(app.commands(), secondPage);
    second.OnWebMessage(R"(["base","getFileStream",)" + Block("{OTHER}", "0", "4") + R"(,"2"])");
    ASSERT_EQ(secondPage.replies.size(), 1u);
    EXPECT_NE(secondPage.replies[0].find("\"content\":\"QkJCQg==\""), std::string::npos);
    EXPECT_EQ(Read(2, 2)["data"]["content"].asString(), "QUE=");
}

TEST_F(FileStreamTest, WrittenReplyIsTheWritersTextOfTheReply) {
    Pick("r\u00e9sum\u00e9 '1'.bin", std::string(5000, '\xff'));
    const CommandParams params = CommandParams::FromText(Block(kPicked, "0", "4096"));
    ChannelFileStream first;
    ChannelFileStream second;
    auto viaRun =
        app.commands().Create(L"base", L"getFileStream", CommandRequest{nullptr, params, first});
    auto viaDispatch =
        app.commands().Create(L"base", L"getFileStream", CommandRequest{nullptr, params, second});
    viaRun->uuid = viaDispatch->uuid = L"\u00e9-1";
    const Json::Value reply = viaRun->Run();
    EXPECT_EQ(reply["data"]["name"].asString(), "r\u00e9sum\u00e9 '1'.bin");
    EXPECT_EQ(reply["data"]["content"].asString().size(), 5464u);
    // Unlogged, the reply is widened from its pieces; logged, from the joined text.
    AsyncLogger& logger = AsyncLogger::Instance();
    logger.Discard();
    EXPECT_EQ(viaDispatch->Dispatch(L"getFileStream"), FromUtf8(WriteJson(reply)));
    const auto logs = std::filesystem::path(testing::TempDir()) / "stream-reply-log";
    logger.Start(logs.string(), 30, kLogInfo, 30);
    EXPECT_EQ(viaDispatch->Dispatch(L"getFileStream"), FromUtf8(WriteJson(reply)));
    logger.Discard();
    std::filesystem::remove_all(logs);
}

}  // namespace
