// What the plug-in does when the host's sign-in table reports another signed-in user.
#include "account_fixture.h"
#include "attached_plugin.h"
#include "fake_page_dialog.h"

namespace {

constexpr const wchar_t* kOtherServer = L"https://accounts-2.test";

class AccountChangeTest : public AccountFixture {
  protected:
    AccountChangeTest() {
        Start();
        app.paneDialogs[host.HostAppGetMainWindow()] = &pane;
    }
    ~AccountChangeTest() override { app.paneDialogs.clear(); }

    void Notify(const wchar_t* server) {
        ASSERT_NE(host.account.domainCallback, nullptr);
        log.clear();
        platform.httpRequests.clear();
        host.account.domainCallback(server);
    }

    std::vector<std::string> log;
    FakePageDialog pane{log, "pane"};
};

TEST_F(AccountChangeTest, SignOutEmptiesTheBaseAddressAndTellsThePage) {
    Notify(nullptr);
    EXPECT_EQ(app.config->serverAddress, kServer);
    EXPECT_TRUE(log.empty());

    Notify(L"");
    EXPECT_EQ(app.config->serverAddress, L"");
    EXPECT_EQ(log, std::vector<std::string>{
                       "pane CallScript __dispatchEvent {\"name\":\"ev-user-sign-out\"}\n"});
    EXPECT_TRUE(platform.httpRequests.empty());
}

TEST_F(AccountChangeTest, OnlyAnotherAccountMovesToTheNewAddressAndReloads) {
    host.account.tokens = {{kServer, L"same"}, {kOtherServer, L"same"}};
    Notify(kOtherServer);
    EXPECT_EQ(app.config->serverAddress, kServer);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(platform.httpRequests.empty());

    host.account.tokens[kOtherServer] = L"second";
    Notify(kOtherServer);
    EXPECT_EQ(app.config->serverAddress, kOtherServer);
    EXPECT_EQ(platform.httpRequests, std::vector<std::wstring>{DocumentAddress(kOtherServer)});
    EXPECT_EQ(log, std::vector<std::string>{"pane Reload 1"});

    // A failed token request, or no present address after a sign-out, counts as a change too.
    host.account.tokens.clear();
    Notify(kServer);
    EXPECT_EQ(app.config->serverAddress, kServer);
    Notify(L"");
    host.account.tokens = {{kServer, L"same"}};
    Notify(kServer);
    EXPECT_EQ(log, std::vector<std::string>{"pane Reload 1"});
}

TEST(AccountChangeRegistration, OnlyAHostWithTheTableIsAskedAndAGoneAppIsNotReached) {
    FakeHost host;
    AttachedPlugin(host).app.ImportTables();
    EXPECT_EQ(host.account.domainCallback, nullptr);
    host.loginTable = true;
    AttachedPlugin(host).app.ImportTables();  // the plug-in is gone at the end of the line
    ASSERT_NE(host.account.domainCallback, nullptr);
    host.account.domainCallback(L"");
}

}  // namespace
