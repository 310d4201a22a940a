// The account commands with the plug-in in pdfhost: the local account behind the "login" table,
// the service document and the token service on a local HTTP server, the account lines of
// scripted mode, and the usage file.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bridge/json_text.h"
#include "local_http_server.h"
#include "plugin_host_fixture.h"
#include "util/utf.h"

namespace {

constexpr const char* kDocumentPath = "/2.0.0.0/Win%20PDF%20Editor/1.0.0/en-US/txdfApi.json";

Json::Value Parsed(const std::string& text) {
    Json::Value value;
    ParseJson(text, value);
    return value;
}

std::string TextOfFile(const std::filesystem::path& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

class AccountInHostTest : public PluginHostTest {
  protected:
    AccountInHostTest() : service_([this](const HttpRequestSeen& seen) { return Answer(seen); }) {
        server = ToUtf8(service_.Url(""));
        Json::Value document(Json::objectValue);
        document["url"]["qvd_domain"] = server;
        document["url"]["qvd_brevan_user_jwt"] = server + "/jwt?token=%s&extra=%s";
        document["size"] = 2;
        document["dsvConfig"] = Json::Value(Json::objectValue);
        document_ = WriteJson(document);
        // The local account is signed in to the local server when the host starts.
        std::ofstream(profile / "account.json")
            << R"({"signedIn": true, "server": ")" << server << R"("})";
    }

    std::string StoredToken() {
        return Parsed(TextOfFile(profile / "account.json"))["tokens"][server].asString();
    }

    std::string server;

  private:
    HttpAnswer Answer(const HttpRequestSeen& seen) const {
        HttpAnswer answer;
        if (seen.target == kDocumentPath) {
            answer.body = document_;
        } else if (seen.target.starts_with("/jwt?token=")) {
            const std::string token = seen.target.substr(11, seen.target.find('&') - 11);
            answer.body = R"({"ret":0,"data":{"jwtResult":"jwt-)" + token + "\"}}";
        } else {
            answer.status = 404;
        }
        return answer;
    }

    std::string document_;
    LocalHttpServer service_;
};

TEST_F(AccountInHostTest, GetUserFollowsTheAccountAndSignOutReachesThePage) {
    Start();
    Json::Value reply = Call("getUser");
    ASSERT_EQ(reply["ret"], 0) << WriteJson(reply);
    EXPECT_EQ(reply["data"]["info"]["username"], "LocalUser");
    EXPECT_EQ(reply["data"]["info"]["token"], StoredToken());
    EXPECT_EQ(Call("getUserJWT")["data"]["jwtResult"], "jwt-" + StoredToken());

    const std::vector<Json::Value> signOut = Line(Parsed(R"({"host":"signOut"})"));
    ASSERT_EQ(signOut.size(), 1u);
    EXPECT_EQ(signOut[0]["event"], " window.__dispatchEvent({\"name\":\"ev-user-sign-out\"}\n);");
    reply = Call("getUser");
    EXPECT_EQ(reply["ret"], 200003);
    EXPECT_EQ(reply["data"]["message"], "GetUserInfo error");
    EXPECT_EQ(reply["data"]["qvd_domain"], server);
    EXPECT_EQ(Call("getUserJWT")["ret"], 200002);

    Json::Value signIn = Parsed(R"({"host":"signIn"})");
    signIn["server"] = server;
    Line(signIn);
    EXPECT_EQ(Call("getUser")["ret"], 0);

    // The first load of this version went to the usage file, with the signed-in user.
    std::istringstream usage(TextOfFile(profile / "usage.jsonl"));
    std::string first, second;
    ASSERT_TRUE(std::getline(usage, first));
    EXPECT_FALSE(std::getline(usage, second));
    const Json::Value report = Parsed(first);
    EXPECT_EQ(report["name"], "Sable Mark Load");
    EXPECT_EQ(Parsed(report["details"].asString())["userID"], "local-user-1");
}

}  // namespace
