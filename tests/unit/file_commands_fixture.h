// A plug-in started on a FakeFileHost, with a page channel: the fixture of the file stream, save,
// page text, OCR and progress commands.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/brevan.h"
#include "bridge/json_text.h"
#include "bridge/web_message_channel.h"
#include "document/document_registry.h"
#include "document/progress_bar_host.h"
#include "fake_file_host.h"
#include "plugin_fixture.h"
#include "util/utf.h"

class FileCommandsFixture : public testing::Test {
  protected:
    FileCommandsFixture() {
        platform.tempFolder = FromUtf8((host.userData / "temp").string()) + L"/";
        std::filesystem::create_directories(host.userData / "temp");
        app.Attach(host, platform);
        app.ImportTables();
        EXPECT_EQ(app.Init(), 1);
    }
    ~FileCommandsFixture() override { app.Unload(); }

    // Posts one message and returns the replies it caused (none, or one).
    std::vector<std::string> Post(const std::string& text) {
        endpoint.replies.clear();
        channel.OnWebMessage(text);
        return endpoint.replies;
    }

    // Sends a "base" command with an identifier and returns the parsed reply (null when none).
    Json::Value Call(const std::string& command, const std::string& params = "{}") {
        Json::Value envelope(Json::arrayValue);
        envelope.append("base");
        envelope.append(command);
        envelope.append(params);
        envelope.append("req");
        const std::vector<std::string> replies = Post(WriteJson(envelope));
        Json::Value reply;
        if (replies.size() == 1)
            ParseJson(replies[0], reply);
        return reply;
    }
    int Ret(const std::string& command, const std::string& params = "{}") {
        return Call(command, params)["ret"].asInt();
    }

    // Writes `bytes` to a file under the test's folder and returns its path.
    std::wstring WriteFile(const std::string& name, const std::string& bytes) {
        const auto path = host.userData / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return FromUtf8(path.string());
    }

    std::string FileId(HostDoc doc) {
        std::wstring id;
        app.documents->findIdByDoc(doc, id);
        return ToUtf8(id);
    }

    FakeFileHost host;
    FakePlatform platform;
    Brevan app;
    RecordingEndpoint endpoint;
    WebMessageChannel channel{app.commands(), endpoint};
};
