#include "qt_file_dialog.h"

#include <QWidget>

namespace {

constexpr unsigned kAllowMultiSelect = 0x200;
constexpr unsigned kFileMustExist = 0x1000;
constexpr unsigned kOverwritePrompt = 0x2;

QString QStringOf(const std::wstring& text) {
    return QString::fromStdWString(text);
}

}  // namespace

QStringList NameFiltersOf(const std::wstring& filter) {
    const QStringList parts = QStringOf(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString label = parts[i].trimmed();
        const QString patterns = parts[i + 1].trimmed().replace(QLatin1Char(';'), QLatin1Char(' '));
        if (label.isEmpty() || patterns.isEmpty())
            break;
        // Qt reads the patterns from the parentheses of the label, so they must be there.
        const qsizetype open = label.indexOf(QLatin1Char('('));
        if (open >= 0)
            label = label.left(open).trimmed();
        filters << QStringLiteral("%1 (%2)").arg(label, patterns.toLower());
    }
    return filters;
}

QtFileDialog::QtFileDialog(const FileDialogSettings& settings)
    : dialog_(std::make_unique<QFileDialog>(reinterpret_cast<QWidget*>(settings.parent))) {
    dialog_->setOption(QFileDialog::DontUseNativeDialog);
    dialog_->setAcceptMode(settings.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    if (settings.save) {
        dialog_->setFileMode(QFileDialog::AnyFile);
        dialog_->setOption(QFileDialog::DontConfirmOverwrite,
                           (settings.flags & kOverwritePrompt) == 0);
    } else if ((settings.flags & kAllowMultiSelect) != 0) {
        dialog_->setFileMode(QFileDialog::ExistingFiles);
    } else {
        dialog_->setFileMode((settings.flags & kFileMustExist) != 0 ? QFileDialog::ExistingFile
                                                                    : QFileDialog::AnyFile);
    }
    QString extension = QStringOf(settings.defaultExtension);
    if (extension.startsWith(QLatin1Char('.')))
        extension.remove(0, 1);
    dialog_->setDefaultSuffix(extension);
    const QStringList filters = NameFiltersOf(settings.filter);
    if (!filters.isEmpty())
        dialog_->setNameFilters(filters);
    // A pattern is a filter, not a name to offer.
    const QString initial = QStringOf(settings.initialName);
    if (!initial.isEmpty() && !initial.contains(QLatin1Char('*')))
        dialog_->selectFile(initial);
}

HostFileDialog QtFileDialog::Handle() {
    return reinterpret_cast<HostFileDialog>(static_cast<QObject*>(dialog_.get()));
}

bool QtFileDialog::Run() {
    return dialog_->exec() == QDialog::Accepted;
}

std::vector<std::wstring> QtFileDialog::Paths() {
    std::vector<std::wstring> paths;
    for (const QString& file : dialog_->selectedFiles())
        paths.push_back(file.toStdWString());
    return paths;
}
