// CSablemarkWelcomeDlg: the dialog a user meets before a first use of the ribbon commands. It
// explains the feature and offers sign-in, sign-up or not now. Its controls carry the names
// the host's automation finds them by.
#pragma once

#include <QDialog>

class CSablemarkWelcomeDlg : public QDialog {
    Q_OBJECT

  public:
    static constexpr int kSignIn = 0;
    static constexpr int kSignUp = 1;
    static constexpr int kCancel = 2;

    CSablemarkWelcomeDlg(QWidget* parent, bool channelPackage);

    // Shows the dialog modally; the button the user chose, kCancel when the dialog was closed.
    int Run();

  private:
    void Choose(int choice);

    int choice_ = kCancel;
};
