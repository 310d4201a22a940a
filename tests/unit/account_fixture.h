// A plug-in on a FakeHost that offers the "login" table, started by the test once the fake
// platform serves the service document.
#pragma once

#include <map>
#include <string>

#include "config/brevan_config.h"
#include "config/service_config.h"
#include "plugin_fixture.h"

class AccountFixture : public PluginFixture {
  protected:
    static constexpr const wchar_t* kServer = L"https://accounts.test";

    AccountFixture()
        : PluginFixture(
              [](FakeHost& fake) {
                  fake.loginTable = true;
                  fake.loginServer = kServer;
              },
              false) {}

    void Start() {
        PluginFixture::Start();
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

    Json::Value Call(const std::string& command) {
        return PluginFixture::Call(command, "{}", "acc-1");
    }
};
