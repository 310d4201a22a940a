// CRG_OutputOptionDlg: edits where a batch saves its results and how it names them. It takes the
// record at creation and gives the written-back record when it ends with OK.
#pragma once

#include <QDialog>

#include "batch/output_options.h"

class HostApi;
class QCheckBox;
class QDialogButtonBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

class CRG_OutputOptionDlg : public QDialog {
    Q_OBJECT

  public:
    CRG_OutputOptionDlg(HostApi& host, const OutputOptions& options, QWidget* parent);

    const OutputOptions& record() const { return record_; }
    OutputOptionControls controls() const;

    void accept() override;

  private:
    void ChooseFolder();
    void UpdateStates();
    void OnOverwriteToggled(bool checked);

    HostApi& host_;
    OutputOptions record_;
    QRadioButton* sameFolder_;
    QRadioButton* specific_;
    QLineEdit* folder_;
    QPushButton* browse_;
    QRadioButton* keep_;
    QRadioButton* addToName_;
    QLineEdit* before_;
    QLineEdit* after_;
    QCheckBox* overwrite_;
    QDialogButtonBox* buttons_;
};
