// The desktop window follows the host's documents, and the user's tab changes reach the hooks;
// closing, quitting and saving ask before work is lost or marks are saved unapplied.
#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <fstream>

#include "annot_calls.h"
#include "recording_hooks.h"
#include "ui/document_view.h"
#include "ui/main_window.h"

namespace pdfhost::testing {
namespace {

class MainWindowTest : public HostFixture {
  protected:
    MainWindowTest() { Call<HostAppRegisterDocEvents>(hooks_.Record()); }

    RecordingHooks hooks_;
    ui::MainWindow window_{app_};
    QTabWidget* tabs_ = window_.findChild<QTabWidget*>();
};

TEST_F(MainWindowTest, TabsFollowTheDocumentsAndFireHooks) {
    ASSERT_NE(tabs_, nullptr);
    EXPECT_EQ(app_.MainWindow(), &window_);
    EXPECT_EQ(tabs_->count(), 1);  // the start tab

    window_.OpenFile(QString::fromStdString(WritePdf(files_, "a.pdf", ThreePages())));
    app_.NewDocument();
    ASSERT_EQ(tabs_->count(), 3);
    EXPECT_EQ(tabs_->currentIndex(), 2);
    EXPECT_EQ(tabs_->tabText(1), "a.pdf");
    EXPECT_EQ(hooks_.Take(), (std::vector<std::string>{"will-open", "did-open 1", "activate 1",
                                                       "will-open", "did-open 2", "activate 2"}));

    // A page beyond the document shows its last page.
    auto* view = qobject_cast<ui::DocumentView*>(tabs_->widget(1));
    ASSERT_NE(view, nullptr);
    view->ShowPage(5);
    EXPECT_EQ(view->CurrentPage(), 2);

    tabs_->setCurrentIndex(1);
    tabs_->setCurrentIndex(0);
    EXPECT_EQ(hooks_.Take(), (std::vector<std::string>{"activate 1", "other-tab"}));
    EXPECT_EQ(app_.Documents().Active(), nullptr);

    Call<HostDocSetChanged>(app_.Documents().FindByNumber(1)->Handle());
    EXPECT_EQ(tabs_->tabText(1), "a.pdf *");
    EXPECT_EQ(hooks_.Take(), std::vector<std::string>{"modified 1"});

    // A modified document asks first: Cancel keeps it, No closes it unsaved.
    app_.Answers().Queue("messageBox", 2);
    emit tabs_->tabCloseRequested(1);
    EXPECT_EQ(tabs_->count(), 3);
    app_.Answers().Queue("messageBox", 7);
    emit tabs_->tabCloseRequested(1);
    EXPECT_EQ(tabs_->count(), 2);
    EXPECT_EQ(hooks_.Take(), std::vector<std::string>{"closing 1"});
    EXPECT_EQ(app_.Documents().All().size(), 1u);
}

class DesktopPromptsTest : public AnnotationTablesTest {
  protected:
    HostDocument& OpenModified(const std::string& name) {
        window_.OpenFile(QString::fromStdString(WritePdf(files_, name, ThreePages())));
        HostDocument* document = app_.Documents().Active();
        Call<HostDocSetChanged>(document->Handle());
        return *document;
    }

    void Trigger(const QString& text) {
        for (QAction* action : window_.findChildren<QAction*>()) {
            if (action->text() == text)
                action->trigger();
        }
    }
    void Save() { Trigger(QStringLiteral("&Save")); }

