#include "service_document_server.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <stdexcept>

#include <json/value.h>
#include <json/writer.h>

namespace pdfhost {
namespace {

constexpr const char* kDocumentName = "txdfApi.json";
// A request line and headers larger than this are not a plug-in's request.
constexpr qsizetype kMaxRequest = 16 * 1024;

QByteArray Response(int status, const char* reason, const QByteArray& body) {
    QByteArray response = "HTTP/1.1 " + QByteArray::number(status) + " " + reason + "\r\n";
    response += "Content-Type: application/json\r\nConnection: close\r\n";
    response += "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n";
    return response + body;
}

QByteArray ServiceDocument(const std::string& address) {
    Json::Value document(Json::objectValue);
    // The page's address comes from the plug-in's configuration; the template only has to be
    // there. The account domain is this server.
    document["url"]["qvd_brevan_plugin_domain"] = "http://127.0.0.1/page?platform=%s";
    document["url"]["qvd_domain"] = address;
    document["size"] = 2;
    document["dsvConfig"] = Json::Value(Json::objectValue);
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return QByteArray::fromStdString(Json::writeString(builder, document));
}

void Serve(QTcpSocket* socket, const QByteArray& document) {
    QByteArray request = socket->property("request").toByteArray() + socket->readAll();
    if (request.size() > kMaxRequest) {
        socket->abort();
        return;
    }
    if (!request.contains("\r\n\r\n")) {
        socket->setProperty("request", request);
        return;
    }
    // "GET /path HTTP/1.1": the document is served at any path that ends in its name.
    const QList<QByteArray> words = request.left(request.indexOf("\r\n")).split(' ');
    QByteArray path = words.size() >= 2 ? words[1] : QByteArray();
    path = path.left(path.indexOf('?') >= 0 ? path.indexOf('?') : path.size());
    const bool found = words.value(0) == "GET" && path.endsWith(QByteArray("/") + kDocumentName);
    socket->write(found ? Response(200, "OK", document) : Response(404, "Not Found", {}));
    socket->disconnectFromHost();
}

}  // namespace

ServiceDocumentServer::ServiceDocumentServer() {
    context_->moveToThread(&thread_);
    QObject::connect(&thread_, &QThread::finished, context_, &QObject::deleteLater);
    thread_.start();
    QString error;
    // The server is made, listens and serves in its own thread.
    QMetaObject::invokeMethod(
        context_,
        [this, &error] {
            auto* server = new QTcpServer;
            if (!server->listen(QHostAddress::LocalHost, 0)) {
                error = server->errorString();
                delete server;
                return;
            }
            server_ = server;
            port_ = server->serverPort();
            const QByteArray document = ServiceDocument(Address());
            QObject::connect(server, &QTcpServer::newConnection, server, [server, document] {
                while (QTcpSocket* socket = server->nextPendingConnection()) {
                    QObject::connect(socket, &QTcpSocket::disconnected, socket,
                                     &QObject::deleteLater);
                    QObject::connect(socket, &QTcpSocket::readyRead, socket,
                                     [socket, document] { Serve(socket, document); });
                }
            });
        },
        Qt::BlockingQueuedConnection);
    if (server_ == nullptr) {
        thread_.quit();
        thread_.wait();
        throw std::runtime_error("cannot start the local account server: " + error.toStdString());
    }
}

ServiceDocumentServer::~ServiceDocumentServer() {
    QMetaObject::invokeMethod(
        context_, [this] { delete server_; }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

std::string ServiceDocumentServer::Address() const {
    return "http://127.0.0.1:" + std::to_string(port_);
}

}  // namespace pdfhost
