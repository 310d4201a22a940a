#include "file_list_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "batch_texts.h"

CFileListDlg::CFileListDlg(const std::vector<std::wstring>& files, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("CFileListDlg"));
    setWindowTitle(BatchText("IDS_FILE_OVERWRITE"));
    resize(560, 340);

    auto* note = new QLabel(BatchText("IDS_STR_SAVEWARNNING"));
    note->setWordWrap(true);
    auto* tree = new QTreeWidget;
    tree->setObjectName(QStringLiteral("IDC_TREE_FILE"));
    tree->setHeaderHidden(true);
    tree->setRootIsDecorated(false);
    tree->setColumnCount(1);
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    const QIcon icon = style()->standardIcon(QStyle::SP_FileIcon);
    for (const std::wstring& file : files) {
        auto* item = new QTreeWidgetItem(tree, {QString::fromStdWString(file)});
        item->setIcon(0, icon);
    }

    auto* buttons = new QDialogButtonBox;
    auto* goOn = buttons->addButton(BatchText("IDS_BTN_CONTINUE"), QDialogButtonBox::AcceptRole);
    goOn->setObjectName(QStringLiteral("IDOK"));
    goOn->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addWidget(tree, 1);
    layout->addWidget(buttons);
}
