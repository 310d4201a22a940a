#include "automation/batch_result_answer.h"

#include <QPointer>
#include <QPushButton>
#include <QVariant>

#include "dialog_answers.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "result";
constexpr int kOk = 1;

}  // namespace

void AnswerBatchResult(QDialog& dialog, DialogAnswers& answers, const LineSink& sink) {
    const std::optional<Json::Value> queued = answers.Take(kKind);
    Json::Value line = DialogLine(kKind, dialog);
    line["ret"] = dialog.property("ret").toInt();
    line["message"] = dialog.property("message").toString().toStdString();
    Json::Value failed(Json::arrayValue);
    for (const QString& path : dialog.property("failedFileList").toStringList())
        failed.append(path.toStdString());
    line["failedFileList"] = failed;
    line["picture"] = dialog.property("picture").toString().toStdString();
    line["listShown"] = dialog.property("listShown").toBool();
    line["heightChange"] = dialog.property("heightChange").toInt();
    line["answer"] = AnswerOrNull(queued);
    sink(line);
    if (!queued.has_value())
        sink(UnansweredLine(kKind));

    QPointer<QDialog> alive(&dialog);
    if (queued.has_value() && queued->isInt() && queued->asInt() == kOk) {
        if (auto* ok = Control<QPushButton>(dialog, "IDOK"))
            ok->click();
    }
    if (alive && alive->isVisible())
        alive->reject();
}

}  // namespace pdfhost
