// A local account server for headless batches: on 127.0.0.1, at a free port, it publishes the
// service document that the plug-in asks for before it shows its page, and nothing else. It
// answers from a thread of its own, because the plug-in fetches the document with a blocking
// request on the thread that made this server.
#pragma once

#include <QByteArray>
#include <QThread>
#include <cstdint>
#include <string>

class QTcpServer;
class QTcpSocket;

namespace pdfhost {

class ServiceDocumentServer {
  public:
    // Starts listening; throws std::runtime_error when no port can be had.
    ServiceDocumentServer();
    ~ServiceDocumentServer();
    ServiceDocumentServer(const ServiceDocumentServer&) = delete;
    ServiceDocumentServer& operator=(const ServiceDocumentServer&) = delete;

    // "http://127.0.0.1:PORT".
    std::string Address() const;

  private:
    QThread thread_;
    QObject* context_ = new QObject;  // lives in `thread_`; deleted when it finishes
    QTcpServer* server_ = nullptr;    // lives in `thread_`; deleted there
    uint16_t port_ = 0;
};

}  // namespace pdfhost
