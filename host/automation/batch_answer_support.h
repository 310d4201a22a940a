// What the answers to the batch dialogs share: finding controls by object name, the lines they
// print, and reading the rows of a tree list.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include <json/value.h>

class QTreeWidget;

namespace pdfhost {

using LineSink = std::function<void(const Json::Value& line)>;

// The child of `dialog` named `name` with type T, or null.
template <typename T>
T* Control(QDialog& dialog, const char* name) {
    return dialog.findChild<T*>(QString::fromLatin1(name));
}

// {"dialog": kind, "title": <the window title>}, to be completed by the answer.
Json::Value DialogLine(const char* kind, const QDialog& dialog);
// {"unanswered": kind}.
Json::Value UnansweredLine(const char* kind);

// The answer, or null when none was queued.
inline Json::Value AnswerOrNull(const std::optional<Json::Value>& queued) {
    return queued.has_value() ? *queued : Json::Value();
}

// The texts of column `column` of the top-level items of `tree`.
QStringList ColumnTexts(const QTreeWidget& tree, int column);

// The strings of a JSON array of strings, or nothing for any other value.
std::optional<QStringList> StringList(const Json::Value& value);

}  // namespace pdfhost
