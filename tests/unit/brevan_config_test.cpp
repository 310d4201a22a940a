// The developers' configuration file and the environment values.
#include <gtest/gtest.h>

#include <fstream>

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

TEST_F(BrevanConfigTest, BooleanKeyOfAnotherTypeStopsTheStartNamingTheKey) {
    for (const char* key :
         {"logger_output", "batchdlg_show", "preproduction_env", "insecure_tls"}) {
        WriteConfig(std::string("{\"") + key + "\": \"yes\"}");
        try {
            Make();
            ADD_FAILURE() << key << " was accepted";
        } catch (const ConfigError& e) {
            EXPECT_EQ(e.key(), key);
            EXPECT_NE(std::string(e.what()).find(key), std::string::npos);
        }
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
