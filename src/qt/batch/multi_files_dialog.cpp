#include "multi_files_dialog.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "batch/file_check.h"
#include "batch/file_list_order.h"
#include "batch/mail_attachment_drop.h"
#include "batch/overwrite_check.h"
#include "batch_texts.h"
#include "file_list_dialog.h"
#include "host/host_string.h"
#include "output_option_dialog.h"
#include "qt_file_dialog.h"
#include "select_open_files_dialog.h"

namespace {

constexpr int kFileSizeRole = Qt::UserRole + 1;
constexpr unsigned kManyExistingFiles = 0x200 | 0x1000;
const QString kDateFormat = QStringLiteral("MM/dd/yyyy HH:mm:ss");

QPushButton* NamedButton(const QString& text, const char* name) {
    auto* button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

QStringList LocalFilesOf(const QMimeData* data) {
    QStringList paths;
    if (data == nullptr || !data->hasUrls())
        return paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

// A mail program's drop names the formats as they are, or as Qt names Windows formats.
QString FormatOf(const QMimeData* data, const QString& name) {
    const QString windows = QStringLiteral("application/x-qt-windows-mime;value=\"%1\"").arg(name);
    for (const QString& format : {name, windows}) {
        if (data->hasFormat(format))
            return format;
    }
    return {};
}

bool HasAttachments(const QMimeData* data) {
    return data != nullptr && !FormatOf(data, QStringLiteral("FileGroupDescriptorW")).isEmpty();
}

// The attachments of a mail drop, saved in the temp folder. A drop carries the contents of its
// first attachment only ("FileContents" has no index here); the others are left out.
std::vector<DroppedAttachment> SaveAttachmentsOf(const QMimeData* data) {
    const QByteArray descriptor =
        data->data(FormatOf(data, QStringLiteral("FileGroupDescriptorW")));
    const QString contentsFormat = FormatOf(data, QStringLiteral("FileContents"));
    const AttachmentContents contents = [&](std::size_t index) -> std::optional<std::string> {
        if (index != 0 || contentsFormat.isEmpty())
            return std::nullopt;
        return data->data(contentsFormat).toStdString();
    };
    return SaveDroppedAttachments(
        std::string_view(descriptor.constData(), static_cast<std::size_t>(descriptor.size())),
        contents, QStandardPaths::writableLocation(QStandardPaths::TempLocation).toStdString());
}

}  // namespace

CMultiFilesDlg::CMultiFilesDlg(HostApi& host, QWidget* parent) : QDialog(parent), host_(host) {
    setObjectName(QStringLiteral("CMultiFilesDlg"));
    setWindowTitle(BatchText("IDS_BATCH_TITLE"));
    setSizeGripEnabled(true);
    resize(820, 460);

    list_ = new QTreeWidget;
    list_->setObjectName(QStringLiteral("IDC_LIST_MUTILFILES"));
    list_->setColumnCount(kColumnCount);
    list_->setHeaderLabels({BatchText("IDS_STR_FILEPATH"), BatchText("IDS_STR_FILELOCATION"),
                            BatchText("IDS_STR_FILESIZE"), BatchText("IDS_STR_FILEMOD"),
                            BatchText("IDS_STR_ERROR")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setAcceptDrops(true);
    list_->viewport()->setAcceptDrops(true);
    list_->viewport()->installEventFilter(this);
    list_->header()->setSectionsClickable(true);
    list_->header()->setStretchLastSection(true);
    list_->setColumnWidth(kName, 200);
    list_->setColumnWidth(kFolder, 220);
    list_->setColumnWidth(kSize, 80);
    list_->setColumnWidth(kDate, 140);
    list_->setToolTip(BatchText("IDS_HINT"));

    auto* add = NamedButton(BatchText("IDS_ADDFILES"), "IDC_BUTTON_ADDFILES");
    auto* menu = new QMenu(add);
    menu->addAction(BatchText("IDS_ADDFILES_ADDFILES"), this, &CMultiFilesDlg::ChooseFiles);
    menu->addAction(BatchText("IDS_ADDFILES_ADDFOLDER"), this, &CMultiFilesDlg::ChooseFolder);
    menu->addAction(BatchText("IDS_ADDFILES_ADDOPENFILES"), this, &CMultiFilesDlg::ChooseOpenFiles);
    add->setMenu(menu);
    remove_ = NamedButton(BatchText("IDS_BTN_REMOVE"), "IDC_BUTTON_REMOVE");
    moveUp_ = NamedButton(BatchText("IDS_BTN_MOVEUP"), "IDC_BUTTON_MOVEUP");
    moveDown_ = NamedButton(BatchText("IDS_BTN_MOVEDOWN"), "IDC_BUTTON_MOVEDOWN");
    auto* options = NamedButton(BatchText("IDS_BTN_OPTIONS"), "IDC_OPTIONS");
    ok_ = NamedButton(BatchText("IDS_BTN_START"), "IDOK");
    ok_->setDefault(true);
    auto* cancel = NamedButton(BatchText("IDS_BTN_CANCEL"), "IDCANCEL");
    total_ = new QLabel;
    total_->setObjectName(QStringLiteral("IDC_STATIC_TOTALFILES"));
    progress_ = new QLabel;
    progress_->setObjectName(QStringLiteral("IDC_HINT"));

    auto* listButtons = new QHBoxLayout;
    for (QPushButton* button : {add, remove_, moveUp_, moveDown_})
        listButtons->addWidget(button);
    listButtons->addStretch(1);
    listButtons->addWidget(total_);
    auto* endButtons = new QHBoxLayout;
    endButtons->addWidget(options);
    endButtons->addWidget(progress_, 1);
    endButtons->addWidget(ok_);
    endButtons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(listButtons);
    layout->addWidget(list_, 1);
    layout->addLayout(endButtons);

    connect(remove_, &QPushButton::clicked, this, &CMultiFilesDlg::RemoveSelected);
    connect(moveUp_, &QPushButton::clicked, this, [this] { MoveCurrent(-1); });
    connect(moveDown_, &QPushButton::clicked, this, [this] { MoveCurrent(1); });
    connect(options, &QPushButton::clicked, this, &CMultiFilesDlg::ShowOptions);
    connect(ok_, &QPushButton::clicked, this, &CMultiFilesDlg::accept);
    connect(cancel, &QPushButton::clicked, this, &CMultiFilesDlg::reject);
    connect(list_, &QTreeWidget::itemSelectionChanged, this, &CMultiFilesDlg::UpdateStates);
    connect(list_->header(), &QHeaderView::sectionClicked, this, &CMultiFilesDlg::SortBy);
    auto* removeKey = new QShortcut(QKeySequence::Delete, list_);
    removeKey->setContext(Qt::WidgetWithChildrenShortcut);
    connect(removeKey, &QShortcut::activated, this, &CMultiFilesDlg::RemoveSelected);
    UpdateStates();
}

void CMultiFilesDlg::addPaths(const QStringList& paths) {
    std::vector<QTreeWidgetItem*> added;
    for (const QString& path : paths)
        AddPath(path, added);
    CheckRows(added);
}

void CMultiFilesDlg::AddAttachments(const std::vector<DroppedAttachment>& attachments) {
    std::vector<QTreeWidgetItem*> added;
    for (const DroppedAttachment& attachment : attachments) {
        const std::size_t before = added.size();
        AddFile(QString::fromStdString(attachment.file.string()), added);
        if (added.size() > before)
            added.back()->setToolTip(kName, QString::fromStdWString(attachment.name));
    }
    CheckRows(added);
}

void CMultiFilesDlg::AddPath(const QString& path, std::vector<QTreeWidgetItem*>& added) {
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists())
        return;
    if (info.isDir()) {
        const QFileInfoList entries =
            QDir(info.absoluteFilePath()).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& entry : entries)
            AddFile(entry.absoluteFilePath(), added);
        return;
    }
    AddFile(info.absoluteFilePath(), added);
}

void CMultiFilesDlg::AddFile(const QString& path, std::vector<QTreeWidgetItem*>& added) {
    const QFileInfo info(QDir::cleanPath(path));
    const QString name = info.fileName();
    const QString folder = info.absolutePath();
    if (IsListed(name, folder))
        return;
    HostWide size(host_);
    host_.HostFormatFileSize(info.size(), size);
    QString sizeText = QString::fromStdWString(size.Text());
    if (sizeText.isEmpty())
        sizeText =
            QLocale::c().formattedDataSize(info.size(), 1, QLocale::DataSizeTraditionalFormat);
    auto* item = new QTreeWidgetItem(
        list_, {name, folder, sizeText, info.lastModified().toString(kDateFormat), QString()});
    item->setIcon(kName, style()->standardIcon(QStyle::SP_FileIcon));
    item->setData(kName, Qt::UserRole, info.absoluteFilePath());
    item->setData(kName, kFileSizeRole, static_cast<qlonglong>(info.size()));
    added.push_back(item);
}

bool CMultiFilesDlg::IsListed(const QString& name, const QString& folder) const {
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = list_->topLevelItem(row);
        if (item->text(kName) == name && item->text(kFolder) == folder)
            return true;
    }
    return false;
}

// Checks each new row in turn, showing how far it got; OK waits until all are done.
void CMultiFilesDlg::CheckRows(const std::vector<QTreeWidgetItem*>& rows) {
    adding_ = true;
    UpdateStates();
    const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning);
    const int count = static_cast<int>(rows.size());
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* item = rows[static_cast<std::size_t>(i)];
        progress_->setText(
            BatchText("IDS_STR_CHECKING").arg(i + 1).arg(count).arg(item->text(kName)));
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        const FileCheck check =
            CheckBatchFile(host_, item->data(kName, Qt::UserRole).toString().toStdWString());
        if (check.accepted()) {
            item->setData(kSize, Qt::UserRole, check.pageCount);
        } else {
            item->setText(kError, BatchText(check.errorKey));
            item->setData(kError, Qt::UserRole,
                          QString::fromUtf8(check.errorKey.data(),
                                            static_cast<qsizetype>(check.errorKey.size())));
            item->setIcon(kError, warning);
            item->setToolTip(kError, item->text(kError));
        }
    }
    progress_->clear();
    adding_ = false;
    UpdateStates();
}

