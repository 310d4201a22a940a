// openFile with the plug-in in pdfhost: a PDF served by a local HTTP server is downloaded into a
// folder of its own and opened in the editor.
#include <unistd.h>
#include <QDir>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "bridge/json_text.h"
#include "host_document.h"
#include "local_http_server.h"
#include "plugin_host_fixture.h"
#include "util/utf.h"

namespace {

using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;
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
};

class OpenFileInHostTest : public PluginHostTest {
  protected:
    OpenFileInHostTest() : server_([this](const HttpRequestSeen& seen) { return Answer(seen); }) {}
    ~OpenFileInHostTest() override {
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
        } else {
            answer.status = 404;
            answer.reason = "Not Found";
        }
        return answer;
    }

    LocalHttpServer server_;
};

TEST_F(OpenFileInHostTest, OpenFileDownloadsIntoItsOwnFolderAndOpensTheFile) {
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

}  // namespace
