// The document commands against real PDF files in pdfhost, through the page channel of its
// scripted mode, byte for byte where the page sees bytes.
#include <filesystem>

#include "engine/permissions.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::Encryption;
using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;
namespace perm = pdfhost::engine::permission;

PdfDescription TextPdf(int pages = 2) {
    PdfDescription recipe;
    for (int i = 0; i < pages; ++i) {
        recipe.pages.push_back(PageDescription::TextLines({"Jane Roe", "jane.roe@example.com"}));
    }
    return recipe;
}

class DocumentCommandsInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }
    std::string CurrentId() { return Call("getCurrentDoc")["data"][0]["id"].asString(); }
    Json::Value FileParams(const std::string& id) {
        Json::Value params(Json::objectValue);
        params["file"]["id"] = id;
        return params;
    }
};

TEST_F(DocumentCommandsInHostTest, WithoutDocumentEveryCommandAnswersClosedDoc) {
    EXPECT_EQ(Post(R"(["base","getCurrentDoc","","u1"])"),
              std::vector<std::string>{"{\"data\":null,\"ret\":300001,\"uuid\":\"u1\"}\n"});
    for (const char* command :
         {"isCurrentDocModified", "getFilePageCount", "checkFilePermission", "getFileImagesType"}) {
        EXPECT_EQ(Call(command)["ret"].asInt(), 300001) << command;
    }
}

TEST_F(DocumentCommandsInHostTest, CurrentDocDescribesTheOpenFile) {
    const std::string path = MakePdf("report.pdf", TextPdf());
    ASSERT_GT(Open(path), 0);
    const Json::Value reply = Call("getCurrentDoc");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    const Json::Value& d = reply["data"][0];
    EXPECT_EQ(d["name"].asString(), "report.pdf");
    EXPECT_EQ(d["filePath"].asString(), path);
    EXPECT_EQ(d["size"].asUInt64(), std::filesystem::file_size(path));
    EXPECT_EQ(d["drive"].asString(), "local");
    EXPECT_EQ(reply["uuid"].asString(), "it");
    EXPECT_EQ(CurrentId(), d["id"].asString());

    // Closing and opening again gives the document a new id.
    Json::Value close(Json::objectValue);
    close["host"] = "close";
    close["doc"] = 1;
    Line(close);
    EXPECT_EQ(Call("getDocMetadata", FileParams(d["id"].asString()))["ret"].asInt(), 300001);
    ASSERT_GT(Open(path), 0);
    EXPECT_NE(CurrentId(), d["id"].asString());
}

TEST_F(DocumentCommandsInHostTest, NewUnsavedDocumentHasAnIdAndNoFile) {
    Json::Value line(Json::objectValue);
    line["host"] = "new";
    Line(line);
    const Json::Value d = Call("getCurrentDoc")["data"][0];
    EXPECT_FALSE(d["id"].asString().empty());
    EXPECT_EQ(d["name"].asString(), "");
    EXPECT_EQ(d["size"].asUInt(), 0u);
    EXPECT_EQ(d["filePath"].asString(), "");
    EXPECT_EQ(Call("getFilePageCount")["data"]["pageCount"].asInt(), 1);
}

TEST_F(DocumentCommandsInHostTest, PageCountModifiedAndMetadataExactly) {
    PdfDescription recipe = TextPdf(3);
    recipe.info = {{"CreationDate", "D:20240102030405+01'00'"}, {"ModDate", "D:20250607080910Z"}};
    ASSERT_GT(Open(MakePdf("dated.pdf", recipe)), 0);
    EXPECT_EQ(Post(R"(["base","getFilePageCount",{},"p"])"),
              std::vector<std::string>{"{\"data\":{\"pageCount\":3},\"ret\":0,\"uuid\":\"p\"}\n"});
    EXPECT_EQ(Post(R"(["base","isCurrentDocModified","not json","m"])"),
              std::vector<std::string>{"{\"data\":false,\"ret\":0,\"uuid\":\"m\"}\n"});
    const std::string id = CurrentId();
    EXPECT_EQ(Post(R"(["base","getDocMetadata",{"file":{"id":")" + id + R"("}},"d"])"),
              std::vector<std::string>{"{\"data\":{\"CreationDate\":\"D:20240102030405+01'00'\","
                                       "\"ModDate\":\"D:20250607080910Z\"},\"ret\":0,"
                                       "\"uuid\":\"d\"}\n"});

    host->MarkModified(*host->Documents().Active());
    EXPECT_EQ(Call("isCurrentDocModified")["data"], Json::Value(true));
}