QVariantMap CMultiFilesDlg::outputRecord() const {
    return {
        {QStringLiteral("sameFolder"), options_.sameFolder},
        {QStringLiteral("specificFolder"), options_.specificFolder},
        {QStringLiteral("folder"), QString::fromStdWString(options_.folder)},
        {QStringLiteral("keepName"), options_.keepName},
        {QStringLiteral("addToName"), options_.addToName},
        {QStringLiteral("prefix"), QString::fromStdWString(options_.prefix)},
        {QStringLiteral("suffix"), QString::fromStdWString(options_.suffix)},
        {QStringLiteral("overwrite"), options_.overwrite},
    };
}

void CMultiFilesDlg::accept() {
    if (adding_ || list_->topLevelItemCount() == 0)
        return;
    read_ = true;
    files_.clear();
    totalPages_ = 0;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = list_->topLevelItem(row);
        const QVariant pages = item->data(kSize, Qt::UserRole);
        if (!pages.isValid())
            continue;
        files_.push_back({item->data(kName, Qt::UserRole).toString().toStdWString(),
                          item->data(kName, kFileSizeRole).toLongLong(), pages.toInt()});
        totalPages_ += pages.toInt();
    }
    const std::vector<std::wstring> existing =
        TargetsToOverwrite(files_, options_, FileExistsOnDisk);
    if (!existing.empty()) {
        CFileListDlg overwrite(existing, this);
        if (overwrite.exec() != QDialog::Accepted)
            return;
    }
    QDialog::accept();
}

