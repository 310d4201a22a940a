// The developers' configuration file and the environment values.
#include <gtest/gtest.h>

#include <fstream>

#include "attached_plugin.h"
#include "config/brevan_config.h"
#include "fake_host.h"
#include "util/utf.h"

namespace {

class BrevanConfigTest : public testing::Test {
  protected:
    void WriteConfig(const std::string& text) {
        const auto folder = host.userData / ToUtf8(deployment::kServiceFolder);
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "brevan.config") << text;
    }
    std::unique_ptr<BrevanConfig> Make() {
        HostExtTable login = host.HostExtensionFind("login", 103);
        return std::make_unique<BrevanConfig>(host, login, L"/plugins/x.tpi");
    }
    FakeHost host;
};

TEST_F(BrevanConfigTest, WithoutFileTheFolderIsMadeAndEveryHandleGoesWithTheConfig) {
    auto config = Make();
    EXPECT_TRUE(std::filesystem::is_directory(ToUtf8(config->serviceFolder())));
    EXPECT_EQ(host.liveResources, 1);
    config.reset();
    EXPECT_EQ(host.liveResources, 0);
    EXPECT_EQ(host.liveStrings, 0);
}

TEST_F(BrevanConfigTest, ValuesOfTheFileAndTheirTypes) {
    WriteConfig(R"({
        // comments are allowed
        "logger_output": true, "logger_path": "/var/log/b", "logger_size": 5,
        "batchdlg_show": true, "custom_url": "https://page.example/x", "insecure_tls": true})");
    auto config = Make();
    EXPECT_TRUE(config->loggerOutput);
    EXPECT_TRUE(config->batchDlgShow);
    EXPECT_TRUE(config->insecureTls);
    EXPECT_EQ(config->loggerPath, L"/var/log/b");
    EXPECT_EQ(config->loggerSize, 5);
    std::wstring url = L"unchanged";
    config->GetCustomUrl(url);
    EXPECT_EQ(url, L"https://page.example/x");
}

TEST_F(BrevanConfigTest, MismatchedTypesOfTextAndNumberKeysKeepTheDefaults) {
    WriteConfig(R"({"logger_size": "12", "logger_path": 7, "custom_url": "", "logger_output": null,
                    "batchdlg_show": 1.5})");
    auto config = Make();
    EXPECT_EQ(config->loggerSize, 30);
    EXPECT_EQ(config->loggerPath, L"");
    EXPECT_FALSE(config->loggerOutput);
    EXPECT_FALSE(config->batchDlgShow);
    std::wstring url = L"unchanged";
    config->GetCustomUrl(url);
    EXPECT_EQ(url, L"unchanged");
}

// A boolean key of another type stops this plug-in's start with a message naming the key; the
// host goes on and nothing stays registered.
TEST_F(BrevanConfigTest, BooleanKeyOfAnotherTypeRefusesTheStartNamingTheKey) {
    for (const char* key :
         {"logger_output", "batchdlg_show", "preproduction_env", "insecure_tls"}) {
        WriteConfig(std::string("{\"") + key + "\": \"yes\"}");
        AttachedPlugin attached(host);
        Brevan& app = attached.app;
        app.ImportTables();
        EXPECT_EQ(app.Init(), 0) << key;
        ASSERT_FALSE(host.messages.empty()) << key;
        EXPECT_NE(host.messages.back().find(FromUtf8(key)), std::wstring::npos) << key;
        EXPECT_TRUE(host.docEventRecords.empty()) << key;
        EXPECT_FALSE(app.config) << key;
    }
    WriteConfig(R"({"debug_console_output": "never read"})");
    EXPECT_NO_THROW(Make());
}

TEST_F(BrevanConfigTest, BrokenFileLeavesTheDefaults) {
    WriteConfig("{ this is not json");
    auto config = Make();
    EXPECT_FALSE(config->loggerOutput);
    EXPECT_EQ(config->loggerSize, 30);
}

TEST_F(BrevanConfigTest, PreproductionFollowsTheServer) {
    WriteConfig(R"({"preproduction_env": true})");
    host.loginTable = true;
    host.loginServer = L"https://staging.example";
    auto config = Make();
    EXPECT_EQ(config->serverAddress, L"https://staging.example");
    EXPECT_TRUE(config->preproduction);
    config->SetServerAddress(deployment::kSecondServer);
    EXPECT_FALSE(config->preproduction);
    config->SetServerAddress(L"");  // signed out
    EXPECT_EQ(config->serverAddress, L"");
    EXPECT_TRUE(config->preproduction);
    host.loginServer = L"";
    EXPECT_EQ(config->GetServerAddressFromLogin(), deployment::kProductionServer);
}

}  // namespace
