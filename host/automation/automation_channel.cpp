#include "automation/automation_channel.h"

#include <QCoreApplication>
#include <QVariant>

#include "automation/json_line_writer.h"

namespace pdfhost {

AutomationChannel::AutomationChannel(JsonLineWriter& out, QObject* parent)
    : QObject(parent), out_(out) {}

void AutomationChannel::Publish() {
    qApp->setProperty(kPropertyName, QVariant::fromValue<QObject*>(this));
}

void AutomationChannel::Unpublish() {
    if (qApp == nullptr)
        return;
    if (qApp->property(kPropertyName).value<QObject*>() == this) {
        qApp->setProperty(kPropertyName, QVariant());
    }
}

void AutomationChannel::postWebMessageAsString(const QString& text) {
    Json::Value line(Json::objectValue);
    line["reply"] = text.toStdString();
    out_.Write(line);
}

void AutomationChannel::executeScript(const QString& script) {
    Json::Value line(Json::objectValue);
    line["event"] = script.toStdString();
    out_.Write(line);
}

}  // namespace pdfhost
