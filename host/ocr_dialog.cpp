#include "ocr_dialog.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>

#include "automation/json_line_writer.h"
#include "host_app.h"
#include "wide_text.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "ocr";
// Recognition reads English text only.
constexpr const wchar_t* kLanguages[] = {L"English"};

// The language of that name, else the first one.
const wchar_t* LanguageNamed(const std::wstring& name) {
    for (const wchar_t* language : kLanguages) {
        if (name == language)
            return language;
    }
    return kLanguages[0];
}

const wchar_t* AskOnDesktop(QWidget* parent, const wchar_t* offered) {
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("ocrOptions"));
    dialog.setWindowTitle(QStringLiteral("Recognize Text"));
    auto* language = new QComboBox(&dialog);
    language->setObjectName(QStringLiteral("language"));
    for (const wchar_t* name : kLanguages)
        language->addItem(QString::fromWCharArray(name));
    language->setCurrentText(QString::fromWCharArray(offered));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QFormLayout(&dialog);
    layout->addRow(QStringLiteral("Language:"), language);
    layout->addRow(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return nullptr;
    return LanguageNamed(language->currentText().toStdWString());
}

}  // namespace

const wchar_t* AskOcrLanguage(HostApp& app, QWidget* parent, const std::wstring& offered) {
    const wchar_t* language = LanguageNamed(offered);
    if (!app.Options().headless)
        return AskOnDesktop(parent, language);

    const std::optional<Json::Value> queued = app.Answers().Take(kKind);
    const bool confirmed = queued.has_value() && queued->isBool() && queued->asBool();
    if (JsonLineWriter* out = app.ScriptWriter()) {
        Json::Value line(Json::objectValue);
        line["dialog"] = kKind;
        line["language"] = Utf8Of(language);
        line["answer"] = queued.value_or(Json::Value());
        out->Write(line);
        if (!queued.has_value()) {
            Json::Value note(Json::objectValue);
            note["unanswered"] = kKind;
            out->Write(note);
        }
    }
    return confirmed ? language : nullptr;
}

}  // namespace pdfhost
