#include "automation/file_list_answer.h"

#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>

#include "dialog_answers.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "fileList";

}  // namespace

Json::Value FileListRows(QDialog& dialog, int* totalPages) {
    Json::Value rows(Json::arrayValue);
    *totalPages = 0;
    const auto* list = Control<QTreeWidget>(dialog, "IDC_LIST_MUTILFILES");
    if (list == nullptr)
        return rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = list->topLevelItem(i);
        Json::Value row(Json::objectValue);
        row["name"] = item->text(0).toStdString();
        row["folder"] = item->text(1).toStdString();
        const QString errorKey = item->data(4, Qt::UserRole).toString();
        if (errorKey.isEmpty()) {
            const int pages = item->data(2, Qt::UserRole).toInt();
            row["pages"] = pages;
            row["error"] = "";
            *totalPages += pages;
        } else {
            row["error"] = item->text(4).toStdString();
            row["errorKey"] = errorKey.toStdString();
        }
        rows.append(row);
    }
    return rows;
}

void AnswerFileList(QDialog& dialog, DialogAnswers& answers, const LineSink& sink,
                    const std::function<void()>& afterOptions) {
    const std::optional<Json::Value> queued = answers.Take(kKind);
    const std::optional<QStringList> paths =
        queued.has_value() ? StringList(*queued) : std::nullopt;
    if (paths.has_value()) {
        // Returns once every added row is checked.
        QMetaObject::invokeMethod(&dialog, "addPaths", Qt::DirectConnection,
                                  Q_ARG(QStringList, *paths));
    }
    Json::Value line = DialogLine(kKind, dialog);
    line["answer"] = AnswerOrNull(queued);
    int totalPages = 0;
    line["rows"] = FileListRows(dialog, &totalPages);
    line["totalPages"] = totalPages;
    sink(line);
    if (!queued.has_value())
        sink(UnansweredLine(kKind));

    QPointer<QDialog> alive(&dialog);
    if (paths.has_value() && answers.Pending("options") > 0) {
        if (auto* options = Control<QPushButton>(dialog, "IDC_OPTIONS")) {
            options->click();
            afterOptions();
        }
    }
    if (!alive || !alive->isVisible())
        return;
    auto* ok = Control<QPushButton>(*alive, "IDOK");
    if (paths.has_value() && ok != nullptr && ok->isEnabled())
        ok->click();
    // Still open: the user did not go on (or could not), and nobody is left to answer.
    if (alive && alive->isVisible())
        alive->reject();
}

}  // namespace pdfhost