    ui::MainWindow window_{app_};
};

TEST_F(DesktopPromptsTest, QuitAsksAboutEachModifiedDocumentAndCancelKeepsAll) {
    HostDocument& first = OpenModified("first.pdf");
    const std::string firstPath = first.Path();
    OpenModified("second.pdf");
    const std::string before = FileBytes(firstPath);

    // Yes saves the first; Cancel on the second keeps the window and both documents.
    app_.Answers().Queue("messageBox", 6);
    app_.Answers().Queue("messageBox", 2);
    EXPECT_FALSE(window_.close());
    ASSERT_EQ(app_.Documents().Tabs().size(), 2u);
    EXPECT_FALSE(app_.Documents().Tabs()[0]->IsModified());
    EXPECT_NE(FileBytes(firstPath), before);
    EXPECT_TRUE(app_.Documents().Tabs()[1]->IsModified());

    app_.Answers().Queue("messageBox", 7);
    EXPECT_TRUE(window_.close());
    EXPECT_EQ(app_.Answers().Pending("messageBox"), 0u);
}

TEST_F(DesktopPromptsTest, SavingUnappliedRedactMarksAsksFirst) {
    HostDocument& document = Open(ThreePages());
    const std::string path = document.Path();
    const std::string before = FileBytes(path);
    RedactWord(document, 0, "first");

    app_.Answers().Queue("messageBox", 2);
    Save();
    EXPECT_EQ(FileBytes(path), before);
    EXPECT_TRUE(document.IsModified());

    app_.Answers().Queue("messageBox", 1);
    Save();
    EXPECT_FALSE(document.IsModified());
    EXPECT_NE(FileBytes(path).find("/Redact"), std::string::npos);

    // Closing: Save at the close prompt asks about the marks too; Cancel there keeps the
    // document open and its file as it was.
    RedactWord(document, 1, "second");
    const std::string saved = FileBytes(path);
    app_.Answers().Queue("messageBox", 6);
    app_.Answers().Queue("messageBox", 2);
    Trigger(QStringLiteral("&Close"));
    EXPECT_EQ(app_.Answers().Pending("messageBox"), 0u);
    ASSERT_EQ(app_.Documents().Active(), &document);
    EXPECT_EQ(FileBytes(path), saved);
    app_.Answers().Queue("messageBox", 6);
    app_.Answers().Queue("messageBox", 1);
    Trigger(QStringLiteral("&Close"));
    EXPECT_TRUE(app_.Documents().All().empty());
    EXPECT_NE(FileBytes(path), saved);
}

// Answers the password dialogs as they come up, in order; an empty answer cancels.
void TypePasswords(std::vector<QString> answers) {
    QTimer::singleShot(0, [answers = std::move(answers)]() mutable {
        auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        const QString answer = answers.front();
        answers.erase(answers.begin());
        if (!answers.empty())
            TypePasswords(answers);
        if (answer.isEmpty()) {
            dialog->reject();
        } else {
            dialog->setTextValue(answer);
            dialog->accept();
        }
    });
}

TEST_F(DesktopPromptsTest, EncryptedFilesAskForTheirPasswordAndRepairedOnesSaySo) {
    engine::PdfDescription locked = ThreePages();
    locked.encryption = engine::Encryption{.user_password = "user-pw", .owner_password = "owner"};
    const std::string path = WritePdf(files_, "locked.pdf", locked);

    TypePasswords({"nope", ""});  // a wrong one, then Cancel: nothing opens, nothing more is said
    window_.OpenFile(QString::fromStdString(path));
    EXPECT_TRUE(app_.Documents().Tabs().empty());

    TypePasswords({"nope", "user-pw"});
    window_.OpenFile(QString::fromStdString(path));
    ASSERT_EQ(app_.Documents().Tabs().size(), 1u);
    EXPECT_EQ(app_.Documents().Tabs()[0]->Engine().PageCount(), 3);
    EXPECT_TRUE(window_.statusBar()->currentMessage().isEmpty());

    // A file cut before its cross-reference table opens repaired, with a word about it.
    const std::string bytes = FileBytes(WritePdf(files_, "whole.pdf", ThreePages()));
    const std::string cut = (files_ / "cut.pdf").string();
    std::ofstream(cut, std::ios::binary) << bytes.substr(0, bytes.rfind("xref"));
    window_.OpenFile(QString::fromStdString(cut));
    EXPECT_TRUE(window_.statusBar()->currentMessage().contains(QStringLiteral("repaired")));
}

}  // namespace
}  // namespace pdfhost::testing
