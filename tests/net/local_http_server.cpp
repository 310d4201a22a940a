#include "local_http_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <stdexcept>

namespace {

int ListenOnLoopback(unsigned short& port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        throw std::runtime_error("socket failed");
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    if (::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
        ::listen(fd, 16) != 0 ||
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        ::close(fd);
        throw std::runtime_error("cannot listen on 127.0.0.1");
    }
    port = ntohs(address.sin_port);
    return fd;
}

bool SendAll(int fd, const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t n = ::send(fd, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        sent += static_cast<std::size_t>(n);
    }
    return true;
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// Reads the request head and, when it names a length, its body.
bool ReadRequest(int fd, HttpRequestSeen& request) {
    std::string data;
    char buffer[4096];
    std::size_t headEnd = std::string::npos;
    while ((headEnd = data.find("\r\n\r\n")) == std::string::npos) {
        const ssize_t n = ::recv(fd, buffer, sizeof(buffer), 0);
        if (n <= 0)
            return false;
        data.append(buffer, static_cast<std::size_t>(n));
    }
    const std::string head = data.substr(0, headEnd);
    std::size_t lineEnd = head.find("\r\n");
    const std::string requestLine = head.substr(0, lineEnd);
    const std::size_t space1 = requestLine.find(' ');
    const std::size_t space2 = requestLine.find(' ', space1 + 1);
    request.method = requestLine.substr(0, space1);
    request.target = requestLine.substr(space1 + 1, space2 - space1 - 1);
    while (lineEnd != std::string::npos && lineEnd < head.size()) {
        const std::size_t next = head.find("\r\n", lineEnd + 2);
        const std::string line = head.substr(lineEnd + 2, next - lineEnd - 2);
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos) {
            std::string value = line.substr(colon + 1);
            value.erase(0, value.find_first_not_of(' '));
            request.headers[Lower(line.substr(0, colon))] = value;
        }
        lineEnd = next;
    }
    request.body = data.substr(headEnd + 4);
    const auto length = request.headers.find("content-length");
    const std::size_t wanted = length == request.headers.end() ? 0 : std::stoul(length->second);
    while (request.body.size() < wanted) {
        const ssize_t n = ::recv(fd, buffer, sizeof(buffer), 0);
        if (n <= 0)
            return false;
        request.body.append(buffer, static_cast<std::size_t>(n));
    }
    return true;
}

std::string Format(const HttpAnswer& answer) {
    std::string text = "HTTP/1.1 " + std::to_string(answer.status) + " " + answer.reason + "\r\n";
    bool hasLength = false;
    for (const auto& [name, value] : answer.headers) {
        text += name + ": " + value + "\r\n";
        hasLength = hasLength || Lower(name) == "content-length";
    }
    if (!hasLength && answer.status != 204)
        text += "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
    text += "Connection: close\r\n\r\n";
    return text + answer.body;
}

}  // namespace

LocalHttpServer::LocalHttpServer(Handler handler) : handler_(std::move(handler)) {
    listener_ = ListenOnLoopback(port_);
    acceptor_ = std::thread([this] { AcceptLoop(); });
}

LocalHttpServer::~LocalHttpServer() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    stopped_.notify_all();
    acceptor_.join();
    for (std::thread& connection : connections_)
        connection.join();
    ::close(listener_);
}

std::wstring LocalHttpServer::Url(const std::string& path) const {
    const std::string url = "http://127.0.0.1:" + std::to_string(port_) + path;
    return std::wstring(url.begin(), url.end());
}

std::vector<HttpRequestSeen> LocalHttpServer::Requests() const {
    std::lock_guard lock(mutex_);
    return requests_;
}

void LocalHttpServer::AcceptLoop() {
    for (;;) {
        {
            std::lock_guard lock(mutex_);
            if (stopping_)
                return;
        }
        pollfd waiting{listener_, POLLIN, 0};
        if (::poll(&waiting, 1, 20) <= 0)
            continue;
        const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            continue;
        std::lock_guard lock(mutex_);
        connections_.emplace_back([this, client] { Serve(client); });
    }
}

void LocalHttpServer::Serve(int client) {
    HttpRequestSeen request;
    if (ReadRequest(client, request)) {
        {
            std::lock_guard lock(mutex_);
            requests_.push_back(request);
        }
        const HttpAnswer answer = handler_(request);
        const std::string bytes = Format(answer);
        if (answer.stallAfter) {
            SendAll(client, bytes.substr(0, std::min(*answer.stallAfter, bytes.size())));
            WaitForStop();
        } else {
            SendAll(client, bytes);
        }
    }
    ::close(client);
}

void LocalHttpServer::WaitForStop() {
    std::unique_lock lock(mutex_);
    stopped_.wait_for(lock, std::chrono::seconds(30), [this] { return stopping_; });
}

unsigned short FreeLocalPort() {
    unsigned short port = 0;
    ::close(ListenOnLoopback(port));
    return port;
}
