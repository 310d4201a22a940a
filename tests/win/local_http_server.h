// A small HTTP server on the loopback address for tests of the system's HTTP clients: each path
// has a scripted answer, served once per connection, the connection closed after it.
#pragma once

#include <winsock2.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>

class LocalHttpServer {
  public:
    struct Answer {
        int status = 200;
        std::string body;
        std::string headers;  // extra "Name: value\r\n" lines
    };

    LocalHttpServer();
    // Stops serving and joins the server's thread.
    ~LocalHttpServer();
    LocalHttpServer(const LocalHttpServer&) = delete;
    LocalHttpServer& operator=(const LocalHttpServer&) = delete;

    void Serve(const std::string& path, Answer answer);
    // "http://127.0.0.1:PORT" + path.
    std::wstring Url(const std::string& path) const;
    bool IsListening() const { return listener_ != INVALID_SOCKET; }

  private:
    void Run();
    void Answer1(SOCKET client);

    SOCKET listener_ = INVALID_SOCKET;
    unsigned short port_ = 0;
    std::mutex mutex_;
    std::map<std::string, Answer> answers_;
    std::atomic<bool> stopping_{false};
    std::thread thread_;
};
