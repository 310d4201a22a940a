#include "save_command.h"

#include <QFileDialog>
#include <QString>

#include "host_app.h"

namespace pdfhost {

std::optional<std::string> AskSavePath(QWidget* parent, const std::string& suggestedName) {
    QFileDialog dialog(parent, QStringLiteral("Save As"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(QStringLiteral("PDF files (*.pdf)"));
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(QString::fromStdString(suggestedName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString path = dialog.selectedFiles().front();
    if (path.isEmpty())
        return std::nullopt;
    return path.toStdString();
}

int SaveInPlaceOrAsk(HostApp& app, HostDocument& document, QWidget* parent) {
    if (!document.IsTemporary())
        return app.SaveDocument(document);
    const int number = document.Number();
    const HostDoc handle = document.Handle();
    const std::optional<std::string> path = AskSavePath(parent, document.FileName());
    // The dialog's event loop may have let the document go.
    HostDocument* still = app.Documents().FindByNumber(number);
    if (still == nullptr)
        return 0;
    if (!path.has_value()) {
        app.Events().DidSave(handle, 0);
        return 0;
    }
    return app.SaveDocumentAs(*still, *path);
}

int SaveActiveDocument(HostApp& app, QWidget* parent) {
    HostDocument* document = app.Documents().Active();
    if (document == nullptr)
        return 0;
    const bool temporary = document->IsTemporary();
    const int number = document->Number();
    const int saved = SaveInPlaceOrAsk(app, *document, parent);
    if (saved == 0 || !temporary)
        return saved;
    // The saved file takes the temporary document's place.
    document = app.Documents().FindByNumber(number);
    if (document == nullptr)
        return 1;
    const std::string path = document->Path();
    app.CloseDocument(*document);
    return app.OpenDocument(path).document != nullptr ? 1 : 0;
}

}  // namespace pdfhost
