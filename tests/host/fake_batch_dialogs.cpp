#include "fake_batch_dialogs.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QRegularExpressionValidator>

namespace pdfhost::testing {
namespace {

template <typename T>
T* Named(QWidget* parent, const char* name, T* widget) {
    widget->setParent(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QPushButton* Button(QDialog* dialog, const char* name) {
    return Named(dialog, name, new QPushButton(QString::fromLatin1(name)));
}

}  // namespace

FakeOptionsDialog::FakeOptionsDialog(QVariantMap& record, std::function<void(QString)> showMessage,
                                     QWidget* parent)
    : QDialog(parent), record_(record), showMessage_(std::move(showMessage)) {
    setObjectName("CRG_OutputOptionDlg");
    setWindowTitle("Output Options");
    auto* places = new QWidget(this);
    auto* names = new QWidget(this);
    same_ = Named(places, "IDC_RADIO_SAMEFOLDER", new QRadioButton);
    specific_ = Named(places, "IDC_RADIO_SPECIFIC", new QRadioButton);
    keep_ = Named(names, "IDC_RADIO_KEEP", new QRadioButton);
    add_ = Named(names, "IDC_RADIO_ADDFILENAME", new QRadioButton);
    folder_ = Named(this, "IDC_EDIT_FOLDER", new QLineEdit);
    before_ = Named(this, "IDC_EDIT_BEFORE", new QLineEdit);
    after_ = Named(this, "IDC_EDIT_AFTER", new QLineEdit);
    const QRegularExpression fileNameText(R"([^\\:*?"<>|/]*)");
    before_->setValidator(new QRegularExpressionValidator(fileNameText, before_));
    after_->setValidator(new QRegularExpressionValidator(fileNameText, after_));
    overwrite_ = Named(this, "IDC_CHECK_OVERWRITE", new QCheckBox);
    auto* box = Named(this, "buttonBox",
                      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
    (record_["sameFolder"].toBool() ? same_ : specific_)->setChecked(true);
    (record_["keepName"].toBool() ? keep_ : add_)->setChecked(true);
    before_->setText(record_["prefix"].toString());
    after_->setText(record_["suffix"].toString());
    overwrite_->setChecked(record_["overwrite"].toBool());
    // Clearing the box with nothing to keep results apart warns and checks it again.
    connect(overwrite_, &QCheckBox::toggled, this, [this](bool on) {
        const bool differs = (specific_->isChecked() && !folder_->text().isEmpty()) ||
                             (add_->isChecked() && !(before_->text() + after_->text()).isEmpty());
        if (!on && !differs) {
            showMessage_("must overwrite");
            overwrite_->setChecked(true);
        }
    });
    connect(box, &QDialogButtonBox::accepted, this, &FakeOptionsDialog::Ok);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void FakeOptionsDialog::Ok() {
    if (specific_->isChecked() && folder_->text().isEmpty()) {
        showMessage_("choose a folder");
        return;
    }
    if (add_->isChecked() && before_->text().isEmpty() && after_->text().isEmpty()) {
        showMessage_("add something to the name");
        return;
    }
    record_["sameFolder"] = same_->isChecked();
    record_["specificFolder"] = specific_->isChecked();
    record_["folder"] = specific_->isChecked() ? folder_->text() + "/" : QString();
    record_["keepName"] = keep_->isChecked();
    record_["addToName"] = add_->isChecked();
    record_["prefix"] = add_->isChecked() ? before_->text() : QString();
    record_["suffix"] = add_->isChecked() ? after_->text() : QString();
    record_["overwrite"] = overwrite_->isChecked();
    accept();
}

FakeOverwriteDialog::FakeOverwriteDialog(const QStringList& files, QWidget* parent)
    : QDialog(parent) {
    setObjectName("CFileListDlg");
    setWindowTitle("Files exist");
    auto* tree = Named(this, "IDC_TREE_FILE", new QTreeWidget);
    for (const QString& file : files)
        tree->addTopLevelItem(new QTreeWidgetItem(QStringList{file}));
    connect(Button(this, "IDOK"), &QPushButton::clicked, this, &QDialog::accept);
}

FakeFileListDialog::FakeFileListDialog(QStringList existing,
                                       std::function<void(QString)> showMessage)
    : existing_(std::move(existing)), showMessage_(std::move(showMessage)) {
    setObjectName("CMultiFilesDlg");
    setWindowTitle("Batch Redaction Files");
    record_ = {{"sameFolder", true}, {"specificFolder", false}, {"folder", ""},
               {"keepName", false},  {"addToName", true},       {"prefix", ""},
               {"suffix", "_r"},     {"overwrite", false}};
    list_ = Named(this, "IDC_LIST_MUTILFILES", new QTreeWidget);
    list_->setColumnCount(5);
    ok_ = Button(this, "IDOK");
    ok_->setEnabled(false);
    connect(ok_, &QPushButton::clicked, this, &FakeFileListDialog::Ok);
    connect(Button(this, "IDCANCEL"), &QPushButton::clicked, this, &QDialog::reject);
    connect(Button(this, "IDC_OPTIONS"), &QPushButton::clicked, this, [this] {
        FakeOptionsDialog options(record_, showMessage_, this);
        options.exec();
    });
}

void FakeFileListDialog::addPaths(const QStringList& paths) {
    for (const QString& path : paths) {
        const QFileInfo info(path);
        auto* item = new QTreeWidgetItem(
            QStringList{info.fileName(), info.path(), "1 KB", "2024-01-01 10:00:00", ""});
        item->setData(0, Qt::UserRole, path);
        if (info.fileName().contains("broken")) {
            item->setText(4, "The file cannot be read.");
            item->setData(4, Qt::UserRole, QString("IDS_STR_PARSEERROR"));
        } else {
            item->setData(2, Qt::UserRole, static_cast<int>(info.fileName().size()));
        }
        list_->addTopLevelItem(item);
    }
    ok_->setEnabled(list_->topLevelItemCount() > 0);
}

QStringList FakeFileListDialog::Accepted() const {
    QStringList accepted;
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        if (list_->topLevelItem(i)->data(4, Qt::UserRole).toString().isEmpty())
            accepted.append(list_->topLevelItem(i)->data(0, Qt::UserRole).toString());
    }
    return accepted;
}

void FakeFileListDialog::Ok() {
    if (!record_["overwrite"].toBool() && !existing_.isEmpty()) {
        FakeOverwriteDialog overwrite(existing_, this);
        if (overwrite.exec() != QDialog::Accepted)
            return;
    }
    accept();
}

FakeResultDialog::FakeResultDialog(int ret, QString message, QStringList failed)
    : ret_(ret), message_(std::move(message)), failed_(std::move(failed)) {
    setObjectName("BatchRedactionResultDlg");
    setWindowTitle("Batch Redaction");
    connect(Button(this, "IDOK"), &QPushButton::clicked, this, &QDialog::accept);
}

FakeBatchPage::FakeBatchPage(QObject* channel) : channel_(channel) {
    setObjectName("CProfileHtmlDlg");
    setWindowTitle("Batch Redaction");
    // The channel's signal is found by name, as the plug-in finds it.
    if (channel_ != nullptr)
        connect(channel_, SIGNAL(webMessageReceived(QString)), this, SLOT(onMessage(QString)));
}

int FakeBatchPage::Run() {
    // A loop of its own, so that hiding the window doesn't end the run.
    QEventLoop loop;
    loop_ = &loop;
    show();
    loop.exec(QEventLoop::DialogExec);
    return result_;
}

void FakeBatchPage::done(int result) {
    result_ = result;
    QDialog::done(result);
    if (loop_)
        loop_->quit();
}

void FakeBatchPage::closeEvent(QCloseEvent* event) {
    event->accept();
    done(2);
}

void FakeBatchPage::onMessage(const QString& text) {
    if (text == "hide") {
        hide();
    } else if (text == "end") {
        FakeResultDialog result(1, "1 file failed", {"/in/broken.pdf"});
        if (result.exec() == QDialog::Accepted) {
            QMetaObject::invokeMethod(channel_, "postWebMessageAsString", Q_ARG(QString, "ended"));
            done(1);
            return;
        }
    } else if (text == "close") {
        QMetaObject::invokeMethod(channel_, "postWebMessageAsString", Q_ARG(QString, "closing"));
        done(2);
        return;
    }
    QMetaObject::invokeMethod(channel_, "postWebMessageAsString", Q_ARG(QString, "page:" + text));
}

}  // namespace pdfhost::testing
