// The load usage report: once per installed version, its arguments, and the details it carries.
#include "account/usage_report.h"
#include "account_fixture.h"

namespace {

class UsageReportTest : public AccountFixture {
  protected:
    std::wstring& StoredVersion() {
        return host.pluginSettings[{Brevan::kSettingsSection, L"bLoad"}];
    }
    Json::Value Details(const SystemFacts& facts) {
        return LoadUsageDetails(app.host(), app.signInTable(), app.serviceConfig.get(), facts);
    }
};

TEST_F(UsageReportTest, EachInstalledVersionIsReportedOnce) {
    Start();
    ASSERT_EQ(host.usageReports.size(), 1u);
    const FakeUsageReport& report = host.usageReports[0];
    EXPECT_EQ(report.name, L"Sable Mark Load");
    EXPECT_EQ(report.type, L"event");
    EXPECT_EQ(report.module, L"PDF Sable Mark");
    EXPECT_EQ(report.version, app.config->pluginVersion);
    EXPECT_EQ(report.extra1 + report.extra2, L"");
    EXPECT_TRUE(report.gapsNull);
    EXPECT_EQ(report.last, 0);
    EXPECT_EQ(StoredVersion(), app.config->pluginVersion);
    EXPECT_EQ(JsonOf(ToUtf8(report.details))["osLang"], SystemFacts::OfThisSystem().language);

    app.Unload();
    ASSERT_EQ(app.Init(), 1);
    EXPECT_EQ(host.usageReports.size(), 1u) << "the same version again";
    app.Unload();
    StoredVersion() = L"2025.9.0.0";
    ASSERT_EQ(app.Init(), 1);
    EXPECT_EQ(host.usageReports.size(), 2u);
}

TEST_F(UsageReportTest, DetailsNameTheHostTheSystemAndASignedInUser) {
    ServeServiceDocument({{"qvd_domain", "https://accounts.test"}});
    host.account.userId = L"u-7";
    Start();
    const SystemFacts facts{"Debian GNU/Linux 12", "de_DE"};
    EXPECT_EQ(Details(facts),
              JsonOf(R"({"appName":"FakeEditor","appType":"editor","appVersion":"1.2.3",
                  "os":"Win PDF Editor","osLang":"de_DE","osVersion":"Debian GNU/Linux 12"})"))
        << "without a token nobody is signed in";

    host.account.tokens[kServer] = L"tok";
    EXPECT_EQ(Details(facts)["userID"], "u-7");
    host.account.userId = L"";
    EXPECT_FALSE(Details(facts).isMember("userID"));
}

}  // namespace