bool CMultiFilesDlg::eventFilter(QObject* watched, QEvent* event) {
    if (watched != list_->viewport())
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove: {
            auto* drag = static_cast<QDropEvent*>(event);
            if (adding_ ||
                (LocalFilesOf(drag->mimeData()).isEmpty() && !HasAttachments(drag->mimeData())))
                return false;
            drag->acceptProposedAction();
            return true;
        }
        case QEvent::Drop: {
            auto* drop = static_cast<QDropEvent*>(event);
            const QStringList paths = LocalFilesOf(drop->mimeData());
            if (adding_ || (paths.isEmpty() && !HasAttachments(drop->mimeData())))
                return false;
            drop->acceptProposedAction();
            if (paths.isEmpty())
                AddAttachments(SaveAttachmentsOf(drop->mimeData()));
            else
                addPaths(paths);
            return true;
        }
        default:
            return QDialog::eventFilter(watched, event);
    }
}

void CMultiFilesDlg::ChooseFiles() {
    FileDialogSettings settings;
    settings.filter = BatchText("IDS_SUPPORTED_FILES").toStdWString() + L"|*.pdf;*.ppdf||";
    settings.flags = kManyExistingFiles;
    settings.parent = reinterpret_cast<HostWindow>(this);
    QtFileDialog dialog(settings);
    if (!dialog.Run())
        return;
    QStringList paths;
    for (const std::wstring& path : dialog.Paths())
        paths << QString::fromStdWString(path);
    addPaths(paths);
}

