// CFileListDlg: the files a batch would overwrite; OK goes on with the batch.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

class CFileListDlg : public QDialog {
    Q_OBJECT

  public:
    CFileListDlg(const std::vector<std::wstring>& files, QWidget* parent);
};
