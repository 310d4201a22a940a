// The "login" extension table over the local account, the sign-in window and the account lines
// of scripted mode.
#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

using hostops::ExtOp;

std::vector<std::wstring> g_heard;
void Hear(const wchar_t* server) {
    g_heard.emplace_back(server);
}

// The token and the table's result.
std::pair<std::wstring, int> Token(const wchar_t* server) {
    int result = -1;
    const std::wstring token = ReadWide(
        [&](HostWideString out) { result = CallExt<ExtOp::LoginGetToken>(server, L"", out); });
    return {token, result};
}

// The user's id, written over a left-over text, and the table's result.
std::pair<std::wstring, int> UserId() {
    int result = -1;
    const std::wstring id = ReadWide(
        [&](HostWideString id) {
            const HostWideString other = Call<HostWideStringNew>();
            result = CallExt<ExtOp::LoginGetUserInfo>(L"", other, id, other, other);
            Call<HostWideStringDelete>(other);
        },
        L"left over");
    return {id, result};
}

class LoginTablesTest : public HostFixture {
  protected:
    LoginTablesTest() {
        g_heard.clear();
        CallExt<ExtOp::LoginRegisterDomainCallback>(&Hear);
    }
};

TEST_F(LoginTablesTest, TheAccountAnswersWhileSignedInAndKeepsItsTokens) {
    EXPECT_EQ(CallExt<ExtOp::LoginGetState>(L""), 2) << "headless starts signed in";
    const auto [first, result] = Token(L"https://a.test");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(first.size(), 32u);
    EXPECT_EQ(Token(L"https://a.test").first, first);
    EXPECT_NE(Token(L"https://b.test").first, first);
    EXPECT_EQ(UserId(), std::make_pair(std::wstring(L"local-user-1"), 1));

    app_.Account().SignIn("https://a.test");
    app_.Account().SignOut();
    EXPECT_EQ(ReadWide([](HostWideString s) { CallExt<ExtOp::LoginGetServerAddress>(s); }), L"");
    EXPECT_EQ(ReadWide([](HostWideString s) { CallExt<ExtOp::LoginGetServerAddressFallback>(s); }),
              L"https://a.test")
        << "the last server is remembered";
    EXPECT_EQ(CallExt<ExtOp::LoginGetState>(L""), 0);
    EXPECT_EQ(Token(L"https://a.test"), std::make_pair(std::wstring(), 0));
    EXPECT_EQ(UserId(), std::make_pair(std::wstring(), 0));

    // The desktop keeps the account file's state; the command line overrides it.
    HostOptions desktop = Options();
    desktop.headless = false;
    AccountService again(app_.Account().Local().File(), desktop);
    EXPECT_FALSE(again.Local().SignedIn());
    again.SignIn("");
    EXPECT_EQ(again.Local().TokenFor("https://a.test"), std::string(first.begin(), first.end()));
    desktop.signedIn = false;
    EXPECT_FALSE(AccountService(again.Local().File(), desktop).Local().SignedIn());
    // Naming the server on the command line keeps the state: signed out stays signed out.
    desktop.accountServer = "http://127.0.0.1:8";
    const AccountService named(again.Local().File(), desktop);
    EXPECT_FALSE(named.Local().SignedIn());
    EXPECT_EQ(named.Local().Server(), "http://127.0.0.1:8");
}

TEST_F(LoginTablesTest, DomainCallbacksHearEveryChangeUntilThePluginGoes) {
    CallExt<ExtOp::LoginRegisterDomainCallback>(&Hear);
    app_.Account().SignIn("");
    EXPECT_TRUE(g_heard.empty()) << "no server to name";
    app_.Account().SignIn("https://c.test");
    app_.Account().SignOut();
    app_.Account().SignIn("");
    EXPECT_EQ(g_heard, (std::vector<std::wstring>{L"https://c.test", L"", L"https://c.test"}));

    app_.Account().RemovePlugin(TableManager::CallingPlugin());
    app_.Account().SignOut();
    EXPECT_EQ(g_heard.size(), 3u);
}

TEST_F(LoginTablesTest, TheSignInWindowAndTheScriptedLinesTakeTheirAnswers) {
    Scripted script(app_);
    ScriptSession& session = script.session;
    session.HandleLine(R"({"host":"signIn","server":"https://d.test"})");
    session.HandleLine(R"({"host":"signOut"})");
    session.HandleLine(R"({"host":"signIn","server":5})");
    EXPECT_EQ(CallExt<ExtOp::LoginShowSignIn>(L"", 0), 0);
    EXPECT_EQ(CallExt<ExtOp::LoginGetState>(L""), 0);
    session.HandleLine(R"({"host":"answer","dialog":"signIn","value":true})");
    EXPECT_EQ(CallExt<ExtOp::LoginShowSignIn>(L"", 0), 1);
    EXPECT_EQ(CallExt<ExtOp::LoginGetState>(L""), 2);
    EXPECT_EQ(g_heard, (std::vector<std::wstring>{L"https://d.test", L"", L"https://d.test"}));

    const std::vector<Json::Value> lines = script.Take();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(lines[0].isMember("error")) << "a server that is no text";
    EXPECT_EQ(Compact(lines[1]), R"({"answer":false,"dialog":"signIn","server":"https://d.test"})");
    EXPECT_EQ(lines[2]["unanswered"], "signIn");
    EXPECT_EQ(lines[3]["answer"], true);
}

}  // namespace
}  // namespace pdfhost::testing
