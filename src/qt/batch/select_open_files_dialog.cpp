#include "select_open_files_dialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "batch_texts.h"
#include "host/host_string.h"
#include "host/message_box_style.h"

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
    const int count = host_.HostAppGetDocCount();
    for (int index = 0; index < count; ++index) {
        HostDoc doc = host_.HostAppGetDocByIndex(index);
        if (doc == nullptr)
            continue;
        HostWide path(host_);
        host_.HostDocGetFilePath(doc, path);
        const QString file = QString::fromStdWString(path.Text());
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
    chosen_.clear();
    bool announced = false;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = list_->topLevelItem(row);
        if (!item->isSelected())
            continue;
        auto doc = reinterpret_cast<HostDoc>(item->data(0, kDocRole).value<quintptr>());
        if (host_.HostDocIsTemporary(doc) == 0 && host_.HostDocIsModified(doc) == 0) {
            chosen_ << item->data(0, Qt::UserRole).toString();
            continue;
        }
        if (!announced) {
            const std::wstring text = BatchText("IDS_NEEDSAVE_MSG").toStdWString();
            const std::wstring title = windowTitle().toStdWString();
            host_.HostMessageBox(text.c_str(), message_box::kWarning, title.c_str(), nullptr,
                                 reinterpret_cast<HostWindow>(this));
            announced = true;
        }
        // The host's save; a temporary document gets its file there, so the path is read after.
        if (host_.HostDocSave(doc, 0, 0, 1, 0) == 0)
            continue;
        HostWide path(host_);
        host_.HostDocGetFilePath(doc, path);
        if (!path.Text().empty())
            chosen_ << QString::fromStdWString(path.Text());
    }
    QDialog::accept();
}
