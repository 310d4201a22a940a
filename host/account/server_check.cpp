#include "account/server_check.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QUrl>
#include <memory>

namespace pdfhost {

std::string AccountServerProblem(const std::string& address, std::chrono::milliseconds timeout) {
    const QString text = QString::fromStdString(address);
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() ||
        (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https"))) {
        return QObject::tr(
                   "\"%1\" is not the address of a server: it begins with http:// or "
                   "https:// and names the server.")
            .arg(text)
            .toStdString();
    }
    QNetworkAccessManager network;
    QNetworkRequest request(url);
    request.setTransferTimeout(static_cast<int>(timeout.count()));
    const std::unique_ptr<QNetworkReply> reply(network.get(request));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    // Any status, even "not found", shows that a web server is there.
    if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
        return {};
    return QObject::tr("The server %1 does not answer (%2). Check its address.")
        .arg(text, reply->errorString())
        .toStdString();
}

}  // namespace pdfhost
