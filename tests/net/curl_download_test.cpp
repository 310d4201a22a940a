#include "curl_download.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "local_http_server.h"

namespace {

namespace fs = std::filesystem;

struct Report {
    unsigned long progress;
    unsigned long maximum;
    int status;
};

class RecordedProgress : public DownloadProgress {
  public:
    void OnProgress(unsigned long progress, unsigned long maximum, int status) override {
        reports.push_back({progress, maximum, status});
    }
    std::vector<Report> reports;
};

std::string Bytes(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>((i * 131 + i / 251) & 0xFF);
    return bytes;
}

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> FolderEntries(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    return names;
}

constexpr std::size_t kFileSize = 700 * 1024 + 17;

HttpAnswer Route(const HttpRequestSeen& request) {
    if (request.target == "/file.pdf")
        return {200, "OK", {}, Bytes(kFileSize), {}};
    if (request.target == "/stalls.pdf")
        return {200, "OK", {}, Bytes(kFileSize), 100 * 1024};
    return {404, "Not Found", {}, "missing", {}};
}

class CurlDownloadTest : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("no_proxy", "127.0.0.1", 1);
        folder_ = fs::temp_directory_path() /
                  ("curl_download_test_" + std::to_string(::getpid()) + "_" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        target_ = folder_ / "download.pdf";
    }
    void TearDown() override { fs::remove_all(folder_); }

    bool Download(const std::string& path) {
        return DownloadUrlToFile(server_.Url(path), target_.wstring(), progress_, {});
    }

    LocalHttpServer server_{Route};
    RecordedProgress progress_;
    fs::path folder_;
    fs::path target_;
};

TEST_F(CurlDownloadTest, WritesTheExactBytesAndReportsBeginDataEnd) {
    ASSERT_TRUE(Download("/file.pdf"));
    EXPECT_EQ(ReadAll(target_), Bytes(kFileSize));
    EXPECT_EQ(FolderEntries(folder_), std::vector<std::string>{"download.pdf"});

    const auto& reports = progress_.reports;
    ASSERT_GE(reports.size(), 3u);
    EXPECT_EQ(reports.front().status, 4);
    EXPECT_EQ(reports.front().progress, 0u);
    EXPECT_EQ(reports.back().status, 6);
    EXPECT_EQ(reports.back().progress, kFileSize);
    unsigned long last = 0;
    for (std::size_t i = 1; i + 1 < reports.size(); ++i) {
        EXPECT_EQ(reports[i].status, 5);
        EXPECT_EQ(reports[i].maximum, kFileSize);
        EXPECT_GT(reports[i].progress, last);
        last = reports[i].progress;
    }
    EXPECT_EQ(last, kFileSize);
}

TEST_F(CurlDownloadTest, FailureLeavesNoFileAtTheTarget) {
    { std::ofstream(target_) << "an older copy"; }
    EXPECT_FALSE(Download("/missing.pdf"));
    EXPECT_TRUE(FolderEntries(folder_).empty());
    for (const Report& report : progress_.reports)
        EXPECT_NE(report.status, 6);
}

TEST_F(CurlDownloadTest, StalledBodyFailsInAboutTwoSecondsAndLeavesNothing) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Download("/stalls.pdf"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4500));
    EXPECT_TRUE(FolderEntries(folder_).empty());
    ASSERT_FALSE(progress_.reports.empty());
    EXPECT_EQ(progress_.reports.front().status, 4);
    EXPECT_NE(progress_.reports.back().status, 6);
}

TEST_F(CurlDownloadTest, MissingFolderFailsWithoutARequest) {
    target_ = folder_ / "absent" / "download.pdf";
    EXPECT_FALSE(Download("/file.pdf"));
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_TRUE(server_.Requests().empty());
}

}  // namespace
