#include "local_http_server.h"

#include <ws2tcpip.h>

namespace {

const std::map<int, std::string> kReasons = {
    {200, "OK"}, {204, "No Content"}, {302, "Found"}, {404, "Not Found"}};

}  // namespace

LocalHttpServer::LocalHttpServer() {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
    listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    int length = sizeof address;
    if (listener_ == INVALID_SOCKET ||
        bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, 8) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        if (listener_ != INVALID_SOCKET)
            closesocket(listener_);
        listener_ = INVALID_SOCKET;
        return;
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Run(); });
}

LocalHttpServer::~LocalHttpServer() {
    stopping_ = true;
    if (listener_ != INVALID_SOCKET)
        closesocket(listener_);
    if (thread_.joinable())
        thread_.join();
    WSACleanup();
}

void LocalHttpServer::Serve(const std::string& path, Answer answer) {
    const std::lock_guard<std::mutex> lock(mutex_);
    answers_[path] = std::move(answer);
}

std::wstring LocalHttpServer::Url(const std::string& path) const {
    const std::string url = "http://127.0.0.1:" + std::to_string(port_) + path;
    return std::wstring(url.begin(), url.end());
}

void LocalHttpServer::Run() {
    while (!stopping_) {
        const SOCKET client = accept(listener_, nullptr, nullptr);
        if (client == INVALID_SOCKET)
            return;
        Answer1(client);
        closesocket(client);
    }
}

void LocalHttpServer::Answer1(SOCKET client) {
    std::string request;
    char buffer[2048];
    while (request.find("\r\n\r\n") == std::string::npos) {
        const int received = recv(client, buffer, sizeof buffer, 0);
        if (received <= 0)
            return;
        request.append(buffer, static_cast<std::size_t>(received));
    }
    const std::size_t start = request.find(' ') + 1;
    const std::string path = request.substr(start, request.find(' ', start) - start);
    Answer answer{404, "", ""};
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (const auto it = answers_.find(path); it != answers_.end())
            answer = it->second;
    }
    std::string reply = "HTTP/1.1 " + std::to_string(answer.status) + " " +
                        (kReasons.contains(answer.status) ? kReasons.at(answer.status) : "Status") +
                        "\r\n" + answer.headers;
    if (answer.status != 204)
        reply += "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
    reply += "Connection: close\r\n\r\n" + answer.body;
    std::size_t sent = 0;
    while (sent < reply.size()) {
        const int written =
            send(client, reply.data() + sent, static_cast<int>(reply.size() - sent), 0);
        if (written <= 0)
            return;
        sent += static_cast<std::size_t>(written);
    }
}
