// The commands that bring files into play: file selection, download and open, service ids and
// external links, against a fake editor and platform.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "bridge/command_table.h"
#include "config/brevan_config.h"
#include "fake_page_dialog.h"
#include "plugin_fixture.h"

namespace {

namespace fs = std::filesystem;

// An editor that opens and closes files, serves the file dialog's plug-in questions and offers a
// web view table, and notes each of those calls.
class OpeningHost : public FakeHost {
  public:
    HostDoc HostDocOpen(const wchar_t* path, const wchar_t* password, int visible,
                        int flags) override {
        calls.push_back("open " + ToUtf8(path) + " '" + ToUtf8(password) + "' " +
                        std::to_string(visible) + " " + std::to_string(flags));
        return refuseOpen ? nullptr : Open(FileDoc(path));
    }
    void HostDocClose(HostDoc doc, int check, int a, int b) override {
        calls.push_back("close " + ToUtf8(Doc(doc).path) + " " + std::to_string(check) +
                        std::to_string(a) + std::to_string(b));
        Close(doc);
    }
    void HostAppActivateDoc(HostDoc doc) override {
        calls.push_back("activate " + ToUtf8(Doc(doc).path));
        active = doc;
    }
    void HostFileDialogAttach(HostFileDialog dialog, int attach) override {
        attached.emplace_back(dialog, attach);
    }
    void HostFileDialogGetPlugin(HostFileDialog, HostWideString out) override {
        HostWideStringSet(out, dialogPlugin.c_str());
    }
    void HostFileDialogGetAccount(HostFileDialog, HostWideString out) override {
        calls.push_back("account");
        HostWideStringSet(out, L"ann@example.com");
    }
    HostExtTable HostExtensionFind(const char* name, int version) override {
        if (browserTable && std::string(name) == "Browser Extension HFT" && version == 0)
            return reinterpret_cast<HostExtTable>(&browserTable);
        return FakeHost::HostExtensionFind(name, version);
    }
    int BrowserExtOpenUrl(HostExtTable, const wchar_t* url, int a, int b,
                          HostBrowserTabRecord* record, void** tabOut) override {
        calls.push_back("tab " + ToUtf8(url) + " " + std::to_string(a) + std::to_string(b));
        tabRecord = record;
        *tabOut = tabHandle;
        return tabResult;
    }

    std::vector<std::string> calls;
    std::vector<std::pair<HostFileDialog, int>> attached;
    std::wstring dialogPlugin;
    bool refuseOpen = false;
    bool browserTable = false;
    int tabResult = 1;
    void* tabHandle = reinterpret_cast<void*>(0x7ab);
    HostBrowserTabRecord* tabRecord = nullptr;
};

// A platform whose downloads may begin and then break off, and which notes their settings.
class DownloadingPlatform : public FakePlatform {
  public:
    bool DownloadToFile(const std::wstring& url, const std::wstring& path,
                        DownloadProgress& progress, const HttpSettings& settings) override {
        downloadSettings.push_back(settings);
        if (breakAfterBegin) {
            progress.OnProgress(0, 100, 4);
            progress.OnProgress(40, 100, 5);
            return false;
        }
        return FakePlatform::DownloadToFile(url, path, progress, settings);
    }
    bool breakAfterBegin = false;
    std::vector<HttpSettings> downloadSettings;
};

class FileOpenCommandsTest : public PluginFixtureOf<OpeningHost, DownloadingPlatform> {
  protected:
    FileOpenCommandsTest() {
        app.paneDialogs[host.mainWindow] = &pane;
        platform.downloads[L"https://files.example/r"] = {"%PDF-1.7 report", true};
    }
    ~FileOpenCommandsTest() override { app.paneDialogs.clear(); }

    Json::Value Call(const std::string& command, const std::string& params, void* owner = nullptr) {
        const CommandParams request = CommandParams::FromText(params);
        auto dispatcher = app.commands().Create(L"base", FromUtf8(command),
                                                CommandRequest{owner, request, app.browserStream});
        Json::Value reply;
        ParseJson(ToUtf8(dispatcher->Dispatch(nullptr)), reply);
        return reply;
    }
    Json::Value OpenFile(const std::string& aiFileId, const std::string& fileName = "report.pdf") {
        return Call("openFile", R"({"fileUrl":"https://files.example/r","fileName":")" + fileName +
                                    R"(","aiFileId":")" + aiFileId + "\"}");
    }
    std::wstring IdOfPath(const fs::path& path) {
        std::wstring id;
        app.documents->findIdByPath(FromUtf8(path.string()), id);
        return id;
    }
    // The files of a reply without their registry ids, which differ from run to run.
    static Json::Value WithoutIds(Json::Value files) {
        for (Json::ArrayIndex i = 0; i < files.size(); ++i)
            files[i].removeMember("id");
        return files;
    }
    int FailedEvents() const {
        return static_cast<int>(
            std::count(log.begin(), log.end(),
                       "pane CallScript __dispatchEvent {\"name\":\"ev-doc-open-failed\"}\n"));
    }

