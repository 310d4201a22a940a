// openFile and runFileOCR with the plug-in in pdfhost: a PDF served by a local HTTP server is
// downloaded into a folder of its own and opened in the editor, a failed download opens nothing
// and leaves nothing behind, and a page that is only a picture of text becomes searchable.
#include <unistd.h>
#include <QDir>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "bridge/json_text.h"
#include "engine/document.h"
#include "engine/text_page.h"
#include "host_document.h"
#include "local_http_server.h"
#include "plugin_host_fixture.h"
#include "util/utf.h"

namespace {

using pdfhost::engine::Document;
using pdfhost::engine::ImageItem;
using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;
using pdfhost::engine::PdfFactory;
using pdfhost::engine::TextItem;
namespace fs = std::filesystem;

std::string Bytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What one command caused on the page's channel.
struct Outcome {
    Json::Value reply;
    std::vector<std::string> events;  // event names, in order
    std::vector<Json::Value> progress;
    std::vector<Json::Value> dialogs;
};

class OpenAndOcrInHostTest : public PluginHostTest {
  protected:
    OpenAndOcrInHostTest()
        : server_([this](const HttpRequestSeen& seen) { return Answer(seen); }) {}
    ~OpenAndOcrInHostTest() override {
        std::error_code ignored;
        fs::remove_all(DownloadFolder(AiFileId("1")), ignored);
    }
    void SetUp() override { Start(); }

    // Sends a "base" command and sorts what came back.
    Outcome Send(const std::string& command, const Json::Value& params) {
        Json::Value line(Json::objectValue);
        line["post"] = "[\"base\",\"" + command + "\"," + WriteJson(params) + ",\"it\"]";
        Outcome outcome;
        for (const Json::Value& output : Line(line)) {
            if (output.isMember("reply")) {
                EXPECT_TRUE(outcome.reply.isNull()) << "a second reply";
                ParseJson(output["reply"].asString(), outcome.reply);
            } else if (output.isMember("event")) {
                // " window.__dispatchEvent({...}\n);"
                const std::string script = output["event"].asString();
                const auto open = script.find('(');
                Json::Value event;
                EXPECT_TRUE(ParseJson(script.substr(open + 1, script.rfind(')') - open - 1), event))
                    << script;
                outcome.events.push_back(event["name"].asString());
            } else if (output.isMember("progress")) {
                outcome.progress.push_back(output);
            } else if (output.isMember("dialog") || output.isMember("unanswered")) {
                outcome.dialogs.push_back(output);
            }
        }
        return outcome;
    }
    Outcome OpenFile(const std::string& urlPath, const std::string& fileName,
                     const std::string& aiFileId) {
        Json::Value params(Json::objectValue);
        params["fileUrl"] = ToUtf8(server_.Url(urlPath));
        params["fileName"] = fileName;
        params["aiFileId"] = aiFileId;
        return Send("openFile", params);
    }
    Json::Value Find(const std::string& id, const std::string& text) {
        Json::Value params(Json::objectValue);
        params["file"]["id"] = id;
        params["text"] = text;
        return Call("findTexts", params);
    }

    // A service id of the form head-tail, unique to this process.
    static std::string AiFileId(const std::string& tail) {
        return "open-test-" + std::to_string(::getpid()) + "-" + tail;
    }
    static fs::path DownloadFolder(const std::string& aiFileId) {
        return fs::path(QDir::tempPath().toStdString()) / aiFileId;
    }

    std::string served;  // the body of "/report.pdf"

  private:
    HttpAnswer Answer(const HttpRequestSeen& seen) const {
        HttpAnswer answer;
        if (seen.target == "/report.pdf") {
            answer.body = served;
        } else if (seen.target == "/stalled.pdf") {
            // Headers and a part of the body, then silence.
            answer.body = served;
            answer.stallAfter = served.size() / 2;
        } else {
            answer.status = 404;
            answer.reason = "Not Found";
        }
        return answer;
    }

