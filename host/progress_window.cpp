#include "progress_window.h"

#include <QCoreApplication>
#include <QProgressDialog>
#include <QString>

#include "automation/json_line_writer.h"
#include "host_app.h"

namespace pdfhost {

ProgressWindow::ProgressWindow(HostApp& app, QWidget* parent, bool cancellable) : app_(app) {
    if (app_.Options().headless)
        return;
    dialog_ = new QProgressDialog(parent);
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setWindowTitle(QStringLiteral("pdfhost"));
    dialog_->setMinimumDuration(0);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
    dialog_->setRange(0, 100);
    if (cancellable) {
        QObject::connect(dialog_.data(), &QProgressDialog::canceled, [this] { cancelled_ = true; });
    } else {
        dialog_->setCancelButton(nullptr);
    }
}

ProgressWindow::~ProgressWindow() {
    delete dialog_.data();
}

void ProgressWindow::SetText(const std::string& text) {
    const bool changed = text != title_;
    title_ = text;
    if (dialog_ != nullptr)
        dialog_->setLabelText(QString::fromStdString(text));
    if (!shown_) {
        ShowOnce();
    } else if (changed) {
        WriteUpdate(true, false);
    }
}

void ProgressWindow::SetRange(int low, int high) {
    if (dialog_ != nullptr)
        dialog_->setRange(low, high);
}

void ProgressWindow::SetPos(int pos) {
    const bool changed = !pos_.has_value() || *pos_ != pos;
    pos_ = pos;
    if (!shown_)
        ShowOnce();
    if (changed)
        WriteUpdate(false, true);
    // A modal dialog handles events here, which may destroy this window: nothing follows.
    if (dialog_ != nullptr)
        dialog_->setValue(pos);
}

void ProgressWindow::Pump() {
    if (!shown_)
        ShowOnce();
    // The events may destroy this window (a plug-in's timer): nothing follows.
    QCoreApplication::processEvents();
}

void ProgressWindow::Close() {
    if (closed_)
        return;
    closed_ = true;
    if (dialog_ != nullptr)
        dialog_->hide();
    if (!shown_)
        return;
    if (JsonLineWriter* out = app_.ScriptWriter()) {
        Json::Value line(Json::objectValue);
        line["progress"] = "close";
        out->Write(line);
    }
}

void ProgressWindow::ShowOnce() {
    if (shown_ || closed_)
        return;
    shown_ = true;
    if (dialog_ != nullptr) {
        dialog_->show();
        return;
    }
    if (JsonLineWriter* out = app_.ScriptWriter()) {
        Json::Value line(Json::objectValue);
        line["progress"] = "show";
        line["title"] = title_;
        out->Write(line);
    }
}

void ProgressWindow::WriteUpdate(bool titleChanged, bool posChanged) {
    JsonLineWriter* out = app_.ScriptWriter();
    if (out == nullptr || dialog_ != nullptr || closed_ || (!titleChanged && !posChanged))
        return;
    Json::Value line(Json::objectValue);
    line["progress"] = "update";
    if (posChanged && pos_.has_value())
        line["pos"] = *pos_;
    if (titleChanged)
        line["title"] = title_;
    out->Write(line);
}

}  // namespace pdfhost
