// The page channel of scripted mode. The plug-in finds it by name as the application property
// "pdfhost.pageChannel" and uses it without host headers: it listens to webMessageReceived and
// answers through postWebMessageAsString and executeScript, both of which come out as lines.
#pragma once

#include <QObject>
#include <QString>

namespace pdfhost {

class JsonLineWriter;

class AutomationChannel : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* kPropertyName = "pdfhost.pageChannel";

    explicit AutomationChannel(JsonLineWriter& out, QObject* parent = nullptr);

    // Makes the channel the application's page channel; Unpublish takes it back if it still is.
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
};

}  // namespace pdfhost
