#include "automation/automation_channel.h"

#include <QCoreApplication>
#include <QVariant>

#include "automation/json_line_writer.h"

namespace pdfhost {

AutomationChannel::AutomationChannel(JsonLineWriter& out, const char* propertyName, QObject* parent)
    : QObject(parent), out_(out), propertyName_(propertyName) {}

void AutomationChannel::Publish() {
    qApp->setProperty(propertyName_, QVariant::fromValue<QObject*>(this));
}

void AutomationChannel::Unpublish() {
    if (qApp == nullptr)
        return;
    if (qApp->property(propertyName_).value<QObject*>() == this) {
        qApp->setProperty(propertyName_, QVariant());
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
