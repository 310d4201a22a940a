// A page channel of scripted mode. The plug-in finds it by name as an application property
// ("pdfhost.pageChannel" for the task pane's page, "pdfhost.batchPageChannel" for the batch
// page) and uses it without host headers: it listens to webMessageReceived and answers through
// postWebMessageAsString and executeScript, both of which come out as lines.
#pragma once

#include <QObject>
#include <QString>

namespace pdfhost {

class JsonLineWriter;

class AutomationChannel : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* kPropertyName = "pdfhost.pageChannel";
    static constexpr const char* kBatchPropertyName = "pdfhost.batchPageChannel";

    explicit AutomationChannel(JsonLineWriter& out, const char* propertyName = kPropertyName,
                               QObject* parent = nullptr);

    // Publishes the channel as its application property; Unpublish takes it back if it still is.
    void Publish();
    void Unpublish();

    // The page posts a message.
    void Post(const QString& text) { emit webMessageReceived(text); }

    // Prints {"reply": text}.
    Q_INVOKABLE void postWebMessageAsString(const QString& text);
    // Prints {"event": script}.
    Q_INVOKABLE void executeScript(const QString& script);

  signals:
    void webMessageReceived(const QString& text);

  private:
    JsonLineWriter& out_;
    const char* propertyName_;
};

}  // namespace pdfhost
