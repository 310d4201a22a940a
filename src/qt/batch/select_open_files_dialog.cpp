#include "select_open_files_dialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "batch/open_documents.h"
#include "batch_texts.h"

namespace {

constexpr int kDocRole = Qt::UserRole + 1;

}  // namespace

CGW_SelectOpenFilesDlg::CGW_SelectOpenFilesDlg(HostApi& host, QWidget* parent)
    : QDialog(parent), host_(host) {
    setObjectName(QStringLiteral("CGW_SelectOpenFilesDlg"));
    setWindowTitle(BatchText("IDS_OPENFILES_TITLE"));
    resize(560, 320);

    list_ = new QTreeWidget;
    list_->setObjectName(QStringLiteral("IDC_LIST_OPENFILES"));
    list_->setHeaderLabels({BatchText("IDS_STR_NAME"), BatchText("IDS_STR_FILEMODIFYDATE")});
    list_->setRootIsDecorated(false);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (const OpenDocument& document : OpenDocuments(host_)) {
        const HostDoc doc = document.doc;
        const QString file = QString::fromStdWString(document.path);
        const QFileInfo info(file);
        auto* item = new QTreeWidgetItem(
            list_, {file, info.exists() ? info.lastModified().toString(Qt::ISODate) : QString()});
        item->setData(0, Qt::UserRole, file);
        item->setData(0, kDocRole, QVariant::fromValue(reinterpret_cast<quintptr>(doc)));
    }
    list_->selectAll();

    auto* buttons = new QDialogButtonBox;
    auto* add = buttons->addButton(BatchText("IDS_BTN_ADDFILES"), QDialogButtonBox::AcceptRole);
    add->setObjectName(QStringLiteral("IDOK"));
    add->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &CGW_SelectOpenFilesDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addWidget(buttons);
}

void CGW_SelectOpenFilesDlg::accept() {
    std::vector<OpenDocument> chosen;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = list_->topLevelItem(row);
        if (item->isSelected()) {
            chosen.push_back({reinterpret_cast<HostDoc>(item->data(0, kDocRole).value<quintptr>()),
                              item->data(0, Qt::UserRole).toString().toStdWString(), 0});
        }
    }
    chosen_.clear();
    for (const std::wstring& file :
         FilesOfChosenDocuments(host_, chosen, BatchText("IDS_NEEDSAVE_MSG").toStdWString(),
                                windowTitle().toStdWString(), reinterpret_cast<HostWindow>(this)))
        chosen_ << QString::fromStdWString(file);
    QDialog::accept();
}
