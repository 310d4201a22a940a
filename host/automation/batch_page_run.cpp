#include "automation/batch_page_run.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVariant>

#include "automation/json_line_writer.h"

namespace pdfhost {

BatchPageRun::BatchPageRun(JsonLineWriter& out, LineReader read, LineHandler handle)
    : out_(out), read_(std::move(read)), handle_(std::move(handle)) {
    QCoreApplication::instance()->installEventFilter(this);
}

BatchPageRun::~BatchPageRun() {
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::instance()->removeEventFilter(this);
}

bool BatchPageRun::eventFilter(QObject* watched, QEvent* event) {
    // Only the first showing counts: the batch may hide the window and show it again.
    if (event->type() == QEvent::Show && watched->isWidgetType() && watched != dialog_ &&
        watched->objectName() == QLatin1String(kDialogName)) {
        if (auto* dialog = qobject_cast<QDialog*>(watched)) {
            QPointer<QDialog> shown(dialog);
            dialog_ = shown;
            closedWith_.reset();
            connect(dialog, &QDialog::finished, this, [this, shown](int result) {
                if (dialog_ == shown)
                    closedWith_ = result;
            });
            Json::Value line(Json::objectValue);
            line["dialog"] = "batchPage";
            line["title"] = dialog->windowTitle().toStdString();
            line["url"] = dialog->property("url").toString().toStdString();
            out_.Write(line);
            // The input is read once the dialog's own modal run is going.
            QMetaObject::invokeMethod(
                this, [this, shown] { Serve(shown); }, Qt::QueuedConnection);
        }
    }
    return false;
}

void BatchPageRun::Serve(const QPointer<QDialog>& dialog) {
    if (dialog_ != dialog)
        return;
    while (dialog_ && !closedWith_.has_value()) {
        const std::optional<std::string> line = read_();
        if (!line.has_value() || handle_(*line)) {
            quitRequested_ = true;
            Close();
            break;
        }
    }
    if (closedWith_.has_value()) {
        Json::Value line(Json::objectValue);
        line["dialog"] = "batchPage";
        line["closed"] = *closedWith_;
        out_.Write(line);
    }
    dialog_ = nullptr;
}

void BatchPageRun::Close() {
    if (!dialog_)
        return;
    // As the close button would; a hidden dialog ignores a close, so it is rejected instead.
    dialog_->close();
    if (dialog_ && !closedWith_.has_value())
        dialog_->reject();
}

}  // namespace pdfhost
