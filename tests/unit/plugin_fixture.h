// A plug-in application started on a FakeHost, with a page channel whose replies are recorded.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "app/brevan.h"
#include "bridge/json_text.h"
#include "bridge/web_message_channel.h"
#include "document/document_registry.h"
#include "fake_host.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"
#include "util/wide_path.h"

inline Json::Value JsonOf(const std::string& text) {
    Json::Value value;
    ParseJson(text, value);
    return value;
}

class RecordingEndpoint : public PageEndpoint {
  public:
    void PostWebMessageAsString(const std::wstring& text) override {
        replies.push_back(ToUtf8(text));
    }
    void ExecuteScript(const std::wstring&) override {}
    std::vector<std::string> replies;
};

// A test may give its own fake host or platform, derived from the shared fakes.
template <typename Host = FakeHost, typename Platform = FakePlatform>
class PluginFixtureOf : public testing::Test {
  protected:
    // `prepare` sets the host up before the plug-in starts; without `start` the test starts it.
    explicit PluginFixtureOf(const std::function<void(Host&)>& prepare = {}, bool start = true) {
        platform.tempFolder = WideOfPath(host.userData / "temp" / "");
        std::filesystem::create_directories(host.userData / "temp");
        if (prepare)
            prepare(host);
        if (start)
            Start();
    }
    // No test leaves a handle of the editor unreleased.
    void TearDown() override { EXPECT_EQ(host.LiveHandles(), 0); }
    ~PluginFixtureOf() override {
        if (started_)
            app.Unload();
    }

    void Start() {
        started_ = true;
        app.Attach(host, platform);
        app.ImportTables();
        EXPECT_EQ(app.Init(), 1);
    }

    // Posts one message and returns the replies it caused (none, or one).
    std::vector<std::string> Post(const std::string& text) {
        endpoint.replies.clear();
        channel.OnWebMessage(text);
        return endpoint.replies;
    }

    // Sends a "base" command with an identifier and returns the parsed reply (null when none).
    Json::Value Call(const std::string& command, const std::string& params = "{}",
                     const std::string& uuid = "req") {
        Json::Value envelope(Json::arrayValue);
        envelope.append("base");
        envelope.append(command);
        envelope.append(params);
        envelope.append(uuid);
        const auto replies = Post(WriteJson(envelope));
        Json::Value reply;
        if (replies.size() == 1)
            ParseJson(replies[0], reply);
        return reply;
    }
    int Ret(const std::string& command, const std::string& params = "{}") {
        return Call(command, params)["ret"].asInt();
    }
    // Ret of `command` for each of these parameters.
    void ExpectRets(const std::string& command,
                    const std::vector<std::pair<std::string, int>>& paramsAndCodes) {
        for (const auto& [params, code] : paramsAndCodes)
            EXPECT_EQ(Ret(command, params), code) << params;
    }
    // Ret while the document lacks what `part` stands for (its PDF, view, tool or form).
    int RetWithout(HostDoc doc, bool FakeDoc::*part, const std::string& command,
                   const std::string& params = "{}") {
        host.Doc(doc).*part = false;
        const int ret = Ret(command, params);
        host.Doc(doc).*part = true;
        return ret;
    }

    // Writes `bytes` to a file of the UTF-8 `name` under the test's folder and returns its path.
    std::wstring WriteFile(const std::string& name, const std::string& bytes) {
        const auto path = host.userData / PathOfUtf8(name);
        std::ofstream(path, std::ios::binary) << bytes;
        return WideOfPath(path);
    }

    // The registry's id of an open document, and the "file" argument naming it.
    std::string FileId(HostDoc doc) {
        std::wstring id;
        app.documents->findIdByDoc(doc, id);
        return ToUtf8(id);
    }
    std::string FileArg(HostDoc doc) { return R"("file":{"id":")" + FileId(doc) + R"("})"; }

    // A page holding these lines, and a document whose pages hold these lines.
    static FakePage TextPage(std::vector<std::wstring> lines) {
        FakePage page;
        for (auto& line : lines)
            page.lines.push_back(FakeLine{std::move(line)});
        return page;
    }
    HostDoc OpenText(std::vector<std::vector<std::wstring>> pages) {
        FakeDoc doc;
        for (auto& lines : pages)
            doc.pages.push_back(TextPage(std::move(lines)));
        return host.OpenPdf(std::move(doc));
    }

    // findTexts of one text over the whole document; its search key.
    std::string Find(HostDoc doc, const std::string& text) {
        const Json::Value reply =
            Call("findTexts", "{" + FileArg(doc) + R"(,"text":")" + text + R"("})");
        EXPECT_EQ(reply["ret"].asInt(), 0) << text;
        return reply["data"]["searchKey"].asString();
    }
    SearchRecord Stored(HostDoc doc, const std::string& key, int index) {
        return app.searchResults->GetResult(FromUtf8(FileId(doc)), FromUtf8(key), index);
    }
    // Where a record lies, as "page:start-end#index", then "+page:start-end" per piece.
    static std::string Where(const SearchRecord& r) {
        std::string text = std::to_string(r.page) + ":" + std::to_string(r.start) + "-" +
                           std::to_string(r.end) + "#" + std::to_string(r.index);
        for (const SearchPiece& piece : r.pieces) {
            text += "+" + std::to_string(piece.page) + ":" + std::to_string(piece.start) + "-" +
                    std::to_string(piece.end);
        }
        return text;
    }

    Host host;
    Platform platform;
    Brevan app;
    RecordingEndpoint endpoint;
    WebMessageChannel channel{app.commands(), endpoint};

  private:
    bool started_ = false;
};

using PluginFixture = PluginFixtureOf<>;