    std::vector<std::string> log;
    FakePageDialog pane{log, "pane"};
    fs::path temp = host.userData / "temp";
};

TEST_F(FileOpenCommandsTest, OpenFileChecksItsArgumentsInOrderBeforeAnyWork) {
    const std::pair<std::string, int> cases[] = {
        {"not json", 100001},
        {R"({"fileName":"a.pdf","aiFileId":"x-1"})", 100023},
        {R"({"fileUrl":"https://files.example/r","fileName":"","aiFileId":"x-1"})", 100024},
        {R"({"fileUrl":"https://files.example/r","fileName":"a.pdf"})", 100007}};
    for (const auto& [params, code] : cases) {
        const Json::Value reply = Call("openFile", params);
        EXPECT_EQ(reply["ret"].asInt(), code) << params;
        EXPECT_TRUE(reply["data"].isNull()) << params;
    }
    EXPECT_TRUE(platform.downloadRequests.empty());
    EXPECT_EQ(FailedEvents(), 0);
}

TEST_F(FileOpenCommandsTest, OpenFileDownloadsIntoItsOwnFolderAndOpensAScratchCopy) {
    fs::create_directories(temp / "doc7-3" / "old");
    std::ofstream(temp / "doc7-3" / "stale.pdf") << "stale";

    const Json::Value reply = OpenFile("doc7-3", "..\\\\..\\\\up/report.pdf");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    const fs::path target = temp / "doc7-3" / "report.pdf";
    EXPECT_EQ(platform.downloadRequests.at(0).second, FromUtf8(target.string()));
    EXPECT_FALSE(fs::exists(temp / "doc7-3" / "stale.pdf"));
    EXPECT_FALSE(fs::exists(temp / "doc7-3" / "old"));
    EXPECT_TRUE(platform.downloadSettings.at(0).verifyCertificates);
    EXPECT_EQ(host.calls.back(), "open " + target.string() + " '' 1 0");
    EXPECT_TRUE(!host.progressWindows.empty() && host.Bar() == nullptr);

    EXPECT_EQ(WithoutIds(reply["data"]),
              JsonOf(R"([{"aiFileId":"doc7-3","name":"..\\..\\up/report.pdf","size":15,)"
                     R"("isCurrentDoc":true,"drive":"local","filePath":"","account_id":""}])"));
    HostDoc opened = nullptr;
    ASSERT_TRUE(app.documents->findDocById(FromUtf8(reply["data"][0]["id"].asString()), opened));
    EXPECT_EQ(opened, host.active);

    // The download's record marks the copy as scratch: it goes when the plug-in unloads.
    bool scratch = false;
    for (const auto& [id, record] : app.documents->records())
        scratch = scratch || (record.aiFileId == L"doc7-3" && record.isTemp);
    EXPECT_TRUE(scratch);
    app.Unload();
    EXPECT_FALSE(fs::exists(target));
    EXPECT_TRUE(fs::exists(temp / "doc7-3"));
}

TEST_F(FileOpenCommandsTest, OpenFileReusesTheOpenRevisionAndReplacesAnOlderOne) {
    ASSERT_EQ(OpenFile("doc7-3")["ret"].asInt(), 0);
    const HostDoc first = host.active;
    const std::string path = (temp / "doc7-3" / "report.pdf").string();

    const Json::Value again = OpenFile("doc7-3");
    EXPECT_EQ(again["ret"].asInt(), 0);
    EXPECT_EQ(platform.downloadRequests.size(), 1u);
    EXPECT_EQ(host.calls.back(), "activate " + path);
    HostDoc named = nullptr;
    app.documents->findDocById(FromUtf8(again["data"][0]["id"].asString()), named);
    EXPECT_EQ(named, first);

    ASSERT_EQ(OpenFile("doc7-4")["ret"].asInt(), 0);
    EXPECT_EQ(platform.downloadRequests.size(), 2u);
    const std::vector<std::string> tail(host.calls.end() - 3, host.calls.end());
    EXPECT_EQ(tail, (std::vector<std::string>{
                        "activate " + path, "close " + path + " 100",
                        "open " + (temp / "doc7-4" / "report.pdf").string() + " '' 1 0"}));

    // Without a "-" there is no head to match: each request downloads anew.
    OpenFile("plain");
    OpenFile("plain");
    EXPECT_EQ(platform.downloadRequests.size(), 4u);
}

TEST_F(FileOpenCommandsTest, FailedDownloadJobsAnswerTheirStepAndTellThePage) {
    app.config->insecureTls = true;
    platform.breakAfterBegin = true;
    EXPECT_EQ(OpenFile("doc7-3")["ret"].asInt(), 300006);
    EXPECT_FALSE(platform.downloadSettings.at(0).verifyCertificates);
    EXPECT_TRUE(!host.progressWindows.empty() && host.Bar() == nullptr);
    platform.breakAfterBegin = false;

    host.refuseOpen = true;
    EXPECT_EQ(OpenFile("doc7-3")["ret"].asInt(), 300007);
    const fs::path target = temp / "doc7-3" / "report.pdf";
    EXPECT_TRUE(fs::exists(target));
    EXPECT_EQ(IdOfPath(target), L"");

    EXPECT_EQ(OpenFile("../doc7-3")["ret"].asInt(), 400019);
    EXPECT_EQ(OpenFile("doc7-3", "..")["ret"].asInt(), 300006);
    platform.tempFolder = FromUtf8((temp / "missing" / "").string());
    EXPECT_EQ(OpenFile("doc7-3")["ret"].asInt(), 400019);
    EXPECT_EQ(platform.downloadSettings.size(), 2u);
    EXPECT_EQ(FailedEvents(), 5);
}

// Ids and names that would lead a path out of its folder, or name a device, touch no file: the
// markers beside and above the temporary folder all stay.
TEST_F(FileOpenCommandsTest, HostileIdsAndNamesTouchNoFileOutsideTheirFolder) {
    platform.downloads.clear();  // every download fails, so the clean-up runs too
    const std::vector<fs::path> markers = {temp / "marker", temp.parent_path() / "marker",
                                           temp / "victim" / "marker"};
    for (const fs::path& marker : markers) {
        fs::create_directories(marker.parent_path());
        std::ofstream(marker) << "keep";
    }
    const std::string longName(256, 'a');
    // A hostile id is refused as an argument; a hostile name only where the download would write
    // it, which fails that step.
    const std::pair<std::vector<std::string>, int> cases[] = {
        {{R"(..\u0000)", R"(\u0000)", R"(.\u0000)", R"(victim\u0000x)", "..", "a/..", R"(a\\b)",
          "c:x", "CON", "nul.txt", "COM1", "dot.", longName},
         400019},
        {{R"(..\u0000)", R"(\u0000)", "marker\\u0000.pdf", "..", "LPT9.pdf", longName}, 300006}};
    for (const auto& [values, code] : cases) {
        for (const std::string& value : values) {
            SCOPED_TRACE(value);
            const bool name = code == 300006;
            EXPECT_EQ(OpenFile(name ? "ok-1" : value, name ? value : "report.pdf")["ret"].asInt(),
                      code);
            for (const fs::path& marker : markers)
                EXPECT_TRUE(fs::exists(marker)) << marker;
        }
    }
}

TEST_F(FileOpenCommandsTest, FileSelectionRegistersEachPathWithoutOpeningIt) {
    const fs::path a = temp / "a.pdf";
    std::ofstream(a) << "12345";
    const HostDoc open = host.Open(FileDoc(FromUtf8(a.string())));
    const std::wstring oldId = IdOfPath(a);
    ASSERT_NE(oldId, L"");
    platform.dialogAnswers.push_back(std::vector<std::wstring>{FromUtf8(a.string()), L"/b.pdf"});

    const Json::Value reply = Call("showFileSelectDialog", "ignored");
    ASSERT_EQ(reply["ret"].asInt(), 0);
    ASSERT_EQ(reply["data"].size(), 2u);
    const Json::Value& first = reply["data"][0];
    EXPECT_EQ(WithoutIds(reply["data"])[0],
              JsonOf(R"({"name":"a.pdf","size":5,"isCurrentDoc":false,"filePath":"","aiFileId":"",)"
                     R"("drive":"local","account":"","account_id":""})"));
    EXPECT_EQ(reply["data"][1]["name"], "b.pdf");
    EXPECT_EQ(host.calls, std::vector<std::string>{});  // nothing opened, no account asked

    // The open document's old record went with the path; the new one has no handle.
    EXPECT_EQ(IdOfPath(a), FromUtf8(first["id"].asString()));
    std::wstring id;
    EXPECT_FALSE(app.documents->findIdByDoc(open, id));
    EXPECT_FALSE(app.documents->isTempOf(IdOfPath(a)));

    EXPECT_FALSE(platform.dialogSettings.at(0).save);
    EXPECT_EQ(platform.dialogSettings.at(0).parent, nullptr);
    ASSERT_EQ(host.attached.size(), 1u);
    EXPECT_EQ(host.attached[0].second, 1);
}

TEST_F(FileOpenCommandsTest, FileSelectionOfCloudDrivesCancelAndEmptyPaths) {
    FakePageDialog owner(log, "batch");
    host.dialogPlugin = L"TarvoInnerPluginOneDrive";
    platform.dialogAnswers.push_back(std::vector<std::wstring>{L"/cloud/c.pdf"});
    const Json::Value cloud = Call("showFileSelectDialog", "", static_cast<PageDialog*>(&owner));
    EXPECT_EQ(cloud["data"][0]["drive"], "onedrive");
    EXPECT_EQ(cloud["data"][0]["account_id"], "ann@example.com");
    EXPECT_EQ(platform.dialogSettings.at(0).parent, owner.Window());

    host.dialogPlugin = L"TarvoInnerPluginonedrive";
    platform.dialogAnswers.push_back(std::vector<std::wstring>{L"/cloud/d.pdf"});
    EXPECT_EQ(Call("showFileSelectDialog", "")["data"][0]["drive"], "local");

    const std::size_t records = app.documents->records().size();
    platform.dialogAnswers.push_back(std::nullopt);
    const Json::Value cancelled = Call("showFileSelectDialog", "");
    EXPECT_EQ(cancelled["ret"].asInt(), 400018);
    EXPECT_TRUE(cancelled["data"].isNull());
    EXPECT_EQ(app.documents->records().size(), records);

    platform.dialogAnswers.push_back(std::vector<std::wstring>{L"/e.pdf", L"", L"/f.pdf"});
    EXPECT_EQ(Call("showFileSelectDialog", "")["ret"].asInt(), 300004);
    EXPECT_NE(IdOfPath("/e.pdf"), L"");
    EXPECT_EQ(IdOfPath("/f.pdf"), L"");
}

TEST_F(FileOpenCommandsTest, SetIdToFileBindsAnyIdAfterItsChecks) {
    ExpectRets("setIdToFile", {{"{", 100001},
                               {R"({"file":{"id":""},"aiFileId":"a-1"})", 100004},
                               {R"({"file":{"id":"{X}"},"aiFileId":""})", 100007}});
    EXPECT_TRUE(app.documents->records().empty());

    const Json::Value reply = Call("setIdToFile", R"({"file":{"id":"{X}"},"aiFileId":"a-b-c"})");
    EXPECT_EQ(reply["ret"].asInt(), 0);
    EXPECT_TRUE(reply["data"].isNull());
    const DocumentRecord& record = app.documents->records().at(L"{X}");
    EXPECT_EQ(record.aiFileHead, L"a-b");
    EXPECT_EQ(record.aiFileTail, L"c");
    std::wstring tail;
    EXPECT_TRUE(app.documents->aiFileTailByHead(L"a-b", tail));
    EXPECT_EQ(tail, L"c");
}

TEST_F(FileOpenCommandsTest, OpenUrlGoesToTheSystemBrowserOrToAHostTab) {
    ExpectRets("openUrlInBrowser", {{"[", 100001},
                                    {R"({"url":""})", 100023},
                                    {R"({"url":"https://a.example","inVelmoraTab":"yes"})", 0}});
    platform.openUrlResult = false;
    ExpectRets("openUrlInBrowser", {{R"({"url":"https://b.example"})", 400017}});
    EXPECT_EQ(platform.openedUrls,
              (std::vector<std::wstring>{L"https://a.example", L"https://b.example"}));

    const auto inTab = [this] {
        return Call("openUrlInBrowser", R"({"url":"https://c.example","inVelmoraTab":1})")["ret"]
            .asInt();
    };
    EXPECT_EQ(inTab(), 400016);  // no web view table
    host.browserTable = true;
    EXPECT_EQ(inTab(), 0);
    EXPECT_EQ(host.calls, std::vector<std::string>{"tab https://c.example 00"});
    ASSERT_NE(host.tabRecord, nullptr);
    for (std::size_t word : {2, 4, 8, 9, 10})
        EXPECT_NE(host.tabRecord->word(word), nullptr) << word;
    EXPECT_EQ(host.tabRecord->word(3), nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)(void*)>(host.tabRecord->word(9))(nullptr), 1);

    host.tabHandle = nullptr;
    EXPECT_EQ(inTab(), 400016);
    host.tabHandle = &host;
    host.tabResult = 0;
    EXPECT_EQ(inTab(), 400016);
    EXPECT_EQ(platform.openedUrls.size(), 2u);
}

}  // namespace