void CMultiFilesDlg::ChooseFolder() {
    QFileDialog dialog(this, BatchText("IDS_ADDFILES_ADDFOLDER"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() == QDialog::Accepted)
        addPaths(dialog.selectedFiles());
}

void CMultiFilesDlg::ChooseOpenFiles() {
    CGW_SelectOpenFilesDlg dialog(host_, this);
    if (dialog.exec() == QDialog::Accepted)
        addPaths(dialog.chosenPaths());
}

void CMultiFilesDlg::ShowOptions() {
    CRG_OutputOptionDlg dialog(host_, options_, this);
    if (dialog.exec() == QDialog::Accepted)
        options_ = dialog.record();
}

void CMultiFilesDlg::RemoveSelected() {
    if (adding_)
        return;
    qDeleteAll(list_->selectedItems());
    UpdateStates();
}

void CMultiFilesDlg::MoveCurrent(int step) {
    QTreeWidgetItem* item = list_->currentItem();
    if (adding_ || item == nullptr)
        return;
    const int row = list_->indexOfTopLevelItem(item);
    const int target = row + step;
    if (target < 0 || target >= list_->topLevelItemCount())
        return;
    list_->takeTopLevelItem(row);
    list_->insertTopLevelItem(target, item);
    list_->setCurrentItem(item);
    UpdateStates();
}

// A click on a header sorts by its column; a second click on the same one reverses the order.
void CMultiFilesDlg::SortBy(int column) {
    if (adding_)
        return;
    sortAscending_ = column == sortColumn_ ? !sortAscending_ : true;
    sortColumn_ = column;
    std::vector<QTreeWidgetItem*> rows;
    while (list_->topLevelItemCount() > 0)
        rows.push_back(list_->takeTopLevelItem(0));
    const auto order = static_cast<FileListColumn>(column);
    std::stable_sort(rows.begin(), rows.end(), [&](QTreeWidgetItem* a, QTreeWidgetItem* b) {
        const std::wstring left = a->text(column).toStdWString();
        const std::wstring right = b->text(column).toStdWString();
        return sortAscending_ ? SortsBefore(order, left, right) : SortsBefore(order, right, left);
    });
    for (QTreeWidgetItem* row : rows)
        list_->addTopLevelItem(row);
    list_->header()->setSortIndicatorShown(true);
    list_->header()->setSortIndicator(column,
                                      sortAscending_ ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void CMultiFilesDlg::UpdateStates() {
    const int rows = list_->topLevelItemCount();
    total_->setText(BatchText("IDS_STR_TOTALFILES").arg(rows));
    ok_->setEnabled(rows > 0 && !adding_);
    const bool selected = !list_->selectedItems().isEmpty();
    remove_->setEnabled(selected && !adding_);
    moveUp_->setEnabled(selected && !adding_);
    moveDown_->setEnabled(selected && !adding_);
}
