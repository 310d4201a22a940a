#include "file_dialog_answers.h"

#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QStringList>

#include "automation/json_line_writer.h"
#include "host_app.h"

namespace pdfhost {
namespace {

std::string KindOf(const QFileDialog& dialog) {
    if (dialog.fileMode() == QFileDialog::Directory)
        return "folder";
    return dialog.acceptMode() == QFileDialog::AcceptSave ? "fileSave" : "fileOpen";
}

// The answer's paths, absolute; an answer of the wrong type gives an error text.
std::string PathsOf(const std::string& kind, const Json::Value& answer, QStringList& paths) {
    const auto add = [&](const Json::Value& path) {
        paths << QFileInfo(QString::fromStdString(path.asString())).absoluteFilePath();
    };
    if (answer.isString()) {
        add(answer);
    } else if (kind == "fileOpen" && answer.isArray()) {
        for (const Json::Value& path : answer) {
            if (!path.isString())
                return "fileOpen answer: paths must be strings";
            add(path);
        }
    } else {
        return kind + " answer: expected " +
               (kind == "fileOpen" ? "an array of paths" : std::string("a path")) + " or null";
    }
    if (paths.isEmpty() || paths.contains(QString()))
        return kind + " answer: no path";
    return {};
}

// What the dialog would refuse with a message of its own (which no one could close).
std::string Refusal(const QFileDialog& dialog, QStringList& paths) {
    switch (dialog.fileMode()) {
        case QFileDialog::Directory:
            if (!QFileInfo(paths.front()).isDir())
                return "folder answer: no folder " + paths.front().toStdString();
            break;
        case QFileDialog::ExistingFile:
        case QFileDialog::ExistingFiles:
            if (dialog.fileMode() == QFileDialog::ExistingFile)
                paths = paths.mid(0, 1);
            for (const QString& path : paths) {
                const QFileInfo file(path);
                if (!file.exists() || file.isDir())
                    return "fileOpen answer: no file " + path.toStdString();
            }
            break;
        default:
            if (QFileInfo(paths.front()).isDir())
                return KindOf(dialog) + " answer: " + paths.front().toStdString() + " is a folder";
            paths = paths.mid(0, 1);
            break;
    }
    return {};
}

// Puts the paths into the dialog as if typed into its name field.
void Select(QFileDialog& dialog, const QStringList& paths) {
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (paths.size() == 1 || name == nullptr) {
        dialog.selectFile(paths.front());
        return;
    }
    name->setText(QLatin1Char('"') + paths.join(QStringLiteral("\" \"")) + QLatin1Char('"'));
}

}  // namespace

FileDialogAnswers::FileDialogAnswers(HostApp& app) : app_(app) {
    qApp->installEventFilter(this);
}

FileDialogAnswers::~FileDialogAnswers() {
    if (qApp != nullptr)
        qApp->removeEventFilter(this);
}

bool FileDialogAnswers::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show)
        return false;
    auto* dialog = qobject_cast<QFileDialog*>(watched);
    if (dialog == nullptr)
        return false;
    // exec() shows the dialog before its event loop runs; an answer given now would be lost.
    QMetaObject::invokeMethod(
        this,
        [this, target = QPointer<QFileDialog>(dialog)] {
            if (target != nullptr && target->isVisible())
                Answer(*target);
        },
        Qt::QueuedConnection);
    return false;
}

void FileDialogAnswers::Answer(QFileDialog& dialog) {
    const std::string kind = KindOf(dialog);
    const std::optional<Json::Value> answer = app_.Answers().Take(kind);
    JsonLineWriter* out = app_.ScriptWriter();
    const auto write = [&](const char* key, const std::string& text) {
        if (out == nullptr)
            return;
        Json::Value line(Json::objectValue);
        line[key] = text;
        out->Write(line);
    };
    if (out != nullptr) {
        Json::Value line(Json::objectValue);
        line["dialog"] = kind;
        line["title"] = dialog.windowTitle().toStdString();
        line["answer"] = answer.value_or(Json::Value());
        out->Write(line);
    }
    if (!answer.has_value()) {
        write("unanswered", kind);
        dialog.reject();
        return;
    }
    if (answer->isNull()) {
        dialog.reject();
        return;
    }
    QStringList paths;
    std::string error = PathsOf(kind, *answer, paths);
    if (error.empty())
        error = Refusal(dialog, paths);
    if (!error.empty()) {
        write("error", error);
        dialog.reject();
        return;
    }
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    Select(dialog, paths);
    // As the dialog's own OK button does; QFileDialog checks the choice in its accept().
    static_cast<QDialog&>(dialog).accept();
    if (dialog.isVisible()) {
        write("error", kind + " answer: the dialog did not take it");
        dialog.reject();
    }
}

}  // namespace pdfhost
