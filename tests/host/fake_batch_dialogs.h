// Stand-ins for the plug-in's batch dialogs, with the object names, controls, invokables and
// properties that the scripted mode relies on, and as little behaviour as its tests need.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>
#include <QTreeWidget>
#include <QVariantMap>
#include <functional>

namespace pdfhost::testing {

// The output options: same folder or a chosen one, keep the name or add to it, overwrite.
class FakeOptionsDialog : public QDialog {
    Q_OBJECT

  public:
    // `record` is written back on OK; `showMessage` stands for the plug-in's message box.
    FakeOptionsDialog(QVariantMap& record, std::function<void(QString)> showMessage,
                      QWidget* parent);

  private:
    void Ok();

    QVariantMap& record_;
    std::function<void(QString)> showMessage_;
    QRadioButton* same_;
    QRadioButton* specific_;
    QRadioButton* keep_;
    QRadioButton* add_;
    QLineEdit* folder_;
    QLineEdit* before_;
    QLineEdit* after_;
    QCheckBox* overwrite_;
};

// The list of files that would be overwritten.
class FakeOverwriteDialog : public QDialog {
    Q_OBJECT

  public:
    FakeOverwriteDialog(const QStringList& files, QWidget* parent);
};

// The file list. A path with "broken" in its name is refused with the parse error; others are
// accepted with as many pages as their name has characters. A path named in `existing` counts as
// an existing target.
class FakeFileListDialog : public QDialog {
    Q_OBJECT

  public:
    FakeFileListDialog(QStringList existing, std::function<void(QString)> showMessage);

    Q_INVOKABLE void addPaths(const QStringList& paths);
    Q_INVOKABLE QVariantMap outputRecord() const { return record_; }

    QStringList Accepted() const;

  private:
    void Ok();

    QStringList existing_;
    std::function<void(QString)> showMessage_;
    QVariantMap record_;
    QTreeWidget* list_;
    QPushButton* ok_;
};

// The result of a batch.
class FakeResultDialog : public QDialog {
    Q_OBJECT
    Q_PROPERTY(int ret MEMBER ret_ CONSTANT)
    Q_PROPERTY(QString message MEMBER message_ CONSTANT)
    Q_PROPERTY(QStringList failedFileList MEMBER failed_ CONSTANT)
    Q_PROPERTY(QString picture READ picture CONSTANT)
    Q_PROPERTY(bool listShown READ listShown CONSTANT)
    Q_PROPERTY(int heightChange READ heightChange CONSTANT)

  public:
    FakeResultDialog(int ret, QString message, QStringList failed);
    QString picture() const { return ret_ == 0 ? "success" : "failure"; }
    bool listShown() const { return !failed_.isEmpty(); }
    int heightChange() const { return failed_.isEmpty() ? -100 : 0; }

  private:
    int ret_;
    QString message_;
    QStringList failed_;
};

// The batch page: it serves the batch channel's posts by echoing them with a prefix; the post
// "hide" hides it, "end" shows the result dialog and ends with 1 after its OK, "close" ends it
// with 2. Its close button ends it with 2.
class FakeBatchPage : public QDialog {
    Q_OBJECT
    Q_PROPERTY(QString url MEMBER url_ CONSTANT)

  public:
    explicit FakeBatchPage(QObject* channel);
    int Run();
    void done(int result) override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private slots:
    void onMessage(const QString& text);

  private:
    QObject* channel_;
    QPointer<QEventLoop> loop_;
    int result_ = 0;
    QString url_ = "https://page.test/batch?batchRedaction=true";
};

}  // namespace pdfhost::testing
