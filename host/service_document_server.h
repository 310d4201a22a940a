// A local account server for headless batches: on 127.0.0.1, at a free port, it publishes the
// service document that the plug-in asks for before it shows its page, and nothing else.
#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <string>

namespace pdfhost {

class ServiceDocumentServer : public QObject {
    Q_OBJECT

  public:
    // Starts listening; throws std::runtime_error when no port can be had.
    ServiceDocumentServer();

    // "http://127.0.0.1:PORT".
    std::string Address() const;

  private:
    void Serve(QTcpSocket* socket);

    QTcpServer server_;
    QByteArray document_;
};

}  // namespace pdfhost
