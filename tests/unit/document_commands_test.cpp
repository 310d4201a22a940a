// The document query and state commands: their checks in order, their data, and how they follow
// the editor's documents.
#include <fstream>

#include "plugin_fixture.h"

namespace {

constexpr int kText = kNdxPageObjectText;
constexpr int kPath = kNdxPageObjectPath;
constexpr int kImage = kNdxPageObjectImage;
constexpr int kShading = kNdxPageObjectShading;
constexpr int kForm = kNdxPageObjectForm;

FakeDoc DocWithPages(std::vector<std::vector<int>> pages) {
    FakeDoc doc;
    for (auto& objects : pages)
        doc.pages.emplace_back().objects = std::move(objects);
    return doc;
}

class DocumentCommandsTest : public PluginFixture {
  protected:
    std::string WriteFile(const std::string& name, std::size_t bytes) {
        const auto path = host.userData / name;
        std::ofstream(path, std::ios::binary) << std::string(bytes, 'x');
        return path.string();
    }
    int ImagesType(std::vector<std::vector<int>> pages) {
        host.Open(DocWithPages(std::move(pages)));
        return Call("getFileImagesType")["data"]["type"].asInt();
    }
};

TEST_F(DocumentCommandsTest, EveryCurrentDocumentCommandAnswersClosedDocWithoutDocument) {
    for (const char* command : {"getCurrentDoc", "isCurrentDocModified", "getFilePageCount",
                                "checkFilePermission", "getFileImagesType"}) {
        const Json::Value reply = Call(command);
        EXPECT_EQ(reply["ret"].asInt(), 300001) << command;
        EXPECT_TRUE(reply["data"].isNull()) << command;
    }
}

TEST_F(DocumentCommandsTest, CurrentDocDescriptorAndStableId) {
    const std::string path = WriteFile("report.pdf", 1234);
    HostDoc doc = host.Open(FileDoc(FromUtf8(path)));
    const Json::Value d = Call("getCurrentDoc")["data"][0];
    Json::Value expected = JsonOf(R"([{"name":"report.pdf","size":1234,"isCurrentDoc":true,)"
                                  R"("drive":"local","aiFileId":"","account_id":""}])");
    expected[0]["filePath"] = path;
    expected[0]["id"] = d["id"];
    EXPECT_EQ(Call("getCurrentDoc")["data"], expected);

    // Unsaved changes do not change the size on disk; reopening gives a new id.
    host.Doc(doc).modified = true;
    EXPECT_EQ(Call("getCurrentDoc")["data"][0]["size"].asUInt(), 1234u);
    host.Close(doc);
    host.Open(FileDoc(FromUtf8(path)));
    EXPECT_NE(Call("getCurrentDoc")["data"][0]["id"], d["id"]);
}

TEST_F(DocumentCommandsTest, TemporaryDocumentHasAnIdButNoFile) {
    FakeDoc temporary;
    temporary.temporary = true;
    temporary.path = L"/tmp/should-not-be-used.pdf";
    host.Open(temporary);
    Json::Value d = Call("getCurrentDoc")["data"][0];
    EXPECT_FALSE(d["id"].asString().empty());
    d.removeMember("id");
    EXPECT_EQ(d, JsonOf(R"({"name":"","size":0,"filePath":"","isCurrentDoc":true,)"
                        R"("drive":"local","aiFileId":"","account_id":""})"));
}

TEST_F(DocumentCommandsTest, DocumentOpenedBeforeTheHooksGetsItsIdOnFirstAsk) {
    app.Unload();  // no hooks: the registry misses the next open
    ASSERT_EQ(app.Init(), 1);
    host.docEventRecords.clear();
    host.Open(FileDoc(L"/docs/early.pdf"));
    const Json::Value reply = Call("getCurrentDoc");
    EXPECT_EQ(reply["ret"].asInt(), 0);
    EXPECT_EQ(reply["data"][0]["name"].asString(), "early.pdf");
}

TEST_F(DocumentCommandsTest, MetadataChecksInOrder) {
    FakeDoc doc;
    doc.info = std::map<std::string, std::string>{{"CreationDate", "D:20240102030405+01'00'"}};
    HostDoc handle = host.Open(doc);
    const std::string id = Call("getCurrentDoc")["data"][0]["id"].asString();
    const auto ret = [this](const std::string& params) {
        return Call("getDocMetadata", params)["ret"].asInt();
    };
    EXPECT_EQ(ret("{"), 100001);
    for (const char* noFile :
         {"{}", R"({"file":{"id":""}})", R"({"file":"not an object"})", "[1,2]"})
        EXPECT_EQ(ret(noFile), 100004) << noFile;
    EXPECT_EQ(ret(R"({"file":{"id":"{UNKNOWN}"}})"), 300001);

    const Json::Value ok = Call("getDocMetadata", R"({"file":{"id":")" + id + R"("}})");
    EXPECT_EQ(ok["ret"].asInt(), 0);
    EXPECT_EQ(ok["data"]["CreationDate"].asString(), "D:20240102030405+01'00'");
    EXPECT_EQ(ok["data"]["ModDate"].asString(), "");

    host.Doc(handle).info.reset();
    EXPECT_EQ(ret(R"({"file":{"id":")" + id + R"("}})"), 400008);
    host.Doc(handle).hasPdf = false;
    EXPECT_EQ(ret(R"({"file":{"id":")" + id + R"("}})"), 300011);
    host.Close(handle);
    EXPECT_EQ(ret(R"({"file":{"id":")" + id + R"("}})"), 300001);
}

TEST_F(DocumentCommandsTest, ImagesTypeClassification) {
    EXPECT_EQ(ImagesType({{kImage}, {kImage, kPath}}), 1);
    EXPECT_EQ(ImagesType({{kImage}, {kText}}), 2);
    EXPECT_EQ(ImagesType({{kText, kPath}}), 0);
    EXPECT_EQ(ImagesType({{}, {kText}}), 0);  // a blank page is not an image page
    EXPECT_EQ(ImagesType({{}, {kImage}}), 2);
    EXPECT_EQ(ImagesType({{kPath}}), 1);  // paths are neutral
    EXPECT_EQ(ImagesType({}), 1);         // no pages counts as all images
    EXPECT_EQ(ImagesType({{kImage, kShading}}), 2);
    EXPECT_EQ(ImagesType({{kImage}, {kImage, kForm}}), 2);
    EXPECT_EQ(ImagesType({{kImage, 6}}), 2);
    EXPECT_EQ(ImagesType({{kShading}, {kForm}}), 0);
}

TEST_F(DocumentCommandsTest, ImagesTypeSkipsPagesTheHostCannotGiveAndAnswersZeroWithoutPdf) {
    FakeDoc doc = DocWithPages({{kImage}, {kText}});
    doc.pages[1].available = false;
    host.Open(doc);
    EXPECT_EQ(Call("getFileImagesType")["data"]["type"].asInt(), 1);
    FakeDoc noPdf = DocWithPages({{kImage}});
    noPdf.hasPdf = false;
    host.Open(noPdf);
    EXPECT_EQ(Call("getFileImagesType"), JsonOf(R"({"ret":0,"data":{"type":0},"uuid":"req"})"));
}

TEST_F(DocumentCommandsTest, PermissionReasons) {
    HostDoc doc = host.Open(FakeDoc{});
    const auto check = [&](uint32_t permissions) {
        host.Doc(doc).permissions = permissions;
        return Call("checkFilePermission");
    };
    Json::Value ok = check(0x3C);
    EXPECT_EQ(ok["ret"].asInt(), 0);
    EXPECT_TRUE(ok["data"].isNull());
    EXPECT_EQ(check(0x24)["data"]["reason"].asString(),
              "Document content is not allowed to be copied");
    EXPECT_EQ(check(0x14)["data"]["reason"].asString(), "Annot is not allowed to be modified");
    const Json::Value none = check(0x0C);
    EXPECT_EQ(none["ret"].asInt(), 400027);
    EXPECT_EQ(none["data"]["reason"].asString(),
              "Document content is not allowed to be copied and nnnot is not allowed to be "
              "modified");
}

}  // namespace
