#include "close_prompt.h"

#include <QMessageBox>
#include <QPushButton>

#include "engine/redaction.h"
#include "host_app.h"
#include "message_box.h"
#include "save_command.h"

namespace pdfhost {
namespace {

constexpr int kYesNoCancelWarning = 0x33;
constexpr int kYes = 6;
constexpr int kNo = 7;
constexpr int kCancel = 2;
constexpr int kOkCancelWarning = 0x31;
constexpr int kOk = 1;

// The question with the desktop's own words (Save, Don't Save, Cancel); headless, the queued
// message box answer.
int AskToSave(HostApp& app, const std::string& text, QWidget* parent) {
    if (app.Options().headless)
        return ShowMessageBox(app, MessageBoxRequest{text, "pdfhost", kYesNoCancelWarning});
    QMessageBox box(QMessageBox::Warning, QStringLiteral("pdfhost"), QString::fromStdString(text),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box.button(QMessageBox::Discard)->setText(QObject::tr("Don't Save"));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
        case QMessageBox::Save:
            return kYes;
        case QMessageBox::Discard:
            return kNo;
        default:
            return kCancel;
    }
}

}  // namespace

bool ConfirmSaveWithMarks(HostApp& app, HostDocument& document) {
    std::size_t marks = 0;
    try {
        marks = engine::Redactor(document.Engine()).RedactAnnotations().size();
    } catch (const std::exception&) {
        return true;  // a damaged page tree: the save reports what it can
    }
    if (marks == 0)
        return true;
    const std::string text =
        document.FileName() + " has " + std::to_string(marks) +
        (marks == 1 ? " redaction mark" : " redaction marks") +
        " that are not applied yet. Saved as marks, the text under them stays in the file: "
        "apply them first to remove it. Save with the marks anyway?";
    return ShowMessageBox(app, {text, "Save", kOkCancelWarning}) == kOk;
}

bool ConfirmClose(HostApp& app, HostDocument& document, QWidget* parent, bool warnOfMarks) {
    if (!document.IsModified() || document.IsHidden())
        return true;
    const int number = document.Number();
    const int answer = AskToSave(
        app, "Do you want to save the changes to " + document.FileName() + " before closing?",
        parent);
    HostDocument* still = app.Documents().FindByNumber(number);
    if (still == nullptr || still->IsClosing())
        return false;
    if (answer == kNo)
        return true;
    if (answer != kYes || (warnOfMarks && !ConfirmSaveWithMarks(app, *still)))
        return false;
    still = app.Documents().FindByNumber(number);
    return still != nullptr && !still->IsClosing() && SaveInPlaceOrAsk(app, *still, parent) != 0;
}

}  // namespace pdfhost