TEST_F(DocumentCommandsInHostTest, MetadataOfAFileWithoutInfoDictionary) {
    ASSERT_GT(Open(MakePdf("plain.pdf", TextPdf(1))), 0);
    EXPECT_EQ(Call("getDocMetadata", FileParams(CurrentId()))["ret"].asInt(), 400008);
}

TEST_F(DocumentCommandsInHostTest, PermissionsOfAnEncryptedFileThatForbidsCopying) {
    PdfDescription recipe = TextPdf(1);
    recipe.encryption = Encryption{pdfhost::engine::EncryptionMethod::kAes128, "", "owner-secret",
                                   perm::kPrint | perm::kAnnotate | perm::kModify};
    ASSERT_GT(Open(MakePdf("locked.pdf", recipe)), 0);
    EXPECT_EQ(Post(R"(["base","checkFilePermission",{},"c"])"),
              std::vector<std::string>{
                  "{\"data\":{\"reason\":\"Document content is not allowed to be copied\"},"
                  "\"ret\":400027,\"uuid\":\"c\"}\n"});

    // Copying and annotating allowed, modifying not: a redaction could not be applied, so the
    // check refuses before the page asks the user to confirm.
    recipe.encryption->permissions = perm::kPrint | perm::kCopy | perm::kAnnotate;
    ASSERT_GT(Open(MakePdf("unmodifiable.pdf", recipe)), 0);
    EXPECT_EQ(
        Post(R"(["base","checkFilePermission",{},"c"])"),
        std::vector<std::string>{"{\"data\":{\"reason\":\"Annot is not allowed to be modified\"},"
                                 "\"ret\":400027,\"uuid\":\"c\"}\n"});

    ASSERT_GT(Open(MakePdf("open.pdf", TextPdf(1))), 0);
    EXPECT_EQ(Post(R"(["base","checkFilePermission",{},"c"])"),
              std::vector<std::string>{"{\"data\":null,\"ret\":0,\"uuid\":\"c\"}\n"});
}

TEST_F(DocumentCommandsInHostTest, ImagesTypeOfTextImageAndMixedFiles) {
    const auto type = [this](const std::string& name, PdfDescription recipe) {
        EXPECT_GT(Open(MakePdf(name, recipe)), 0);
        return Call("getFileImagesType")["data"]["type"].asInt();
    };
    EXPECT_EQ(type("text.pdf", TextPdf()), 0);
    EXPECT_EQ(type("scan.pdf",
                   PdfDescription{{PageDescription::ImageOnly(1), PageDescription::ImageOnly(2)}}),
              1);
    EXPECT_EQ(type("mixed.pdf", PdfDescription{{PageDescription::ImageOnly(),
                                                PageDescription::TextLines({"x"})}}),
              2);
    EXPECT_EQ(type("blank.pdf",
                   PdfDescription{{PageDescription::Blank(), PageDescription::TextLines({"x"})}}),
              0);
    EXPECT_EQ(type("form.pdf",
                   PdfDescription{{PageDescription::ImageOnly(), PageDescription::FormOnly()}}),
              2);
}

TEST_F(DocumentCommandsInHostTest, EnvelopeRepliesByteForByte) {
    ASSERT_GT(Open(MakePdf("a.pdf", TextPdf(1))), 0);
    EXPECT_EQ(Post(R"(["base","getFilePageCount",{},"x","extra"])"),
              std::vector<std::string>{"Error Message Parma"});
    EXPECT_EQ(Post("garbage"), std::vector<std::string>{"Error Message Parma"});
    EXPECT_TRUE(Post(R"({"not":"an array"})").empty());
    EXPECT_EQ(Post(R"(["base","showMessage",{},"x"])"),
              std::vector<std::string>{"{\"data\":null,\"ret\":400000}\n"});
    EXPECT_EQ(Post(R"(["BASE","getFilePageCount",{},"x"])"),
              std::vector<std::string>{"{\"data\":null,\"ret\":400000}\n"});
    EXPECT_TRUE(Post(R"([{},"getFilePageCount",{},"x"])").empty());
    EXPECT_EQ(Post(R"(["base","getDocMetadata","{{","q"])"),
              std::vector<std::string>{"{\"data\":null,\"ret\":100001,\"uuid\":\"q\"}\n"});
}

}  // namespace
