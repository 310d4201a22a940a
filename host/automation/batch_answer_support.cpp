#include "automation/batch_answer_support.h"

#include <QTreeWidget>

namespace pdfhost {

Json::Value DialogLine(const char* kind, const QDialog& dialog) {
    Json::Value line(Json::objectValue);
    line["dialog"] = kind;
    line["title"] = dialog.windowTitle().toStdString();
    return line;
}

Json::Value UnansweredLine(const char* kind) {
    Json::Value line(Json::objectValue);
    line["unanswered"] = kind;
    return line;
}

QStringList ColumnTexts(const QTreeWidget& tree, int column) {
    QStringList texts;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        texts.append(tree.topLevelItem(i)->text(column));
    return texts;
}

std::optional<QStringList> StringList(const Json::Value& value) {
    if (!value.isArray())
        return std::nullopt;
    QStringList list;
    for (const Json::Value& item : value) {
        if (!item.isString())
            return std::nullopt;
        list.append(QString::fromStdString(item.asString()));
    }
    return list;
}

}  // namespace pdfhost
