// CMultiFilesDlg: where a batch begins. The user gathers PDF files (files, a folder's files, the
// host's open documents, or dropped files); each row is checked, and the accepted rows with the
// output options make up the batch when the dialog ends with OK.
#pragma once

#include <QDialog>
#include <QStringList>
#include <QVariantMap>
#include <vector>

#include "batch/batch_choice.h"
#include "batch/mail_attachment_drop.h"

class HostApi;
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

class CMultiFilesDlg : public QDialog {
    Q_OBJECT

  public:
    enum Column { kName = 0, kFolder, kSize, kDate, kError, kColumnCount };

    CMultiFilesDlg(HostApi& host, QWidget* parent);

    // Adds the paths in order as the add-files button does and returns once every added row is
    // checked: a missing path adds nothing, a folder adds its files in name order, and a file
    // already listed is not listed again.
    Q_INVOKABLE void addPaths(const QStringList& paths);
    // Lists the ".msg" files a mail drop was saved to, each with its attachment's name as its tip.
    void AddAttachments(const std::vector<DroppedAttachment>& attachments);
    // The current output options, flags as booleans.
    Q_INVOKABLE QVariantMap outputRecord() const;

    // The accepted files, their pages and the output options, as read at OK.
    BatchChoice choice() const { return {files_, totalPages_, options_}; }

    // Reads the accepted rows and goes on unless existing files would be overwritten and the user
    // doesn't want that.
    void accept() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void AddPath(const QString& path, std::vector<QTreeWidgetItem*>& added);
    void AddFile(const QString& path, std::vector<QTreeWidgetItem*>& added);
    bool IsListed(const QString& name, const QString& folder) const;
    void CheckRows(const std::vector<QTreeWidgetItem*>& rows);
    void ChooseFiles();
    void ChooseFolder();
    void ChooseOpenFiles();
    void ShowOptions();
    void RemoveSelected();
    void MoveCurrent(int step);
    void SortBy(int column);
    void UpdateStates();

    HostApi& host_;
    QTreeWidget* list_;
    QLabel* total_;
    QLabel* progress_;
    QPushButton* ok_;
    QPushButton* remove_;
    QPushButton* moveUp_;
    QPushButton* moveDown_;
    OutputOptions options_;
    std::vector<BatchFile> files_;
    int totalPages_ = 0;
    bool read_ = false;
    bool adding_ = false;
    int sortColumn_ = -1;
    bool sortAscending_ = true;
};
