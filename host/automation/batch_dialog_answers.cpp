#include "automation/batch_dialog_answers.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <optional>

#include "automation/batch_result_answer.h"
#include "automation/file_list_answer.h"
#include "automation/json_line_writer.h"
#include "automation/output_options_answer.h"
#include "automation/overwrite_answer.h"
#include "host_app.h"

namespace pdfhost {
namespace {

constexpr const char* kFileList = "CMultiFilesDlg";
constexpr const char* kOptions = "CRG_OutputOptionDlg";
constexpr const char* kOverwrite = "CFileListDlg";
constexpr const char* kResult = "BatchRedactionResultDlg";

bool IsBatchDialog(const QString& name) {
    return name == QLatin1String(kFileList) || name == QLatin1String(kOptions) ||
           name == QLatin1String(kOverwrite) || name == QLatin1String(kResult);
}

}  // namespace

BatchDialogAnswers::BatchDialogAnswers(HostApp& app, Listener listener)
    : app_(app), listener_(std::move(listener)) {
    QCoreApplication::instance()->installEventFilter(this);
}

BatchDialogAnswers::~BatchDialogAnswers() {
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::instance()->removeEventFilter(this);
}

bool BatchDialogAnswers::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType() &&
        IsBatchDialog(watched->objectName())) {
        if (auto* dialog = qobject_cast<QDialog*>(watched)) {
            // The answer must come once the dialog's own event loop runs.
            QPointer<QDialog> shown(dialog);
            const QString name = dialog->objectName();
            QMetaObject::invokeMethod(
                this, [this, shown, name] { Answer(shown, name); }, Qt::QueuedConnection);
        }
    }
    return false;
}

void BatchDialogAnswers::Emit(const Json::Value& line) {
    if (JsonLineWriter* out = app_.ScriptWriter())
        out->Write(line);
    if (listener_)
        listener_(line);
}

void BatchDialogAnswers::Answer(const QPointer<QDialog>& dialog, const QString& name) {
    if (!dialog || !dialog->isVisible())
        return;
    const LineSink sink = [this](const Json::Value& line) { Emit(line); };
    if (name == QLatin1String(kFileList)) {
        fileList_ = dialog;
        AnswerFileList(*dialog, app_.Answers(), sink, [this, sink] {
            if (pendingOptions_.has_value())
                EmitOptionsLine(*std::exchange(pendingOptions_, std::nullopt), fileList_, sink);
        });
    } else if (name == QLatin1String(kOptions)) {
        OptionsOutcome outcome = AnswerOutputOptions(*dialog, app_.Answers());
        // Opened by the file list's button: its line waits for the record written back.
        if (fileList_ && fileList_->isVisible())
            pendingOptions_ = std::move(outcome);
        else
            EmitOptionsLine(std::move(outcome), nullptr, sink);
    } else if (name == QLatin1String(kOverwrite)) {
        AnswerOverwrite(*dialog, app_.Answers(), sink);
    } else if (name == QLatin1String(kResult)) {
        AnswerBatchResult(*dialog, app_.Answers(), sink);
    }
}

}  // namespace pdfhost
