// HostPageConnection: the page channel that pdfhost offers in its scripted mode, reached by name
// through the application object's property "pdfhost.pageChannel". The page's posts arrive through
// the channel's signal webMessageReceived(QString); replies and event scripts go back through its
// invokable methods postWebMessageAsString(QString) and executeScript(QString).
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include "app/platform_services.h"

class HostPageConnection final : public QObject, public PageConnection {
    Q_OBJECT

  public:
    // The channel the host published, or null.
    static QObject* FindHostChannel();
    // The channel the host published for the batch page ("pdfhost.batchPageChannel"), or null.
    static QObject* FindBatchChannel();

    explicit HostPageConnection(QObject* channel);

    void SetMessageHandler(MessageHandler handler) override { handler_ = std::move(handler); }
    void PostWebMessageAsString(const std::wstring& text) override;
    void ExecuteScript(const std::wstring& script) override;

  private slots:
    void onWebMessageReceived(const QString& text);

  private:
    QPointer<QObject> channel_;
    MessageHandler handler_;
};
