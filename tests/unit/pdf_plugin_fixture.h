// A plug-in started on a FakePdfHost, with a page channel: the fixture of the search, marking,
// annotation, note, redaction and form commands.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <string>

#include "app/brevan.h"
#include "bridge/json_text.h"
#include "bridge/web_message_channel.h"
#include "document/document_registry.h"
#include "fake_pdf_host.h"
#include "plugin_fixture.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"

inline Json::Value JsonOf(const std::string& text) {
    Json::Value value;
    ParseJson(text, value);
    return value;
}

class PdfPluginFixture : public testing::Test {
  protected:
    PdfPluginFixture() {
        app.Attach(host, platform);
        app.ImportTables();
        EXPECT_EQ(app.Init(), 1);
    }
    ~PdfPluginFixture() override { app.Unload(); }

    // Sends a "base" command and returns the parsed reply (null when none came).
    Json::Value Call(const std::string& command, const std::string& params = "{}") {
        Json::Value envelope(Json::arrayValue);
        envelope.append("base");
        envelope.append(command);
        envelope.append(params);
        envelope.append("req");
        endpoint.replies.clear();
        channel.OnWebMessage(WriteJson(envelope));
        Json::Value reply;
        if (endpoint.replies.size() == 1)
            ParseJson(endpoint.replies[0], reply);
        return reply;
    }
    int Ret(const std::string& command, const std::string& params = "{}") {
        return Call(command, params)["ret"].asInt();
    }

    // The registry's id of an open document.
    std::string FileId(HostDoc doc) {
        std::wstring id;
        app.documents->findIdByDoc(doc, id);
        return ToUtf8(id);
    }
    std::string FileArg(HostDoc doc) { return R"("file":{"id":")" + FileId(doc) + R"("})"; }

    // A document whose pages hold these lines.
    HostDoc OpenText(std::vector<std::vector<std::wstring>> pages) {
        FakePdf pdf;
        for (auto& lines : pages) {
            FakePdfPage page;
            for (auto& line : lines)
                page.lines.push_back(FakeLine{std::move(line)});
            pdf.pages.push_back(std::move(page));
        }
        return host.OpenPdf(std::move(pdf));
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

    FakePdfHost host;
    FakePlatform platform;
    Brevan app;
    RecordingEndpoint endpoint;
    WebMessageChannel channel{app.commands(), endpoint};
};
