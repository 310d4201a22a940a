#include "info_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialog_texts.h"

CSablemarkInfoDlg::CSablemarkInfoDlg(QWidget* parent) : QDialog(parent) {
    setObjectName("CSablemarkInfoDlg");
    setWindowTitle(DialogText("IDS_STRING_WELCOME_TITLE"));

    auto* picture = new QLabel(this);
    picture->setObjectName("InfoPicture");
    picture->setPixmap(
        DialogPicture(devicePixelRatioF() >= 2.0 ? "infomation@2x.png" : "infomation.png"));
    picture->setAlignment(Qt::AlignTop);

    auto* message = new QLabel(DialogText("IDS_STRING_DLG_INFO_DES"), this);
    message->setObjectName("labelMsg");
    message->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(this);
    buttons->setObjectName("buttonBox");
    buttons->addButton(DialogText("IDS_STRING_GET_STARTED"), QDialogButtonBox::AcceptRole);
    buttons->addButton(DialogText("IDS_STRING_NOT_NOW"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* row = new QHBoxLayout;
    row->addWidget(picture);
    row->addWidget(message, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

int CSablemarkInfoDlg::Run() {
    return exec() == QDialog::Accepted ? kGoOn : kNotNow;
}
