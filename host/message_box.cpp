#include "message_box.h"

#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <utility>
#include <vector>

#include "automation/json_line_writer.h"
#include "host_app.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "messageBox";

enum Answer : int { kOk = 1, kCancel = 2, kAbort = 3, kRetry = 4, kIgnore = 5, kYes = 6, kNo = 7 };

// The buttons of a set, left to right, and the one that closing the box presses.
struct ButtonSet {
    std::vector<Answer> buttons;
    Answer onClose;
};

ButtonSet ButtonsOf(int flags) {
    switch (flags & 0x0F) {
        case 1:
            return {{kOk, kCancel}, kCancel};
        case 2:
            return {{kAbort, kRetry, kIgnore}, kAbort};
        case 3:
            return {{kYes, kNo, kCancel}, kCancel};
        case 4:
            return {{kYes, kNo}, kNo};
        case 5:
            return {{kRetry, kCancel}, kCancel};
        default:
            return {{kOk}, kOk};
    }
}

QMessageBox::StandardButton StandardButtonOf(Answer answer) {
    switch (answer) {
        case kOk:
            return QMessageBox::Ok;
        case kCancel:
            return QMessageBox::Cancel;
        case kAbort:
            return QMessageBox::Abort;
        case kRetry:
            return QMessageBox::Retry;
        case kIgnore:
            return QMessageBox::Ignore;
        case kYes:
            return QMessageBox::Yes;
        case kNo:
            return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon IconOf(int flags) {
    switch (flags & 0xF0) {
        case 0x10:
            return QMessageBox::Critical;
        case 0x20:
            return QMessageBox::Question;
        case 0x30:
            return QMessageBox::Warning;
        case 0x40:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

int AskOnDesktop(HostApp& app, const MessageBoxRequest& request, const ButtonSet& set) {
    QMessageBox box(IconOf(request.buttons),
                    QString::fromStdString(request.title.empty() ? "pdfhost" : request.title),
                    QString::fromStdString(request.text), QMessageBox::NoButton, app.MainWindow());
    for (const Answer answer : set.buttons)
        box.addButton(StandardButtonOf(answer));
    box.setEscapeButton(box.button(StandardButtonOf(set.onClose)));
    box.exec();
    for (const Answer answer : set.buttons) {
        if (box.clickedButton() == box.button(StandardButtonOf(answer)))
            return answer;
    }
    return set.onClose;
}

}  // namespace

int ShowMessageBox(HostApp& app, const MessageBoxRequest& request) {
    const ButtonSet set = ButtonsOf(request.buttons);
    if (!app.Options().headless)
        return AskOnDesktop(app, request, set);

    const std::optional<Json::Value> queued = app.Answers().Take(kKind);
    const bool answered = queued.has_value() && queued->isInt();
    const int answer = answered ? queued->asInt() : set.onClose;
    if (JsonLineWriter* out = app.ScriptWriter()) {
        Json::Value line(Json::objectValue);
        line["dialog"] = kKind;
        line["text"] = request.text;
        line["title"] = request.title;
        line["answer"] = answer;
        out->Write(line);
        if (!answered) {
            Json::Value note(Json::objectValue);
            note["unanswered"] = kKind;
            out->Write(note);
        }
    }
    return answer;
}

}  // namespace pdfhost
