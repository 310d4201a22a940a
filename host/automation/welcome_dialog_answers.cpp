#include "automation/welcome_dialog_answers.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QWidget>
#include <array>

#include "automation/json_line_writer.h"
#include "host_app.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "welcome";
constexpr int kNotNow = 2;
// The buttons of the answers 0, 1 and 2.
constexpr std::array<const char*, 3> kButtons = {"SignInButton", "SignUpButton", "CancalButton"};

}  // namespace

WelcomeDialogAnswers::WelcomeDialogAnswers(HostApp& app) : app_(app) {
    QCoreApplication::instance()->installEventFilter(this);
}

WelcomeDialogAnswers::~WelcomeDialogAnswers() {
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::instance()->removeEventFilter(this);
}

bool WelcomeDialogAnswers::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType() &&
        watched->objectName() == QLatin1String(kDialogName)) {
        // The answer must come once the dialog's own event loop runs.
        QPointer<QWidget> dialog(static_cast<QWidget*>(watched));
        QMetaObject::invokeMethod(
            this, [this, dialog] { Answer(dialog); }, Qt::QueuedConnection);
    }
    return false;
}

void WelcomeDialogAnswers::Answer(const QPointer<QWidget>& dialog) {
    if (!dialog || !dialog->isVisible())
        return;
    const std::optional<Json::Value> queued = app_.Answers().Take(kKind);
    const bool answered = queued.has_value() && queued->isInt() && queued->asInt() >= 0 &&
                          queued->asInt() < static_cast<int>(kButtons.size());
    const int answer = answered ? queued->asInt() : kNotNow;
    if (JsonLineWriter* out = app_.ScriptWriter()) {
        Json::Value line(Json::objectValue);
        line["dialog"] = kKind;
        line["title"] = dialog->windowTitle().toStdString();
        line["answer"] = answer;
        out->Write(line);
        if (!answered) {
            Json::Value note(Json::objectValue);
            note["unanswered"] = kKind;
            out->Write(note);
        }
    }
    if (auto* button = dialog->findChild<QAbstractButton*>(
            QString::fromLatin1(kButtons[static_cast<std::size_t>(answer)]))) {
        button->click();
    } else if (auto* modal = qobject_cast<QDialog*>(dialog.data())) {
        modal->reject();
    }
}

}  // namespace pdfhost
