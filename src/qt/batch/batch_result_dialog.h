// BatchRedactionResultDlg: how a batch run ended, with the files it could not process. Without
// failed files the list is hidden and the dialog is 100 pixels shorter.
#pragma once

#include <QDialog>
#include <QStringList>

#include "batch/batch_choice.h"

class QLabel;

class BatchRedactionResultDlg : public QDialog {
    Q_OBJECT
    Q_PROPERTY(int ret READ ret CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)
    Q_PROPERTY(QStringList failedFileList READ failedFileList CONSTANT)
    Q_PROPERTY(QString picture READ picture CONSTANT)
    Q_PROPERTY(bool listShown READ listShown CONSTANT)
    Q_PROPERTY(int heightChange READ heightChange CONSTANT)

  public:
    static constexpr int kListHeight = 100;

    BatchRedactionResultDlg(const BatchOutcome& outcome, QWidget* parent);

    int ret() const { return ret_; }
    QString message() const { return message_; }
    QStringList failedFileList() const { return failedFiles_; }
    QString picture() const;
    bool listShown() const { return !failedFiles_.isEmpty(); }
    int heightChange() const { return listShown() ? 0 : -kListHeight; }

    // Shows the link to `target`; activating it opens the target and ends the dialog.
    void SetLinkTarget(const QString& text, const QString& target);

  private:
    int ret_;
    QString message_;
    QStringList failedFiles_;
    QLabel* link_;
};
