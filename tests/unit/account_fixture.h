// A plug-in started on a FakeHost that offers the "login" table, with the service document served
// by the fake platform and a page channel whose replies are recorded.
#pragma once

#include <map>
#include <string>

#include "config/brevan_config.h"
#include "config/service_config.h"
#include "plugin_fixture.h"

class AccountFixture : public testing::Test {
  protected:
    static constexpr const wchar_t* kServer = L"https://accounts.test";

    AccountFixture() {
        host.loginTable = true;
        host.loginServer = kServer;
    }
    ~AccountFixture() override {
        if (app.config)
            app.Unload();
    }

    void Start() {
        app.Attach(host, platform);
        app.ImportTables();
        ASSERT_EQ(app.Init(), 1);
        ASSERT_EQ(app.serviceConfig->DocumentAddress(), DocumentAddress(app.config->serverAddress));
    }

    // Where the service document of an account server is fetched from.
    static std::wstring DocumentAddress(const std::wstring& server) {
        return server + L"/2.0.0.0/Win%20PDF%20Editor/1.2.3/en-US/txdfApi.json";
    }

    // Serves a service document whose `url` object holds `urls`.
    void ServeServiceDocument(const std::map<std::string, std::string>& urls,
                              const std::wstring& server = kServer) {
        Json::Value document(Json::objectValue);
        for (const auto& [key, value] : urls)
            document["url"][key] = value;
        document["size"] = static_cast<int>(urls.size());
        document["dsvConfig"] = Json::Value(Json::objectValue);
        platform.httpBodies[DocumentAddress(server)] = WriteJson(document);
    }

    // Sends a "base" command with an identifier and returns the parsed reply.
    Json::Value Call(const std::string& command) {
        endpoint.replies.clear();
        channel.OnWebMessage(R"(["base",")" + command + R"(","{}","acc-1"])");
        Json::Value reply;
        if (endpoint.replies.size() == 1)
            ParseJson(endpoint.replies[0], reply);
        return reply;
    }

    FakeHost host;
    FakePlatform platform;
    Brevan app;
    RecordingEndpoint endpoint;
    WebMessageChannel channel{app.commands(), endpoint};
};
