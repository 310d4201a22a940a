// The account commands: their order of checks, their codes and the keys of their replies.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "account/url_template.h"
#include "account_fixture.h"
#include "logging/async_logger.h"

namespace {

constexpr const char* kDomain = "https://accounts.test";
constexpr const wchar_t* kJwtUrl = L"https://tokens.test/jwt?t=tok-123&s=";

class SignInCommandsTest : public AccountFixture {
  protected:
    void StartSignedIn() {
        Start();
        host.account.signedIn = true;
        host.account.tokens = {{kServer, L"tok-123"}};
        host.account.email = L"ada@example.test";
        host.account.userId = L"u-7";
        host.account.firstName = L"Ada";
        host.account.lastName = L"Lovelace";
    }
    void ServeFullDocument(const std::wstring& server = kServer) {
        ServeServiceDocument(
            {{"qvd_domain", kDomain}, {"qvd_brevan_user_jwt", "https://tokens.test/jwt?t=%s&s=%s"}},
            server);
    }
    // The whole reply of an account command with this code and data.
    static Json::Value Reply(int ret, const std::string& data) {
        return JsonOf(R"({"data":)" + data + R"(,"ret":)" + std::to_string(ret) +
                      R"(,"uuid":"acc-1"})");
    }
    Json::Value JwtReplyFor(const std::string& body) {
        platform.httpBodies[kJwtUrl] = body;
        return Call("getUserJWT");
    }
};

TEST_F(SignInCommandsTest, LoginInAnswersByTheStateAfterTheSignInWindow) {
    Start();
    host.account.stateRequests.clear();
    EXPECT_EQ(Call("loginIn"), Reply(200001, "null"));
    EXPECT_TRUE(host.account.stateRequests.empty()) << "a cancelled window ends the command";

    host.account.signInAnswer = 1;
    host.account.signInSignsIn = false;
    EXPECT_EQ(Call("loginIn")["ret"], 200001);
    EXPECT_EQ(host.account.stateRequests, std::vector<std::wstring>{kServer});
    host.account.signInSignsIn = true;
    EXPECT_EQ(Call("loginIn"), Reply(0, "null"));
}

TEST_F(SignInCommandsTest, WithoutTheLoginTableEachCommandGivesItsOwnCode) {
    host.loginTable = false;
    Start();
    ServeFullDocument(deployment::kProductionServer);
    host.account.signInAnswer = 1;
    EXPECT_EQ(Call("loginIn")["ret"], 200001);
    EXPECT_EQ(Call("getUser")["ret"], 200003);
    EXPECT_EQ(Call("getUserJWT")["ret"], 200002);
}

TEST_F(SignInCommandsTest, GetUserJoinsTheNamesAndKeepsAnEmptyTenantAsText) {
    StartSignedIn();
    ServeFullDocument();
    EXPECT_EQ(Call("getUser")["data"]["info"],
              JsonOf(R"({"email":"ada@example.test","enterpriseTenantID":"","firstname":"Ada",
                         "lastname":"Lovelace","token":"tok-123","userid":"u-7",
                         "username":"AdaLovelace"})"));
    host.preferences[{L"TXDFServer", L"EnterpriseTenantID"}] = L"tenant-9";
    EXPECT_EQ(Call("getUser")["data"]["info"]["enterpriseTenantID"], "tenant-9");
}

TEST_F(SignInCommandsTest, GetUserChecksServerThenUserThenToken) {
    StartSignedIn();
    EXPECT_EQ(Call("getUser"), Reply(200004, R"({"qvd_domain":""})")) << "no service document";
    ServeServiceDocument({{"other", "x"}});
    EXPECT_EQ(Call("getUser")["ret"], 200004) << "no qvd_domain in the document";

    ServeFullDocument();
    app.serviceConfig->Load();
    host.account.hasUser = false;
    host.account.tokenRequests.clear();
    EXPECT_EQ(
        Call("getUser"),
        Reply(200003, R"({"message":"GetUserInfo error","qvd_domain":"https://accounts.test"})"));
    EXPECT_TRUE(host.account.tokenRequests.empty());

    host.account.hasUser = true;
    host.account.tokens.clear();
    EXPECT_EQ(Call("getUser"), Reply(200002, R"({"qvd_domain":"https://accounts.test"})"));
}

TEST_F(SignInCommandsTest, GetUserJwtFailsInTheOrderOfItsSteps) {
    StartSignedIn();
    EXPECT_EQ(Call("getUserJWT"), Reply(200004, R"({"qvd_domain":""})"));
    ServeServiceDocument({{"qvd_domain", kDomain}});
    host.account.tokens.clear();
    EXPECT_EQ(Call("getUserJWT"),
              Reply(200002, R"({"message":"get Token result is empty","qvd_domain":""})"));

    host.account.tokens[kServer] = L"tok-123";
    const Json::Value reply = Call("getUserJWT");
    EXPECT_EQ(reply["ret"], 200006);
    EXPECT_EQ(reply["data"]["message"], "get qvd_brevan_user_jwt from webservice error");

    ServeFullDocument();
    app.serviceConfig->Load();
    EXPECT_EQ(Call("getUserJWT"),
              Reply(200005, R"({"url":"https://tokens.test/jwt?t=tok-123&s="})"))
        << "the token service did not answer";
    EXPECT_EQ(JwtReplyFor("<html>busy</html>"), Reply(100001, "null"));

    EXPECT_EQ(JwtReplyFor(R"({"ret":0,"data":{"jwtResult":"jwt-abc"}})")["data"],
              JsonOf(R"({"jwtResult":"jwt-abc"})"));
    EXPECT_TRUE(platform.lastHttpSettings.verifyCertificates);
}

TEST_F(SignInCommandsTest, GetUserJwtEchoesEveryUnusableAnswerWhole) {
    StartSignedIn();
    ServeFullDocument();
    for (const std::string body :
         {R"({"data":{"jwtResult":""},"ret":0})", R"({"data":{"jwtResult":"jwt"},"ret":"0"})",
          R"({"data":{"jwtResult":"jwt"},"ret":0.0})", R"({"data":"jwt","ret":0})", "[0]",
          "null"}) {
        const Json::Value reply = JwtReplyFor(body);
        EXPECT_EQ(reply["ret"], 100002) << body;
        EXPECT_EQ(reply["data"]["url"], "https://tokens.test/jwt?t=tok-123&s=") << body;
        EXPECT_EQ(reply["data"]["jwtResult"], WriteJson(JsonOf(body))) << body;
    }
}

TEST_F(SignInCommandsTest, TheLogShowsOnlyTheStartOfTheToken) {
    const auto folder =
        std::filesystem::path(testing::TempDir()) / ("jwt-log-" + std::to_string(::getpid()));
    AsyncLogger& logger = AsyncLogger::Instance();
    StartSignedIn();  // without logger_output: the logger drops what it held
    ServeFullDocument();
    logger.Start(folder.string(), 30, kLogInfo, 30);
    JwtReplyFor(R"({"ret":0,"data":{"jwtResult":"jwt-abc"}})");
    logger.Stop();

    std::string log;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path());
        log.append(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    std::filesystem::remove_all(folder);
    EXPECT_NE(log.find("Get GetUserEmailAndToken : tokentok-...  "), std::string::npos) << log;
    EXPECT_EQ(log.find("tok-123"), std::string::npos) << log;
}

TEST(UrlTemplate, FillsTextPlaceholdersInOrderAndNothingElse) {
    EXPECT_EQ(FillTemplate(L"a=%s&b=%ls&c=%S", {L"x", L"y"}), L"a=x&b=y&c=");
    EXPECT_EQ(FillTemplate(L"100%%/%d%n%", {L"x"}), L"100%/%d%n%");
}

}  // namespace
