// TLS against a throw-away server with a self-signed certificate made by the openssl tool.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <arpa/inet.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "curl_download.h"
#include "curl_http.h"
#include "local_http_server.h"

namespace {

namespace fs = std::filesystem;

bool CanConnect(unsigned short port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool connected =
        ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
    ::close(fd);
    return connected;
}

// `openssl s_server -WWW` serving the files of a temporary folder over TLS.
class SelfSignedServer {
  public:
    SelfSignedServer() {
        if (std::system("openssl version > /dev/null 2>&1") != 0)
            return;
        folder_ = fs::temp_directory_path() / ("curl_tls_test_" + std::to_string(::getpid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        const std::string make = "cd '" + folder_.string() +
                                 "' && openssl req -x509 -newkey rsa:2048 -nodes -days 1 "
                                 "-subj /CN=127.0.0.1 -keyout key.pem -out cert.pem "
                                 "> /dev/null 2>&1";
        if (std::system(make.c_str()) != 0)
            return;
        std::ofstream(folder_ / "hello.txt") << "hello over tls";
        port_ = FreeLocalPort();
        pid_ = ::fork();
        if (pid_ == 0) {
            if (::chdir(folder_.c_str()) != 0)
                ::_exit(127);
            const std::string accept = "127.0.0.1:" + std::to_string(port_);
            ::execlp("openssl", "openssl", "s_server", "-quiet", "-accept", accept.c_str(), "-cert",
                     "cert.pem", "-key", "key.pem", "-WWW", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        for (int i = 0; i < 100 && !CanConnect(port_); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        ready_ = CanConnect(port_);
    }
    ~SelfSignedServer() {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
        }
        if (!folder_.empty())
            fs::remove_all(folder_);
    }

    bool ready() const { return ready_; }
    std::wstring Url(const std::string& scheme, const std::string& path) const {
        const std::string url = scheme + "://127.0.0.1:" + std::to_string(port_) + path;
        return std::wstring(url.begin(), url.end());
    }
    const fs::path& folder() const { return folder_; }

  private:
    fs::path folder_;
    unsigned short port_ = 0;
    pid_t pid_ = -1;
    bool ready_ = false;
};

class IgnoredProgress : public DownloadProgress {
  public:
    void OnProgress(unsigned long, unsigned long, int) override {}
};

class CurlTlsTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        setenv("no_proxy", "127.0.0.1", 1);
        server_ = new SelfSignedServer;
    }
    static void TearDownTestSuite() {
        delete server_;
        server_ = nullptr;
    }
    void SetUp() override {
        if (!server_->ready())
            GTEST_SKIP() << "openssl is not installed or its test server did not start; "
                            "TLS is not tested";
    }

    static SelfSignedServer* server_;
};

SelfSignedServer* CurlTlsTest::server_ = nullptr;

TEST_F(CurlTlsTest, SelfSignedCertificateFailsUnlessVerificationIsOff) {
    std::string body;
    EXPECT_EQ(HttpGet(server_->Url("https", "/hello.txt"), body, {}), 3);
    EXPECT_EQ(body, "");

    const HttpSettings lenient{.verifyCertificates = false};
    EXPECT_EQ(HttpGet(server_->Url("HTTPS", "/hello.txt"), body, lenient), 0);
    EXPECT_EQ(body, "hello over tls");
}

TEST_F(CurlTlsTest, DownloadFollowsTheSameCertificateRule) {
    IgnoredProgress progress;
    const fs::path target = server_->folder() / "copy.txt";
    EXPECT_FALSE(
        DownloadUrlToFile(server_->Url("https", "/hello.txt"), target.wstring(), progress, {}));
    EXPECT_FALSE(fs::exists(target));
    EXPECT_TRUE(DownloadUrlToFile(server_->Url("https", "/hello.txt"), target.wstring(), progress,
                                  {.verifyCertificates = false}));
    std::ifstream in(target);
    std::string text;
    std::getline(in, text);
    EXPECT_EQ(text, "hello over tls");
}

}  // namespace
