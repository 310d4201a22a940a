// A small HTTP/1.1 server on 127.0.0.1 and a free port, for tests of the HTTP client. Each
// connection is served on its own thread with one answer, then closed.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

struct HttpRequestSeen {
    std::string method;
    std::string target;
    std::map<std::string, std::string> headers;  // names in lower case
    std::string body;
};

struct HttpAnswer {
    int status = 200;
    std::string reason = "OK";
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    // Sends only this many bytes of the whole answer, then stays silent until the server stops.
    std::optional<std::size_t> stallAfter;
};

class LocalHttpServer {
  public:
    using Handler = std::function<HttpAnswer(const HttpRequestSeen&)>;

    explicit LocalHttpServer(Handler handler);
    ~LocalHttpServer();
    LocalHttpServer(const LocalHttpServer&) = delete;
    LocalHttpServer& operator=(const LocalHttpServer&) = delete;

    unsigned short port() const { return port_; }
    // "http://127.0.0.1:<port>" followed by `path`.
    std::wstring Url(const std::string& path) const;
    std::vector<HttpRequestSeen> Requests() const;

  private:
    void AcceptLoop();
    void Serve(int client);
    void WaitForStop();

    Handler handler_;
    int listener_ = -1;
    unsigned short port_ = 0;
    bool stopping_ = false;
    mutable std::mutex mutex_;
    std::condition_variable stopped_;
    std::vector<HttpRequestSeen> requests_;
    std::vector<std::thread> connections_;
    std::thread acceptor_;
};

// A free TCP port on 127.0.0.1 at the time of the call.
unsigned short FreeLocalPort();
