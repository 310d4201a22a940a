// CGW_SelectOpenFilesDlg: the host's open documents to choose from for a batch. A document
// without a saved file of its own, or with unsaved changes, is announced and saved by the host
// before it is added, since the batch works on files; one whose save fails or is cancelled is
// left out.
#pragma once

#include <QDialog>
#include <QStringList>

class HostApi;
class QTreeWidget;

class CGW_SelectOpenFilesDlg : public QDialog {
    Q_OBJECT

  public:
    CGW_SelectOpenFilesDlg(HostApi& host, QWidget* parent);

    // The files of the chosen documents, in list order, as read at OK.
    const QStringList& chosenPaths() const { return chosen_; }

    void accept() override;

  private:
    HostApi& host_;
    QTreeWidget* list_;
    QStringList chosen_;
};
