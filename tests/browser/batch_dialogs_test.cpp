// The batch dialogs offscreen: the file list's rows, their checks and order, the output options'
// rules, the overwrite list, the choice among open documents, and the result dialog's look.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "batch/batch_result_dialog.h"
#include "batch/batch_texts.h"
#include "batch/multi_files_dialog.h"
#include "batch/output_option_dialog.h"
#include "batch/select_open_files_dialog.h"
#include "fake_batch_host.h"

namespace {

template <typename Widget>
Widget* Child(QWidget& dialog, const char* name) {
    auto* widget = dialog.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

// Keeps a picture of `dialog` among the build's artifacts, for a person to look at.
void SavePicture(QWidget& dialog, const char* name) {
    ASSERT_TRUE(QDir().mkpath(QStringLiteral(BREVAN_ARTIFACT_DIR)));
    if (!dialog.testAttribute(Qt::WA_Resized))  // the size a dialog gives itself stays
        dialog.adjustSize();
    EXPECT_TRUE(dialog.grab().save(QStringLiteral(BREVAN_ARTIFACT_DIR "/") + name));
}

// Runs `answer` on the next modal dialog once it is up.
void OnNextModal(std::function<void(QDialog&)> answer) {
    QTimer::singleShot(0, [answer = std::move(answer)] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        answer(*dialog);
    });
}

class BatchDialogsTest : public testing::Test {
  protected:
    BatchDialogsTest() {
        folder = dir.path();
        for (const char* name : {"b.pdf", "a.pdf", "xfa.pdf", "broken.pdf"}) {
            QFile file(Path(name));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(QByteArray(name == std::string("a.pdf") ? 3000 : 10, 'x'));
        }
        QDir(folder).mkdir(QStringLiteral("sub"));
        for (const char* name : {"a.pdf", "b.pdf", "xfa.pdf"}) {
            FakeDoc doc = FileDoc(Path(name).toStdWString());
            doc.pages.resize(name == std::string("b.pdf") ? 3 : 2);
            doc.xfa = name == std::string("xfa.pdf");
            host.files.emplace(doc.path, doc);
        }
    }

    QString Path(const char* name) const { return folder + QLatin1Char('/') + name; }

