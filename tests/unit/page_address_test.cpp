// The page's address and the service document it is built from: the acceptance rules of the
// document, every placeholder and appended parameter, and the developers' overrides.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "config/brevan_config.h"
#include "config/internet_connection.h"
#include "config/page_address.h"
#include "config/service_config.h"
#include "fake_host.h"
#include "plugin_fixture.h"

namespace {

const HostTheme kTheme = reinterpret_cast<HostTheme>(0x7e);

class ThemedHost : public FakeHost {
  public:
    HostTheme HostThemeGetCurrent() override { return kTheme; }
    uint32_t HostThemeGetColor(HostTheme theme, const wchar_t* name, int) override {
        colourNames.emplace_back(name);
        return theme == kTheme ? accent : 0xFFFFFFFFu;
    }

    uint32_t accent = 0x00336699;
    std::vector<std::wstring> colourNames;
};

class PageAddressTest : public PluginFixtureOf<ThemedHost> {
  protected:
    PageAddressTest() {
        documentAddress = app.serviceConfig->DocumentAddress();
        platform.httpRequests.clear();  // what the start asked of the service is not counted
    }

    // The service document with these `url` members, its `size` right and `dsvConfig` set.
    void Publish(const std::string& urlMembers, int memberCount) {
        platform.httpBodies[documentAddress] = "{\"url\":{" + urlMembers +
                                               "},\"size\":" + std::to_string(memberCount) +
                                               ",\"dsvConfig\":{\"on\":true}}";
    }

    std::wstring Build(PageDialogKind kind = PageDialogKind::TaskPane) {
        std::wstring url = L"unchanged";
        BuildPageUrl(app.host(), app.config.get(), app.serviceConfig.get(), app.accountPage, kind,
                     url);
        return url;
    }

    long Fetches() const {
        return std::count(platform.httpRequests.begin(), platform.httpRequests.end(),
                          documentAddress);
    }

    std::wstring documentAddress;
};

// The parameters every load appends, for the fixture's host.
const std::wstring kTail = L"&pluginversion=2026.1.0.0&ThemeColor=336699&isChannelPackage=false";

TEST_F(PageAddressTest, AnAcceptedDocumentIsFetchedOnceAndAnswersItsKeys) {
    Publish(R"("qvd_brevan_domain":"https://svc.example","qvd_brevan_aig":7)", 2);
    ServiceConfig& service = *app.serviceConfig;
    std::wstring value = L"before";
    EXPECT_EQ(service.GetValue(ServiceConfig::kServiceDomain, value), ServiceConfig::kFound);
    EXPECT_EQ(value, L"https://svc.example");
    EXPECT_EQ(service.GetValue(ServiceConfig::kEngine, value), ServiceConfig::kFound);
    EXPECT_EQ(value, L"7");
    value = L"before";
    EXPECT_EQ(service.GetValue(ServiceConfig::kEngineKey, value), ServiceConfig::kMissing);
    EXPECT_EQ(value, L"before");
    EXPECT_EQ(Fetches(), 1);

    // A forced load fetches again, for a new account server.
    EXPECT_EQ(service.Load(), 0);
    EXPECT_EQ(Fetches(), 2);
}

TEST_F(PageAddressTest, ARefusedOrMissingDocumentIsFetchedAgainAtEveryNeed) {
    ServiceConfig& service = *app.serviceConfig;
    std::wstring value = L"before";
    // No answer from the server: its status.
    EXPECT_EQ(service.GetValue(ServiceConfig::kServiceDomain, value), 3);
    // Not JSON, or not an object; a size that doesn't count the members; a missing or null
    // dsvConfig.
    for (const char* body :
         {"<html>maintenance</html>", "[1,2]",
          R"({"url":{"qvd_brevan_domain":"d","qvd_brevan_aig":"e"},"size":3,"dsvConfig":{}})",
          R"({"url":{"qvd_brevan_domain":"d"},"size":"1","dsvConfig":{}})",
          R"({"url":{"qvd_brevan_domain":"d"},"size":1})",
          R"({"url":{"qvd_brevan_domain":"d"},"size":1,"dsvConfig":null})"}) {
        platform.httpBodies[documentAddress] = body;
        EXPECT_EQ(service.GetValue(ServiceConfig::kServiceDomain, value),
                  ServiceConfig::kNotAccepted)
            << body;
    }
    EXPECT_EQ(service.entries().size(), 1u);  // the last document's, kept though not accepted
    EXPECT_EQ(value, L"before");
    EXPECT_FALSE(service.loaded());
    EXPECT_EQ(Fetches(), 7);
}

// Every placeholder is filled, a missing value falls back to the account server or to empty,
// text without "=%s" is left alone while the later steps still run, and the tail is appended.
TEST_F(PageAddressTest, TemplatesAreFilledAndTheTailIsAppended) {
    const std::wstring server = app.config->serverAddress;
    const struct {
        const char* members;
        int count;
        bool preproduction;
        std::wstring expected;
    } cases[] = {
        {R"("qvd_brevan_plugin_domain":"https://page.example/app?platform=%s&version=%s)"
         R"(&language=%s&ai_domain=%s&ai_engine=%s&ai_key=%s",)"
         R"("qvd_brevan_domain":"https://svc.example","qvd_brevan_aig":"https://aig.example",)"
         R"("qvd_brevan_aig_key":"k-1")",
         4, false,
         L"https://page.example/app?platform=Win%20PDF%20Editor&version=1.2.3"
         L"&language=en-US&ai_domain=https://svc.example&ai_engine=https://aig.example&ai_key=k-1"},
        {R"("qvd_brevan_plugin_domain":"https://p/?ai_key=%s&ai_domain=%s&ai_engine=%s")", 1, false,
         L"https://p/?ai_key=&ai_domain=" + server + L"&ai_engine="},
        // "version=%s" twice is filled twice; a name that merely ends like a key is filled too.
        {R"("qvd_brevan_plugin_domain":"https://p/platform/x?version=%s&v2=1&version=%s)"
         R"(&ai_domain&myai_key=%s")",
         1, false, L"https://p/platform/x?version=1.2.3&v2=1&version=1.2.3&ai_domain&myai_key="},
        {R"("qvd_brevan_plugin_domain":"https://live/?",)"
         R"("qvd_brevan_plugin_domain_preproduction":"https://pre/?")",
         2, true, L"https://pre/?"},
        {R"("qvd_brevan_plugin_domain":"https://live/?",)"
         R"("qvd_brevan_plugin_domain_preproduction":"https://pre/?")",
         2, false, L"https://live/?"},
    };
    for (const auto& c : cases) {
        Publish(c.members, c.count);
        app.serviceConfig->Load();
        app.config->preproduction = c.preproduction;
        EXPECT_EQ(Build(), c.expected + kTail) << c.members;
    }
    EXPECT_EQ(host.colourNames.at(0), L"Accent_color");
}

