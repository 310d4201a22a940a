#include "automation/overwrite_answer.h"

#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>

#include "dialog_answers.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "overwrite";

}  // namespace

void AnswerOverwrite(QDialog& dialog, DialogAnswers& answers, const LineSink& sink) {
    const std::optional<Json::Value> queued = answers.Take(kKind);
    Json::Value line = DialogLine(kKind, dialog);
    line["answer"] = AnswerOrNull(queued);
    Json::Value files(Json::arrayValue);
    if (const auto* tree = Control<QTreeWidget>(dialog, "IDC_TREE_FILE")) {
        for (const QString& path : ColumnTexts(*tree, 0))
            files.append(path.toStdString());
    }
    line["files"] = files;
    sink(line);
    if (!queued.has_value())
        sink(UnansweredLine(kKind));

    QPointer<QDialog> alive(&dialog);
    const bool goOn = queued.has_value() && queued->isBool() && queued->asBool();
    if (goOn) {
        if (auto* ok = Control<QPushButton>(dialog, "IDOK"))
            ok->click();
    }
    if (alive && alive->isVisible())
        alive->reject();
}

}  // namespace pdfhost
