// winsock2.h must come before windows.h
#include "local_http_server.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "system_paths.h"
#include "url_download.h"
#include "winhttp_request.h"

namespace {

class RecordedProgress final : public DownloadProgress {
  public:
    void OnProgress(unsigned long progress, unsigned long, int status) override {
        statuses.push_back(status);
        last = progress;
    }
    std::vector<int> statuses;
    unsigned long last = 0;
};

std::string Pattern(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        text[i] = static_cast<char>('a' + i % 26);
    return text;
}

std::string ReadFile(const std::wstring& path) {
    std::ifstream file(path.c_str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(WinHttpGetTest, OnlyATwoHundredWithABodyCountsAndNothingToReachFails) {
    LocalHttpServer server;
    ASSERT_TRUE(server.IsListening());
    const struct {
        const char* path;
        LocalHttpServer::Answer answer;
        int code;
    } cases[] = {
        {"/doc", {200, "{\"url\":{}}", ""}, 0},
        // The whole body, whatever its length against the read block.
        {"/block", {200, Pattern(1024), ""}, 0},
        {"/long", {200, Pattern(5000), ""}, 0},
        {"/empty", {200, "", ""}, 3},
        {"/none", {204, "", ""}, 3},
        {"/moved", {302, "", "Location: /doc\r\n"}, 3},
        {"/missing", {404, "not here", ""}, 3},
    };
    for (const auto& c : cases)
        server.Serve(c.path, c.answer);
    for (const auto& c : cases) {
        std::string body = "before";
        EXPECT_EQ(WinHttpGet(server.Url(c.path), body, HttpSettings{}), c.code) << c.path;
        EXPECT_EQ(body, c.code == 0 ? c.answer.body : std::string("before")) << c.path;
    }
    // Nothing to reach: the failure code, the body untouched, and a request that cannot be sent.
    for (const wchar_t* url : {L"", L"ftp://example.org/x", L"http://", L"http://127.0.0.1:1/x"}) {
        std::string body = "kept";
        EXPECT_EQ(WinHttpGet(url, body, HttpSettings{}), 3);
        EXPECT_EQ(body, "kept");
        EXPECT_FALSE(WinHttpRequest(url, L"", HttpSettings{}).Send());
    }
}

TEST(UrlDownloadTest, AWholeBodyLandsInTheFileWithItsStatusesAndAFailedOneLeavesNone) {
    LocalHttpServer server;
    ASSERT_TRUE(server.IsListening());
    const std::string body = Pattern(70000);
    server.Serve("/file.pdf", {200, body, "Content-Type: application/pdf\r\n"});
    server.Serve("/gone.pdf", {404, "no", ""});
    const std::wstring target = SystemTempFolder() + L"winlayer-download-ok.pdf";
    DeleteFileW(target.c_str());

    RecordedProgress progress;
    ASSERT_TRUE(DownloadUrlToFile(server.Url("/file.pdf"), target, progress));
    EXPECT_EQ(ReadFile(target), body);
    ASSERT_FALSE(progress.statuses.empty());
    EXPECT_EQ(progress.statuses.front(), 4);
    EXPECT_EQ(progress.statuses.back(), 6);
    EXPECT_EQ(progress.last, body.size());
    DeleteFileW(target.c_str());

    // A failed download leaves no file, whatever failed.
    for (const std::wstring& url :
         {server.Url("/gone.pdf"), L"file:///" + SystemTempFolder() + L"no-such-file-here.pdf",
          std::wstring(L"http://127.0.0.1:1/file.pdf"), std::wstring(L"not a url")}) {
        RecordedProgress failed;
        EXPECT_FALSE(DownloadUrlToFile(url, target, failed));
        EXPECT_EQ(GetFileAttributesW(target.c_str()), INVALID_FILE_ATTRIBUTES);
        for (const int status : failed.statuses)
            EXPECT_TRUE(status >= 4 && status <= 6) << status;
    }
}

}  // namespace