    LocalHttpServer server_;
};

TEST_F(OpenAndOcrInHostTest, OpenFileDownloadsIntoItsOwnFolderAndOpensTheFile) {
    PdfDescription recipe;
    recipe.pages.push_back(PageDescription::TextLines({"Quarterly report", "Jane Roe"}));
    recipe.pages.push_back(PageDescription::TextLines({"Page two"}));
    served = Bytes(MakePdf("served.pdf", recipe));

    // A name with folders in it lands in the download folder under its last component.
    const std::string escaped = "escaped-" + std::to_string(::getpid()) + ".pdf";
    const std::string aiFileId = AiFileId("1");
    const Outcome opened = OpenFile("/report.pdf", "../" + escaped, aiFileId);
    ASSERT_EQ(opened.reply["ret"].asInt(), 0) << WriteJson(opened.reply);
    ASSERT_EQ(opened.reply["data"].size(), 1u);
    const Json::Value& file = opened.reply["data"][0];
    EXPECT_EQ(file["size"].asUInt64(), served.size());

    const fs::path target = DownloadFolder(aiFileId) / escaped;
    EXPECT_EQ(Bytes(target), served);
    EXPECT_FALSE(fs::exists(DownloadFolder(aiFileId).parent_path() / escaped));
    EXPECT_EQ(std::distance(fs::directory_iterator(DownloadFolder(aiFileId)), {}), 1);

    const std::vector<std::string> opening = {"ev-doc-before-open", "ev-doc-open-success"};
    EXPECT_TRUE(std::search(opened.events.begin(), opened.events.end(), opening.begin(),
                            opening.end()) != opened.events.end());
    EXPECT_EQ(std::count(opened.events.begin(), opened.events.end(), "ev-doc-open-failed"), 0);
    ASSERT_FALSE(opened.progress.empty());
    EXPECT_EQ(opened.progress.front()["progress"].asString(), "show");
    EXPECT_EQ(opened.progress.front()["title"].asString(), "Downloading file...");
    EXPECT_EQ(opened.progress.back()["progress"].asString(), "close");

    // The editor shows the downloaded file, and the page reads its text.
    ASSERT_EQ(host->Documents().Tabs().size(), 1u);
    const pdfhost::HostDocument* active = host->Documents().Active();
    ASSERT_NE(active, nullptr);
    EXPECT_EQ(fs::path(active->Path()), target);
    EXPECT_EQ(active->Engine().PageCount(), 2);
    EXPECT_EQ(Call("getCurrentDoc")["data"][0]["id"], file["id"]);
    Json::Value all(Json::objectValue);
    all["pageIndex"] = -1;
    const Json::Value texts = Call("getFileTexts", all);
    ASSERT_EQ(texts["data"].size(), 2u);
    EXPECT_EQ(texts["data"][0].asString(), "Quarterly report\r\nJane Roe");
    EXPECT_EQ(texts["data"][1].asString(), "Page two");

    // The downloads are scratch files: they go when the plug-in unloads, their folders stay.
    Json::Value quit(Json::objectValue);
    quit["host"] = "quit";
    Line(quit);
    EXPECT_FALSE(fs::exists(target));
    EXPECT_TRUE(fs::is_directory(DownloadFolder(aiFileId)));
}

TEST_F(OpenAndOcrInHostTest, AFailedDownloadOpensNothingAndLeavesNothingBehind) {
    served = Bytes(MakePdf("served.pdf", PdfDescription{{PageDescription::TextLines({"x"})}}));
    ASSERT_GT(served.size(), 400u);
    for (const std::string urlPath : {"/missing.pdf", "/stalled.pdf"}) {
        SCOPED_TRACE(urlPath);
        const std::string aiFileId = AiFileId("1");
        const Outcome failed = OpenFile(urlPath, "report.pdf", aiFileId);
        EXPECT_EQ(failed.reply["ret"].asInt(), 300006);
        EXPECT_TRUE(failed.reply["data"].isNull());
        EXPECT_EQ(failed.events, std::vector<std::string>{"ev-doc-open-failed"});
        if (!failed.progress.empty()) {
            EXPECT_EQ(failed.progress.back()["progress"].asString(), "close");
        }
        EXPECT_TRUE(host->Documents().Tabs().empty());
        EXPECT_TRUE(fs::is_directory(DownloadFolder(aiFileId)));
        EXPECT_TRUE(fs::is_empty(DownloadFolder(aiFileId)));
    }
    EXPECT_EQ(Call("getCurrentDoc")["ret"].asInt(), 300001);
}

TEST_F(OpenAndOcrInHostTest, RecognitionMakesAPictureOfTextSearchableAndSavesIt) {
    // The page shows its words only as a picture, as a scanner makes it.
    PageDescription typed;
    typed.Add(TextItem{.x = 72, .y = 700, .size = 24, .text = "INVOICE NUMBER 48213"});
    typed.Add(TextItem{.x = 72, .y = 660, .size = 24, .text = "Payment due soon"});
    PdfFactory factory(host->Engine());
    auto picture = std::make_shared<pdfhost::engine::RgbImage>(
        factory.Build(PdfDescription{{typed}}).Render(0, 150));
    PageDescription scan;
    scan.Add(ImageItem{.placement = {0, 0, 612, 792}, .picture = std::move(picture)});
    const std::string path = MakePdf("scan.pdf", PdfDescription{{scan}});
    ASSERT_GT(Open(path), 0);
    const std::string id = Call("getCurrentDoc")["data"][0]["id"].asString();
    EXPECT_EQ(Find(id, "INVOICE")["ret"].asInt(), 400005);

    // A dialog left unanswered is a cancel: nothing is recognised.
    Json::Value withDialog(Json::objectValue);
    withDialog["isShowDlg"] = true;
    EXPECT_EQ(Call("runFileOCR", Json::objectValue)["ret"].asInt(), 100001);
    const Outcome cancelled = Send("runFileOCR", withDialog);
    EXPECT_EQ(cancelled.reply["ret"].asInt(), 1);
    ASSERT_FALSE(cancelled.dialogs.empty());
    EXPECT_EQ(cancelled.dialogs.back()["unanswered"].asString(), "ocr");
    EXPECT_EQ(Find(id, "INVOICE")["ret"].asInt(), 400005);
    EXPECT_FALSE(Call("isCurrentDocModified")["data"].asBool());

    Json::Value confirm(Json::objectValue);
    confirm["host"] = "answer";
    confirm["dialog"] = "ocr";
    confirm["value"] = true;
    Line(confirm);
    const Outcome recognised = Send("runFileOCR", withDialog);
    ASSERT_EQ(recognised.reply["ret"].asInt(), 0) << WriteJson(recognised.reply);
    ASSERT_EQ(recognised.dialogs.size(), 1u);
    EXPECT_EQ(recognised.dialogs[0]["dialog"].asString(), "ocr");
    EXPECT_EQ(recognised.dialogs[0]["language"].asString(), "English");
    EXPECT_EQ(std::count(recognised.events.begin(), recognised.events.end(), "ev-doc-saved"), 1);

    for (const std::string word : {"INVOICE", "48213", "Payment"}) {
        const Json::Value found = Find(id, word);
        ASSERT_EQ(found["ret"].asInt(), 0) << word;
        EXPECT_EQ(found["data"]["count"].asInt(), 1) << word;
    }
    // The text layer is in the file on disk: the host saved it.
    EXPECT_FALSE(Call("isCurrentDocModified")["data"].asBool());
    const Document saved = Document::Open(host->Engine(), path);
    const pdfhost::engine::PageText text = pdfhost::engine::PageText::OfPage(saved, 0);
    EXPECT_NE(pdfhost::engine::EncodeUtf8(text.Slice(0, text.CharCount())).find("48213"),
              std::string::npos);
}

}  // namespace
