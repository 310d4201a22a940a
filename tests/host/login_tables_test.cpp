// The "login" extension table over the local account, the sign-in window and the account lines
// of scripted mode.
#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost {
namespace {

using hostops::ExtOp;
using enum hostops::Op;
using testing::Call;
using testing::WideText;

// Calls function `op` of the "login" table as a plug-in does: found by name, version and index.
template <ExtOp op, typename... Args>
auto CallLogin(Args... args) {
    using Traits = hostops::ExtOpTraits<op>;
    const HostExtTable table = Call<HostExtensionFind>("login", 103);
    const HostFunction fn = Call<HostExtensionGetFunction>(table, Traits::index);
    EXPECT_NE(fn, nullptr) << Traits::name;
    return reinterpret_cast<typename Traits::Fn*>(fn)(args...);
}

// A host wide string that goes with the scope.
class Wide {
  public:
    Wide() : handle_(Call<HostWideStringNew>()) {}
    ~Wide() { Call<HostWideStringDelete>(handle_); }
    Wide(const Wide&) = delete;
    Wide& operator=(const Wide&) = delete;
    HostWideString get() const { return handle_; }
    std::wstring Text() const { return WideText(handle_); }

  private:
    HostWideString handle_;
};

std::vector<std::wstring> g_heard;
void Hear(const wchar_t* server) {
    g_heard.emplace_back(server);
}

// The token and the table's result.
std::pair<std::wstring, int> Token(const wchar_t* server) {
    Wide token;
    const int result = CallLogin<ExtOp::LoginGetToken>(server, L"", token.get());
    return {token.Text(), result};
}

class LoginTablesTest : public testing::HostFixture {
  protected:
    LoginTablesTest() {
        g_heard.clear();
        CallLogin<ExtOp::LoginRegisterDomainCallback>(&Hear);
    }
};

TEST_F(LoginTablesTest, TheAccountAnswersWhileSignedInAndKeepsItsTokens) {
    EXPECT_EQ(CallLogin<ExtOp::LoginGetState>(L""), 2) << "headless starts signed in";
    const auto [first, result] = Token(L"https://a.test");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(first.size(), 32u);
    EXPECT_EQ(Token(L"https://a.test").first, first);
    EXPECT_NE(Token(L"https://b.test").first, first);
    Wide email, id, firstName, lastName;
    EXPECT_EQ(CallLogin<ExtOp::LoginGetUserInfo>(L"", email.get(), id.get(), firstName.get(),
                                                 lastName.get()),
              1);
    EXPECT_EQ(id.Text(), L"local-user-1");

    app_.Account().SignIn("https://a.test");
    app_.Account().SignOut();
    Wide server, last;
    CallLogin<ExtOp::LoginGetServerAddress>(server.get());
    CallLogin<ExtOp::LoginGetServerAddressFallback>(last.get());
    EXPECT_EQ(server.Text(), L"");
    EXPECT_EQ(last.Text(), L"https://a.test") << "the last server is remembered";
    EXPECT_EQ(CallLogin<ExtOp::LoginGetState>(L""), 0);
    EXPECT_EQ(Token(L"https://a.test"), std::make_pair(std::wstring(), 0));
    EXPECT_EQ(CallLogin<ExtOp::LoginGetUserInfo>(L"", email.get(), id.get(), firstName.get(),
                                                 lastName.get()),
              0);
    EXPECT_EQ(id.Text(), L"");

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
    CallLogin<ExtOp::LoginRegisterDomainCallback>(&Hear);
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
    testing::Scripted script(app_);
    ScriptSession& session = script.session;
    session.HandleLine(R"({"host":"signIn","server":"https://d.test"})");
    session.HandleLine(R"({"host":"signOut"})");
    session.HandleLine(R"({"host":"signIn","server":5})");
    EXPECT_EQ(CallLogin<ExtOp::LoginShowSignIn>(L"", 0), 0);
    EXPECT_EQ(CallLogin<ExtOp::LoginGetState>(L""), 0);
    session.HandleLine(R"({"host":"answer","dialog":"signIn","value":true})");
    EXPECT_EQ(CallLogin<ExtOp::LoginShowSignIn>(L"", 0), 1);
    EXPECT_EQ(CallLogin<ExtOp::LoginGetState>(L""), 2);
    EXPECT_EQ(g_heard, (std::vector<std::wstring>{L"https://d.test", L"", L"https://d.test"}));

    const std::vector<Json::Value> lines = script.Take();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(lines[0].isMember("error")) << "a server that is no text";
    EXPECT_EQ(testing::Compact(lines[1]),
              R"({"answer":false,"dialog":"signIn","server":"https://d.test"})");
    EXPECT_EQ(lines[2]["unanswered"], "signIn");
    EXPECT_EQ(lines[3]["answer"], true);
}

}  // namespace
}  // namespace pdfhost
