// CSablemarkInfoDlg: a short note on the feature with "Get started" and "Not now". Its controls
// carry the names the host's automation finds them by.
#pragma once

#include <QDialog>

class CSablemarkInfoDlg : public QDialog {
    Q_OBJECT

  public:
    static constexpr int kGoOn = 3;
    static constexpr int kNotNow = 2;

    explicit CSablemarkInfoDlg(QWidget* parent);

    // Shows the dialog modally: kGoOn for "Get started", kNotNow otherwise.
    int Run();
};
