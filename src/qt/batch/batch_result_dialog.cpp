#include "batch_result_dialog.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>

#include "batch_texts.h"

namespace {

constexpr int kWidth = 480;
constexpr int kHeightWithList = 300;
constexpr int kPictureSize = 48;

}  // namespace

BatchRedactionResultDlg::BatchRedactionResultDlg(const BatchOutcome& outcome, QWidget* parent)
    : QDialog(parent), ret_(outcome.ret), message_(QString::fromStdWString(outcome.message)) {
    setObjectName(QStringLiteral("BatchRedactionResultDlg"));
    setWindowTitle(QStringLiteral("Batch Redaction"));
    for (const std::wstring& file : outcome.failedFiles)
        failedFiles_ << QString::fromStdWString(file);

    auto* pictureLabel = new QLabel;
    pictureLabel->setObjectName(QStringLiteral("IDC_PICTURE"));
    const QStyle::StandardPixmap picture =
        ret_ == 0 ? QStyle::SP_DialogApplyButton : QStyle::SP_MessageBoxWarning;
    pictureLabel->setPixmap(style()->standardIcon(picture).pixmap(kPictureSize, kPictureSize));
    pictureLabel->setAlignment(Qt::AlignTop);
    auto* text = new QLabel(message_);
    text->setObjectName(QStringLiteral("IDC_MESSAGE"));
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* top = new QHBoxLayout;
    top->addWidget(pictureLabel);
    top->addWidget(text, 1);

    link_ = new QLabel;
    link_->setObjectName(QStringLiteral("IDC_LINK"));
    link_->setVisible(false);
    connect(link_, &QLabel::linkActivated, this, [this](const QString& target) {
        QDesktopServices::openUrl(QUrl::fromUserInput(target));
        accept();
    });

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    if (listShown()) {
        auto* caption = new QLabel(BatchText("IDS_RESULT_FAILEDFILES"));
        auto* list = new QListWidget;
        list->setObjectName(QStringLiteral("IDC_LIST_FAILED"));
        list->addItems(failedFiles_);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        layout->addWidget(caption);
        layout->addWidget(list, 1);
    } else {
        layout->addStretch(1);
    }
    layout->addWidget(link_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("IDOK"));
    ok->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
    resize(kWidth, kHeightWithList + heightChange());
}

QString BatchRedactionResultDlg::picture() const {
    return ret_ == 0 ? QStringLiteral("success") : QStringLiteral("failure");
}

void BatchRedactionResultDlg::SetLinkTarget(const QString& text, const QString& target) {
    link_->setText(
        QStringLiteral("<a href=\"%1\">%2</a>").arg(target.toHtmlEscaped(), text.toHtmlEscaped()));
    link_->setVisible(!target.isEmpty());
}
