#include "host_page_connection.h"

#include <QCoreApplication>
#include <QVariant>

namespace {

constexpr const char* kChannelProperty = "pdfhost.pageChannel";
constexpr const char* kBatchChannelProperty = "pdfhost.batchPageChannel";

QObject* ChannelOf(const char* property) {
    QCoreApplication* app = QCoreApplication::instance();
    return app != nullptr ? app->property(property).value<QObject*>() : nullptr;
}

}  // namespace

QObject* HostPageConnection::FindHostChannel() {
    return ChannelOf(kChannelProperty);
}

QObject* HostPageConnection::FindBatchChannel() {
    return ChannelOf(kBatchChannelProperty);
}

HostPageConnection::HostPageConnection(QObject* channel) : channel_(channel) {
    connect(channel, SIGNAL(webMessageReceived(QString)), this, SLOT(onWebMessageReceived(QString)),
            Qt::DirectConnection);
}

void HostPageConnection::PostWebMessageAsString(const std::wstring& text) {
    if (channel_) {
        QMetaObject::invokeMethod(channel_, "postWebMessageAsString", Qt::DirectConnection,
                                  Q_ARG(QString, QString::fromStdWString(text)));
    }
}

void HostPageConnection::ExecuteScript(const std::wstring& script) {
    if (channel_) {
        QMetaObject::invokeMethod(channel_, "executeScript", Qt::DirectConnection,
                                  Q_ARG(QString, QString::fromStdWString(script)));
    }
}

void HostPageConnection::onWebMessageReceived(const QString& text) {
    if (!handler_)
        return;
    const QByteArray utf8 = text.toUtf8();
    handler_(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
}
