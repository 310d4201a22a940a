// The desktop window follows the host's documents, and the user's tab changes reach the hooks.
#include <QLabel>
#include <QTabWidget>

#include "host_test_support.h"
#include "ui/document_view.h"
#include "ui/main_window.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;

std::vector<std::string> g_calls;
void OnActivate(void*, HostDoc doc) {
    g_calls.push_back("activate " +
                      std::to_string(HostApp::Current()->Documents().Find(doc)->Number()));
}
void OnOtherTab(void*) {
    g_calls.push_back("other-tab");
}
void OnClosing(void*, HostDoc) {
    g_calls.push_back("closing");
}

class MainWindowTest : public testing::HostFixture {
  protected:
    MainWindowTest() {
        g_calls.clear();
        record_.setWord(kDocEventActivate, reinterpret_cast<void*>(&OnActivate));
        record_.setWord(kDocEventOtherTab, reinterpret_cast<void*>(&OnOtherTab));
        record_.setWord(kDocEventClosing, reinterpret_cast<void*>(&OnClosing));
        CallHost<Op::HostAppRegisterDocEvents>(&record_);
        tabs_ = window_.findChild<QTabWidget*>();
    }

    HostDocEventRecord record_;
    ui::MainWindow window_{app_};
    QTabWidget* tabs_ = nullptr;
};

TEST_F(MainWindowTest, TabsFollowTheDocumentsAndFireHooks) {
    ASSERT_NE(tabs_, nullptr);
    EXPECT_EQ(app_.MainWindow(), &window_);
    EXPECT_EQ(tabs_->count(), 1);  // the start tab

    window_.OpenFile(
        QString::fromStdString(testing::WritePdf(files_, "a.pdf", testing::ThreePages())));
    app_.NewDocument();
    ASSERT_EQ(tabs_->count(), 3);
    EXPECT_EQ(tabs_->currentIndex(), 2);
    EXPECT_EQ(tabs_->tabText(1), "a.pdf");
    EXPECT_EQ(g_calls, (std::vector<std::string>{"activate 1", "activate 2"}));

    // The page is rendered.
    auto* view = qobject_cast<ui::DocumentView*>(tabs_->widget(1));
    ASSERT_NE(view, nullptr);
    const QLabel* picture = nullptr;
    for (const QLabel* label : view->findChildren<QLabel*>()) {
        if (!label->pixmap().isNull())
            picture = label;
    }
    ASSERT_NE(picture, nullptr);
    EXPECT_GT(picture->pixmap().width(), 100);
    view->ShowPage(5);
    EXPECT_EQ(view->CurrentPage(), 2);

    g_calls.clear();
    tabs_->setCurrentIndex(1);
    tabs_->setCurrentIndex(0);
    EXPECT_EQ(g_calls, (std::vector<std::string>{"activate 1", "other-tab"}));
    EXPECT_EQ(app_.Documents().Active(), nullptr);

    CallHost<Op::HostDocSetChanged>(app_.Documents().FindByNumber(1)->Handle());
    EXPECT_EQ(tabs_->tabText(1), "a.pdf *");

    g_calls.clear();
    emit tabs_->tabCloseRequested(1);
    EXPECT_EQ(tabs_->count(), 2);
    EXPECT_EQ(g_calls, (std::vector<std::string>{"closing"}));
    EXPECT_EQ(app_.Documents().All().size(), 1u);
}

}  // namespace
}  // namespace pdfhost