    QTemporaryDir dir;
    QString folder;
    FakeBatchHost host;
};

TEST_F(BatchDialogsTest, FileListChecksRowsSortsThemAndReadsTheAcceptedOnes) {
    CMultiFilesDlg dialog(host, nullptr);
    auto* list = Child<QTreeWidget>(dialog, "IDC_LIST_MUTILFILES");
    auto* ok = Child<QPushButton>(dialog, "IDOK");
    EXPECT_FALSE(ok->isEnabled());
    dialog.addPaths({folder, Path("a.pdf"), Path("missing.pdf")});

    ASSERT_EQ(list->topLevelItemCount(), 4);
    EXPECT_EQ(list->columnCount(), 5);
    const struct {
        const char* name;
        QVariant pages;
        const char* errorKey;
    } rows[] = {{"a.pdf", 2, ""},
                {"b.pdf", 3, ""},
                {"broken.pdf", QVariant(), "IDS_STR_PARSEERROR"},
                {"xfa.pdf", QVariant(), "IDS_STR_XFAERRORDES"}};
    for (int i = 0; i < 4; ++i) {
        const QTreeWidgetItem* item = list->topLevelItem(i);
        EXPECT_EQ(item->text(0), QString::fromLatin1(rows[i].name));
        EXPECT_EQ(item->text(1), folder);
        EXPECT_EQ(item->data(0, Qt::UserRole).toString(), Path(rows[i].name));
        EXPECT_EQ(item->data(2, Qt::UserRole), rows[i].pages) << i;
        EXPECT_EQ(item->data(4, Qt::UserRole).toString(), QString::fromLatin1(rows[i].errorKey));
        EXPECT_EQ(item->text(4).isEmpty(), rows[i].pages.isValid());
    }
    EXPECT_TRUE(Child<QLabel>(dialog, "IDC_STATIC_TOTALFILES")->text().contains(QLatin1Char('4')));
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(host.liveHidden, 0);
    SavePicture(dialog, "batch_file_list.png");

    // The size column: the biggest file last; a second click reverses the order.
    emit list->header()->sectionClicked(2);
    EXPECT_EQ(list->topLevelItem(3)->text(0), QStringLiteral("a.pdf"));
    emit list->header()->sectionClicked(2);
    EXPECT_EQ(list->topLevelItem(0)->text(0), QStringLiteral("a.pdf"));

    // Results named "_redacted" beside their sources overwrite nothing: OK reads the rows.
    ok->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const BatchChoice choice = dialog.choice();
    ASSERT_EQ(choice.files.size(), 2u);
    EXPECT_EQ(choice.files[0].path, Path("a.pdf").toStdWString());
    EXPECT_EQ(choice.totalPages, 5);
}

TEST_F(BatchDialogsTest, OptionsOfTheListAskBeforeOverwritingExistingTargets) {
    CMultiFilesDlg dialog(host, nullptr);
    dialog.addPaths({Path("b.pdf"), Path("a.pdf")});
    // Results keep their names in the sources' folder: both targets exist.
    OnNextModal([&](QDialog& options) {
        EXPECT_EQ(options.objectName(), QStringLiteral("CRG_OutputOptionDlg"));
        Child<QRadioButton>(options, "IDC_RADIO_SPECIFIC")->click();
        Child<QLineEdit>(options, "IDC_EDIT_FOLDER")->setText(folder);
        Child<QRadioButton>(options, "IDC_RADIO_KEEP")->click();
        Child<QDialogButtonBox>(options, "buttonBox")->button(QDialogButtonBox::Ok)->click();
    });
    Child<QPushButton>(dialog, "IDC_OPTIONS")->click();
    const QVariantMap record = dialog.outputRecord();
    EXPECT_EQ(record.value(QStringLiteral("folder")).toString(), folder + QLatin1Char('/'));
    EXPECT_TRUE(record.value(QStringLiteral("keepName")).toBool());

    QStringList listed;
    OnNextModal([&](QDialog& overwrite) {
        EXPECT_EQ(overwrite.objectName(), QStringLiteral("CFileListDlg"));
        auto* tree = Child<QTreeWidget>(overwrite, "IDC_TREE_FILE");
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            listed << tree->topLevelItem(i)->text(0);
        overwrite.reject();
    });
    Child<QPushButton>(dialog, "IDOK")->click();
    EXPECT_EQ(listed, (QStringList{Path("a.pdf"), Path("b.pdf")}));
    EXPECT_NE(dialog.result(), QDialog::Accepted);

    OnNextModal([](QDialog& overwrite) { Child<QPushButton>(overwrite, "IDOK")->click(); });
    Child<QPushButton>(dialog, "IDOK")->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(BatchDialogsTest, OptionsDialogKeepsItsRulesAndFiltersNames) {
    OutputOptions start;
    start.suffix.clear();
    CRG_OutputOptionDlg dialog(host, start, nullptr);
    QPushButton* ok = Child<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
    auto* overwrite = Child<QCheckBox>(dialog, "IDC_CHECK_OVERWRITE");
    auto* before = Child<QLineEdit>(dialog, "IDC_EDIT_BEFORE");

    // Adding nothing to the name: the first check that fails names its tip; the dialog stays.
    ok->click();
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_NE(host.messages[0].find(L"before or after"), std::wstring::npos);
    EXPECT_NE(dialog.result(), QDialog::Accepted);

    // Characters a file name can't hold are dropped as they are typed.
    for (const QChar c : QStringLiteral("re:d*/x"))
        before->insert(QString(c));
    EXPECT_EQ(before->text(), QStringLiteral("redx"));

    // A chosen folder is needed for OK to be enabled.
    Child<QRadioButton>(dialog, "IDC_RADIO_SPECIFIC")->click();
    EXPECT_FALSE(ok->isEnabled());
    Child<QLineEdit>(dialog, "IDC_EDIT_FOLDER")->setText(QStringLiteral("/out"));
    EXPECT_TRUE(ok->isEnabled());
    SavePicture(dialog, "batch_output_options.png");

    // Results that can only fall on their sources keep the overwrite box checked.
    Child<QRadioButton>(dialog, "IDC_RADIO_SAMEFOLDER")->click();
    Child<QRadioButton>(dialog, "IDC_RADIO_KEEP")->click();
    overwrite->click();
    EXPECT_TRUE(overwrite->isChecked());
    overwrite->click();
    EXPECT_TRUE(overwrite->isChecked());
    ASSERT_EQ(host.messageBoxes.size(), 1u);
    EXPECT_EQ(host.messageBoxes[0].second, 0x30);

    ok->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(dialog.record().keepName);
    EXPECT_TRUE(dialog.record().overwrite);
    EXPECT_EQ(dialog.record().prefix, L"");
}

TEST_F(BatchDialogsTest, OpenFilesThatNeedASaveAreSavedFirstAndAddedOnlyWhenItWorks) {
    const struct {
        bool saveWorks;
        QStringList chosen;
    } cases[] = {{true, {Path("a.pdf"), Path("b.pdf"), Path("xfa.pdf")}}, {false, {Path("a.pdf")}}};
    for (const auto& c : cases) {
        FakeBatchHost open;
        open.refuseSave = !c.saveWorks;
        open.Open(FileDoc(Path("a.pdf").toStdWString()));
        FakeDoc changed = FileDoc(Path("b.pdf").toStdWString());
        changed.modified = true;
        const HostDoc modified = open.Open(changed);
        FakeDoc untitled = FileDoc(Path("xfa.pdf").toStdWString());
        untitled.temporary = true;
        open.Open(untitled);

        CGW_SelectOpenFilesDlg dialog(open, nullptr);
        dialog.accept();
        EXPECT_EQ(dialog.chosenPaths(), c.chosen) << c.saveWorks;
        // One notice for all the documents to save, before any of them is saved.
        ASSERT_EQ(open.messageBoxes.size(), 1u);
        EXPECT_EQ(QString::fromStdWString(open.messageBoxes[0].first),
                  BatchText("IDS_NEEDSAVE_MSG"));
        EXPECT_EQ(open.Doc(modified).modified, !c.saveWorks);
    }
}

TEST_F(BatchDialogsTest, AMailAttachmentDropIsSavedAsAMsgFileAndListed) {
    // One attachment named "Invoice.pdf", as a mail program describes and serves it.
    QByteArray descriptor(4 + 592, '\0');
    descriptor[0] = 1;
    const QString name = QStringLiteral("Invoice.pdf");
    for (int i = 0; i < name.size(); ++i)
        descriptor[4 + 72 + 2 * i] = static_cast<char>(name[i].unicode());
    QMimeData data;
    data.setData(QStringLiteral("FileGroupDescriptorW"), descriptor);
    data.setData(QStringLiteral("FileContents"), QByteArray("compound file"));
    const QByteArray oldTemp = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder.toUtf8());

    CMultiFilesDlg dialog(host, nullptr);
    auto* list = Child<QTreeWidget>(dialog, "IDC_LIST_MUTILFILES");
    // The drop goes where the drag entered.
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &drop);
    qputenv("TMPDIR", oldTemp);

