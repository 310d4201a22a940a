#include "curl_http.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <map>

#include "local_http_server.h"

namespace {

using Clock = std::chrono::steady_clock;

std::string Pattern(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        text[i] = static_cast<char>('a' + (i * 7) % 26);
    return text;
}

HttpAnswer Route(const HttpRequestSeen& request) {
    static const std::map<std::string, HttpAnswer> answers = {
        {"/ok", {200, "OK", {}, "{\"url\":\"https://page.example/\"}", {}}},
        {"/no-content", {204, "No Content", {}, "", {}}},
        {"/moved", {302, "Found", {{"Location", "/ok"}}, "moved", {}}},
        {"/empty", {200, "OK", {}, "", {}}},
        {"/two-kib", {200, "OK", {}, Pattern(2048), {}}},
        {"/silent", {200, "OK", {}, "", 0}},
        {"/half", {200, "OK", {}, Pattern(4000), 300}}};
    if (request.target == "/echo")
        return {200, "OK", {}, request.method + ":" + request.body, {}};
    const auto found = answers.find(request.target);
    return found != answers.end() ? found->second : HttpAnswer{404, "Not Found", {}, "missing", {}};
}

class CurlHttpTest : public ::testing::Test {
  protected:
    void SetUp() override { setenv("no_proxy", "127.0.0.1", 1); }

    LocalHttpServer server_{Route};
};

TEST_F(CurlHttpTest, OkWithBodyGivesTheBytesUnchanged) {
    std::string body;
    EXPECT_EQ(HttpGet(server_.Url("/ok"), body, {}), 0);
    EXPECT_EQ(body, "{\"url\":\"https://page.example/\"}");

    const auto requests = server_.Requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].method, "GET");
    EXPECT_EQ(requests[0].headers.at("user-agent"), "Tarvo Tethrix DRM Plug-in 1.0");
    EXPECT_EQ(requests[0].headers.at("pragma"), "no-cache");

    // A body of whole kibibytes arrives complete.
    EXPECT_EQ(HttpGet(server_.Url("/two-kib"), body, {}), 0);
    EXPECT_EQ(body, Pattern(2048));
}

TEST_F(CurlHttpTest, OnlyStatus200WithABodySucceeds) {
    for (const char* path : {"/no-content", "/moved", "/missing", "/empty"}) {
        std::string body = "untouched";
        EXPECT_EQ(HttpGet(server_.Url(path), body, {}), 3) << path;
        EXPECT_EQ(body, "untouched") << path;
    }

    // A redirect is not followed, and the body of an answer that failed is not kept.
    CurlHttp moved(server_.Url("/moved"), L"");
    EXPECT_FALSE(moved.Send());
    EXPECT_EQ(moved.Status(), 302);
    std::string body = "stale";
    moved.ReadBody(body);
    EXPECT_EQ(body, "");
    CurlHttp empty(server_.Url("/empty"), L"");
    EXPECT_TRUE(empty.Send());
    empty.ReadBody(body);
    EXPECT_EQ(body, "");
}

TEST_F(CurlHttpTest, SilentServerFailsAfterAboutTwoSeconds) {
    for (const char* path : {"/silent", "/half"}) {
        const auto start = Clock::now();
        std::string body;
        EXPECT_EQ(HttpGet(server_.Url(path), body, {}), 3) << path;
        const auto took = Clock::now() - start;
        EXPECT_GE(took, std::chrono::milliseconds(1900)) << path;
        EXPECT_LT(took, std::chrono::milliseconds(4500)) << path;
        EXPECT_EQ(body, "") << path;
    }
}

TEST_F(CurlHttpTest, HeadersAgentAndBodyReachTheServer) {
    CurlHttp http(server_.Url("/echo"), L"Agent/2");
    EXPECT_TRUE(http.AddHeaders(L"X-One: 1\r\nX-Two: zwei\r\n"));
    EXPECT_FALSE(http.AddHeaders(L"no colon here"));
    ASSERT_TRUE(http.Send("payload"));
    std::string body;
    http.ReadBody(body);
    EXPECT_EQ(body, "GET:payload");
    EXPECT_FALSE(http.Send()) << "an object serves one request";

    const HttpRequestSeen seen = server_.Requests().at(0);
    EXPECT_EQ(seen.headers.at("x-one"), "1");
    EXPECT_EQ(seen.headers.at("x-two"), "zwei");
    EXPECT_EQ(seen.headers.at("user-agent"), "Agent/2");
    EXPECT_EQ(seen.headers.count("content-type"), 0u);
}

TEST(CurlHttpAddress, AddressThatCannotBeCrackedFailsEveryStep) {
    CurlHttp http(L"ftp://127.0.0.1/file", L"");
    EXPECT_FALSE(http.AddHeaders(L"X-One: 1"));
    EXPECT_FALSE(http.Send());
    EXPECT_EQ(http.Status(), 0);
    std::string body;
    EXPECT_EQ(HttpGet(L"not an address", body, {}), 3);
}

}  // namespace