TEST_F(PageAddressTest, FilledTextIsNotSearchedAgain) {
    std::wstring url = L"a=%s&a=%s";
    EXPECT_TRUE(FillPlaceholder(url, L"a", L"a=%s"));
    EXPECT_EQ(url, L"a=a=%s&a=a=%s");
    EXPECT_FALSE(FillPlaceholder(url, L"b", L"x"));
    EXPECT_EQ(url, L"a=a=%s&a=a=%s");
}

TEST_F(PageAddressTest, TheDialogDecidesTheBatchParametersAndTheAccountPage) {
    Publish(R"("qvd_brevan_plugin_domain":"https://p/?x=1")", 1);
    host.channelPackage = true;
    host.accent = 0xFF0000FF;  // only the lower 24 bits count
    app.accountPage = true;
    const std::wstring tail = L"&pluginversion=2026.1.0.0&ThemeColor=0000ff";
    EXPECT_EQ(Build(PageDialogKind::TaskPane),
              L"https://p/?x=1" + tail + L"&isChannelPackage=true&defaultPage=MyPlan");
    EXPECT_EQ(Build(PageDialogKind::Batch), L"https://p/?x=1" + tail +
                                                L"&batchRedaction=true&theme=win_native" +
                                                L"&isChannelPackage=true");
    app.accountPage = false;
    EXPECT_EQ(Build(PageDialogKind::TaskPane),
              L"https://p/?x=1" + tail + L"&isChannelPackage=true");
}

TEST_F(PageAddressTest, ACustomUrlReplacesEverythingButOnlyOnceATemplateWasHad) {
    app.config->root["custom_url"] = "file:///work/web/index.html";
    EXPECT_EQ(Build(), L"unchanged");  // no document: the address stays as it was
    Publish(R"("qvd_brevan_plugin_domain":"https://p/?language=%s")", 1);
    EXPECT_EQ(Build(), L"file:///work/web/index.html");
    app.config->root["custom_url"] = "";
    EXPECT_EQ(Build(), L"https://p/?language=en-US" + kTail);
}

TEST_F(PageAddressTest, TheDevelopersFileMayFixTheAnswerOfTheConnectivityTest) {
    // The platform's answer, the developers' value (null: none), what counts.
    const std::tuple<bool, Json::Value, bool> cases[] = {
        {false, Json::Value(), false}, {true, Json::Value(), true}, {true, false, false},
        {false, true, true},           {false, "yes", false},       {true, "yes", true}};
    for (const auto& [connected, fixed, expected] : cases) {
        platform.connected = connected;
        if (!fixed.isNull())
            app.config->root[kInternetConnectionKey] = fixed;
        EXPECT_EQ(IsConnectedToInternet(app.config.get(), platform), expected)
            << connected << " " << WriteJson(fixed);
    }
}

}  // namespace