    EXPECT_TRUE(drop.isAccepted());
    ASSERT_EQ(list->topLevelItemCount(), 1);
    const QTreeWidgetItem* row = list->topLevelItem(0);
    EXPECT_TRUE(row->text(0).startsWith(QStringLiteral("MSG")) && row->text(0).endsWith(".msg"));
    EXPECT_EQ(row->text(1), QDir(folder).absolutePath());
    EXPECT_EQ(row->toolTip(0), name);
    // The host can't open it, so the row says so and the batch leaves it out.
    EXPECT_EQ(row->data(4, Qt::UserRole).toString(), QStringLiteral("IDS_STR_PARSEERROR"));
    QFile saved(row->data(0, Qt::UserRole).toString());
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_EQ(saved.readAll(), QByteArray("compound file"));
}

TEST(BatchResultDialogTest, PictureAndListFollowTheResult) {
    const BatchRedactionResultDlg done({0, L"All done", {}}, nullptr);
    const BatchRedactionResultDlg failed({200009, L"Some failed", {L"/in/x.pdf"}}, nullptr);
    EXPECT_EQ(done.objectName(), QStringLiteral("BatchRedactionResultDlg"));
    EXPECT_EQ(done.property("picture").toString(), QStringLiteral("success"));
    EXPECT_FALSE(done.property("listShown").toBool());
    EXPECT_EQ(done.property("heightChange").toInt(), -100);
    EXPECT_EQ(failed.property("picture").toString(), QStringLiteral("failure"));
    EXPECT_TRUE(failed.property("listShown").toBool());
    EXPECT_EQ(failed.property("failedFileList").toStringList(),
              QStringList{QStringLiteral("/in/x.pdf")});
    EXPECT_EQ(failed.height() - done.height(), 100);
    EXPECT_FALSE(done.findChild<QLabel*>(QStringLiteral("IDC_LINK"))->isVisibleTo(&done));
    BatchRedactionResultDlg shown({200009, L"Some failed", {L"/in/x.pdf", L"/in/y.pdf"}}, nullptr);
    SavePicture(shown, "batch_result.png");
}

}  // namespace
