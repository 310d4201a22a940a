// A plug-in application started on a FakeHost, with a page channel whose replies are recorded.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <string>
#include <vector>

#include "app/brevan.h"
#include "bridge/json_text.h"
#include "bridge/web_message_channel.h"
#include "document/document_registry.h"
#include "fake_host.h"
#include "util/utf.h"

class RecordingEndpoint : public PageEndpoint {
  public:
    void PostWebMessageAsString(const std::wstring& text) override {
        replies.push_back(ToUtf8(text));
    }
    void ExecuteScript(const std::wstring& script) override { scripts.push_back(ToUtf8(script)); }
    std::vector<std::string> replies;
    std::vector<std::string> scripts;
};

class PluginFixture : public testing::Test {
  protected:
    PluginFixture() {
        app.Attach(host, platform);
        app.ImportTables();
        EXPECT_EQ(app.Init(), 1);
    }
    ~PluginFixture() override { app.Unload(); }

    // Posts one message and returns the replies it caused (none, or one).
    std::vector<std::string> Post(const std::string& text) {
        endpoint.replies.clear();
        channel.OnWebMessage(text);
        return endpoint.replies;
    }

    // Sends a "base" command with an identifier and returns the parsed reply.
    Json::Value Call(const std::string& command, const std::string& params = "{}",
                     const std::string& uuid = "req-1") {
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

    FakeHost host;
    FakePlatform platform;
    Brevan app;
    RecordingEndpoint endpoint;
    WebMessageChannel channel{app.commands(), endpoint};
};
