// The file commands against real PDF files in pdfhost: a document pulled in blocks comes out byte
// for byte with its upload bar, saves in place and under a new name write real files, and the
// page text is the text of the file.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "bridge/json_text.h"
#include "engine/form_builder.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;
namespace fs = std::filesystem;

std::string Base64(const std::string& bytes) {
    static constexpr char kAlphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
        uint32_t chunk = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const auto byte = k < n ? static_cast<unsigned char>(bytes[i + k]) : 0u;
            chunk = (chunk << 8) | byte;
        }
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= n ? kAlphabet[(chunk >> (18 - 6 * k)) & 0x3F] : '=';
    }
    return out;
}

std::string Bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class FileCommandsInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }
    Json::Value Host(const std::string& what) {
        Json::Value line(Json::objectValue);
        line["host"] = what;
        return line;
    }
    std::string OpenText(const std::string& name, const std::vector<std::string>& lines) {
        PdfDescription recipe;
        recipe.pages.push_back(PageDescription::TextLines(lines));
        recipe.pages.push_back(PageDescription::Blank());
        const std::string path = MakePdf(name, recipe);
        EXPECT_GT(Open(path), 0);
        return path;
    }
    std::string CurrentId() { return Call("getCurrentDoc")["data"][0]["id"].asString(); }
};

TEST_F(FileCommandsInHostTest, DocumentStreamsByteForByteUnderItsUploadBar) {
    const std::string path = OpenText("upload.pdf", {"Jane Roe", "jane.roe@example.com"});
    const std::string id = CurrentId();
    const std::string bytes = Bytes(path);
    Json::Value params(Json::objectValue);
    params["file"]["id"] = id;
    params["file"]["filePath"] = "any";
    params["blockSize"] = 3000;

    std::string content;
    std::vector<Json::Value> progress;
    for (int offset = 0; offset <= static_cast<int>(bytes.size()); offset += 3000) {
        params["offset"] = offset;
        Json::Value line(Json::objectValue);
        line["post"] = "[\"base\",\"getFileStream\"," + WriteJson(params) + ",\"s\"]";
        for (const Json::Value& output : Line(line)) {
            if (output.isMember("progress"))
                progress.push_back(output);
            if (!output.isMember("reply"))
                continue;
            Json::Value reply;
            ASSERT_TRUE(ParseJson(output["reply"].asString(), reply));
            ASSERT_EQ(reply["ret"].asInt(), 0) << offset;
            content += reply["data"]["content"].asString();
            EXPECT_EQ(reply["data"]["fileSize"].asUInt64(), bytes.size());
            EXPECT_EQ(reply["data"]["filePath"].asString(), path);
        }
    }
    EXPECT_EQ(content, Base64(bytes));
    ASSERT_FALSE(progress.empty());
    EXPECT_EQ(progress.front()["progress"].asString(), "show");
    EXPECT_EQ(progress.front()["title"].asString(), "Uploading file...");
    EXPECT_EQ(progress.back()["pos"].asInt(), 100);

    EXPECT_EQ(Call("getFileStream", params)["ret"].asInt(), 400002);
    bool closed = false;
    Json::Value release(Json::objectValue);
    release["post"] = R"(["base","releaseFileStream","","r"])";
    for (const Json::Value& output : Line(release))
        closed = closed || output.get("progress", "").asString() == "close";
    EXPECT_TRUE(closed);
}

TEST_F(FileCommandsInHostTest, SaveInPlaceAndSaveAsWriteTheFiles) {
    const std::string path = OpenText("report.pdf", {"Jane Roe"});
    Json::Value field(Json::objectValue);
    field["host"] = "userRedact";
    field["doc"] = 1;
    field["page"] = 0;
    field["rect"] = Json::Value(Json::arrayValue);
    for (int n : {10, 10, 60, 60})
        field["rect"].append(n);
    Line(field);
    ASSERT_TRUE(Call("isCurrentDocModified")["data"].asBool());
    const std::string before = Bytes(path);
    EXPECT_EQ(Call("saveDocument")["ret"].asInt(), 0);
    EXPECT_FALSE(Call("isCurrentDocModified")["data"].asBool());
    EXPECT_NE(Bytes(path), before);
    EXPECT_NE(Bytes(path).find("/Redact"), std::string::npos);

    // Save As offers the suffixed name; the user's choice is written, a cancel writes nothing.
    const std::string copy = (folder / "report_redacted.pdf").string();
    Json::Value answer(Json::objectValue);
    answer["host"] = "answer";
    answer["dialog"] = "fileSave";
    answer["value"] = copy;
    Line(answer);
    Json::Value saveAs(Json::objectValue);
    saveAs["isSaveAs"] = true;
    saveAs["suffix"] = "_redacted";
    EXPECT_EQ(Call("saveDocument", saveAs)["ret"].asInt(), 0);
    EXPECT_TRUE(fs::exists(copy));
    EXPECT_EQ(Call("getCurrentDoc")["data"][0]["filePath"].asString(), copy);
    EXPECT_EQ(Call("saveDocument", saveAs)["ret"].asInt(), 400025);
}

TEST_F(FileCommandsInHostTest, TextFieldValuesComeFromTheSavedFileAndTheCopyGoes) {
    PdfDescription recipe;
    recipe.pages.push_back(PageDescription::TextLines({"Name:"}));
    recipe.pages.push_back(PageDescription::TextLines({"Second page"}));
    pdfhost::engine::Document document = pdfhost::engine::PdfFactory(host->Engine()).Build(recipe);
    pdfhost::engine::FieldDescription name;
    name.name = "name";
    name.value = "Ann Smith";
    pdfhost::engine::AddFormFields(document, {name});
    const std::string fileName = "form-" + std::to_string(::getpid()) + ".pdf";
    const std::string path = (folder / fileName).string();
    document.SaveFull(path);
    ASSERT_GT(Open(path), 0);

    // An unsaved value in the editor is not what the text shows: the copy comes from the file.
    Json::Value set(Json::objectValue);
    set["file"]["id"] = CurrentId();
    set["fieldName"] = "name";
    set["value"] = "Edited Value";
    ASSERT_EQ(Call("setFormFieldValue", set)["ret"].asInt(), 0);
    Json::Value params(Json::objectValue);
    params["pageIndex"] = -1;
    const Json::Value texts = Call("getFileTexts", params);
    ASSERT_EQ(texts["ret"].asInt(), 0);
    ASSERT_EQ(texts["data"].size(), 2u);
    EXPECT_NE(texts["data"][0].asString().find("Ann Smith"), std::string::npos);
    EXPECT_EQ(texts["data"][0].asString().find("Edited"), std::string::npos);
    EXPECT_EQ(texts["data"][1].asString(), "Second page");
    EXPECT_FALSE(fs::exists(fs::temp_directory_path() / fileName));
    EXPECT_TRUE(Call("isCurrentDocModified")["data"].asBool());
    EXPECT_EQ(Call("getCurrentDoc")["data"][0]["filePath"].asString(), path);
}

}  // namespace
