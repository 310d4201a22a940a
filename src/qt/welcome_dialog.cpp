#include "welcome_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialog_texts.h"

namespace {

QLabel* MakeLabel(const char* name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    return label;
}

QPushButton* MakeButton(const char* name, const QString& text, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(name);
    return button;
}

}  // namespace

CSablemarkWelcomeDlg::CSablemarkWelcomeDlg(QWidget* parent, bool channelPackage) : QDialog(parent) {
    setObjectName("CSablemarkWelcomeDlg");
    setWindowTitle(DialogText("IDS_STRING_WELCOME_TITLE"));
    const bool dark = UsesDarkTheme(*this);

    auto* picture = MakeLabel("LeftPicLabel", {}, this);
    picture->setPixmap(
        DialogPicture(dark ? "welcomeLeftImg_dark@2x.png" : "welcomeLeftImg@2x.png"));

    auto* title = MakeLabel("TitleLabel", DialogText("IDS_STRING_WELCOME_TITLE"), this);
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    titleFont.setBold(true);
    title->setFont(titleFont);
    auto* description =
        MakeLabel("DescriptLabel", DialogText("IDS_STRING_WELCOME_DESCRIPTION"), this);

    auto* bulb = MakeLabel("BulbPicLabel", {}, this);
    bulb->setPixmap(DialogPicture(dark ? "bulb_dark@2x.png" : "bulb@2x.png"));
    bulb->setAlignment(Qt::AlignTop);
    auto* bulbTitle = MakeLabel("BulbTitleLabel",
                                DialogText(channelPackage ? "IDS_STRING_BULB_DESCRIPTION_CHANNEL"
                                                          : "IDS_STRING_BULB_DESCRIPTION"),
                                this);

    auto* signIn = MakeButton("SignInButton", DialogText("IDS_STRING_GET_STARTED"), this);
    auto* signUp = MakeButton("SignUpButton", DialogText("IDS_STRING_SIGN_UP"), this);
    auto* cancel = MakeButton("CancalButton", DialogText("IDS_STRING_NOT_NOW"), this);
    signIn->setDefault(true);
    connect(signIn, &QPushButton::clicked, this, [this] { Choose(kSignIn); });
    connect(signUp, &QPushButton::clicked, this, [this] { Choose(kSignUp); });
    connect(cancel, &QPushButton::clicked, this, [this] { Choose(kCancel); });

    auto* tip = new QHBoxLayout;
    tip->addWidget(bulb);
    tip->addWidget(bulbTitle, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(signUp);
    buttons->addWidget(signIn);

    auto* text = new QVBoxLayout;
    text->addWidget(title);
    text->addWidget(description);
    text->addStretch();
    text->addLayout(tip);
    text->addLayout(buttons);

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(picture);
    layout->addLayout(text, 1);
    setMinimumWidth(560);
}

int CSablemarkWelcomeDlg::Run() {
    choice_ = kCancel;
    exec();
    return choice_;
}

void CSablemarkWelcomeDlg::Choose(int choice) {
    choice_ = choice;
    if (choice == kCancel) {
        reject();
    } else {
        accept();
    }
}
