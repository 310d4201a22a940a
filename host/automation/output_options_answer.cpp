#include "automation/output_options_answer.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVariantMap>
#include <array>

#include "dialog_answers.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "options";

// Presses a radio button whose member is true, unless it is selected already.
void Select(QDialog& dialog, const Json::Value& answer, const char* member, const char* name) {
    if (!answer[member].isBool() || !answer[member].asBool())
        return;
    auto* radio = Control<QAbstractButton>(dialog, name);
    if (radio != nullptr && !radio->isChecked())
        radio->click();
}

void Type(QDialog& dialog, const Json::Value& answer, const char* member, const char* name) {
    if (!answer[member].isString())
        return;
    auto* edit = Control<QLineEdit>(dialog, name);
    const QString text = QString::fromStdString(answer[member].asString());
    if (edit != nullptr && edit->text() != text)
        TypeInto(*edit, text);
}

// Only a change of state is a click: clearing the box runs the dialog's own check.
void Check(QDialog& dialog, const Json::Value& answer, const char* member, const char* name) {
    if (!answer[member].isBool())
        return;
    auto* box = Control<QAbstractButton>(dialog, name);
    if (box != nullptr && box->isChecked() != answer[member].asBool())
        box->click();
}

}  // namespace

void TypeInto(QLineEdit& edit, const QString& text) {
    edit.clear();
    for (const QChar c : text)
        edit.insert(QString(c));
}

Json::Value OutputRecord(QDialog& fileList) {
    QVariantMap record;
    QMetaObject::invokeMethod(&fileList, "outputRecord", Qt::DirectConnection,
                              Q_RETURN_ARG(QVariantMap, record));
    Json::Value line(Json::objectValue);
    static constexpr std::array<const char*, 5> kFlags = {"sameFolder", "specificFolder",
                                                          "keepName", "addToName", "overwrite"};
    for (const char* flag : kFlags)
        line[flag] = record.value(QString::fromLatin1(flag)).toBool();
    static constexpr std::array<const char*, 3> kTexts = {"folder", "prefix", "suffix"};
    for (const char* text : kTexts)
        line[text] = record.value(QString::fromLatin1(text)).toString().toStdString();
    return line;
}

OptionsOutcome AnswerOutputOptions(QDialog& dialog, DialogAnswers& answers) {
    OptionsOutcome outcome;
    const std::optional<Json::Value> queued = answers.Take(kKind);
    outcome.line = DialogLine(kKind, dialog);
    outcome.line["answer"] = AnswerOrNull(queued);
    outcome.answered = queued.has_value();
    QPointer<QDialog> alive(&dialog);
    if (queued.has_value() && queued->isObject()) {
        const Json::Value& answer = *queued;
        Select(dialog, answer, "sameFolder", "IDC_RADIO_SAMEFOLDER");
        Select(dialog, answer, "specificFolder", "IDC_RADIO_SPECIFIC");
        Type(dialog, answer, "folder", "IDC_EDIT_FOLDER");
        Select(dialog, answer, "keepName", "IDC_RADIO_KEEP");
        Select(dialog, answer, "addToName", "IDC_RADIO_ADDFILENAME");
        Type(dialog, answer, "prefix", "IDC_EDIT_BEFORE");
        Type(dialog, answer, "suffix", "IDC_EDIT_AFTER");
        Check(dialog, answer, "overwrite", "IDC_CHECK_OVERWRITE");
        auto* buttons = alive ? Control<QDialogButtonBox>(*alive, "buttonBox") : nullptr;
        QPushButton* ok = buttons != nullptr ? buttons->button(QDialogButtonBox::Ok) : nullptr;
        if (ok != nullptr && ok->isEnabled())
            ok->click();
        outcome.accepted = alive && !alive->isVisible() && alive->result() == QDialog::Accepted;
    }
    // A failed check leaves the dialog open; nobody is there to correct it.
    if (alive && alive->isVisible())
        alive->reject();
    return outcome;
}

void EmitOptionsLine(OptionsOutcome outcome, QDialog* fileList, const LineSink& sink) {
    outcome.line["record"] =
        outcome.accepted && fileList != nullptr ? OutputRecord(*fileList) : Json::Value();
    sink(outcome.line);
    if (!outcome.answered)
        sink(UnansweredLine(kKind));
}

}  // namespace pdfhost
