// Progress windows as plug-ins drive them, seen on the scripted output.
#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <sstream>

#include "automation/script_session.h"
#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;
using testing::Compact;

class ProgressTablesTest : public testing::HostFixture {
  protected:
    ProgressTablesTest() { app_.LoadPlugins(); }

    std::vector<std::string> Lines() {
        std::vector<std::string> texts;
        for (const Json::Value& line : testing::TakeScriptLines(out_))
            texts.push_back(Compact(line));
        return texts;
    }

    std::ostringstream out_;
    ScriptSession session_{app_, out_};
};

TEST_F(ProgressTablesTest, ShowUpdateAndCloseArePrintedOnlyWhenSomethingChanges) {
    const HostProgress progress =
        CallHost<Op::HostProgressNew>(CallHost<Op::HostAppGetMainWindow>(), 0);
    ASSERT_NE(progress, nullptr);
    CallHost<Op::HostProgressSetRange>(progress, 0, 100);
    EXPECT_TRUE(Lines().empty()) << "nothing shows before there is something to show";

    CallHost<Op::HostProgressSetText>(progress, L"Uploading file...");
    CallHost<Op::HostProgressSetPos>(progress, 0);
    CallHost<Op::HostProgressPump>(progress);
    CallHost<Op::HostProgressSetPos>(progress, 0);
    CallHost<Op::HostProgressSetPos>(progress, 40);
    CallHost<Op::HostProgressSetText>(progress, L"Uploading file...");
    CallHost<Op::HostProgressSetText>(progress, L"Almost there");
    CallHost<Op::HostProgressPump>(progress);
    CallHost<Op::HostProgressDestroy>(progress);
    EXPECT_EQ(Lines(), (std::vector<std::string>{
                           R"({"progress":"show","title":"Uploading file..."})",
                           R"({"pos":0,"progress":"update"})",
                           R"({"pos":40,"progress":"update"})",
                           R"({"progress":"update","title":"Almost there"})",
                           R"({"progress":"close"})",
                       }));
    // The handle is gone.
    CallHost<Op::HostProgressSetPos>(progress, 50);
    CallHost<Op::HostProgressDestroy>(progress);
    EXPECT_TRUE(Lines().empty());
}

TEST_F(ProgressTablesTest, AWindowThatNeverShowedGoesSilentlyAndCancelIsAFlag) {
    const HostProgress quiet = CallHost<Op::HostProgressNew>(nullptr, 0);
    CallHost<Op::HostProgressDestroy>(quiet);
    EXPECT_TRUE(Lines().empty());

    const HostProgress progress = CallHost<Op::HostProgressNew>(nullptr, 1);
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 0);
    CallHost<Op::HostProgressSetCancelled>(progress, 1);
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 1);
    CallHost<Op::HostProgressSetCancelled>(progress, 0);
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 0);
    CallHost<Op::HostProgressSetPos>(progress, 3);
    CallHost<Op::HostProgressDestroy>(progress);
    EXPECT_EQ(Lines(), (std::vector<std::string>{R"({"progress":"show","title":""})",
                                                 R"({"pos":3,"progress":"update"})",
                                                 R"({"progress":"close"})"}));
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 0);
}

// On the desktop the window is a real progress dialog whose Cancel button the plug-in can ask
// about.
TEST(DesktopProgressWindow, CancelIsSeenUntilAcknowledged) {
    testing::TempFolder profile;
    HostOptions options;
    options.profile = profile.Path();
    options.headless = false;
    HostApp app(options);
    const HostProgress progress = CallHost<Op::HostProgressNew>(nullptr, 1);
    CallHost<Op::HostProgressSetText>(progress, L"Running OCR");
    CallHost<Op::HostProgressSetPos>(progress, 30);
    QProgressDialog* dialog = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<QProgressDialog*>(widget); found && found->isVisible())
            dialog = found;
    }
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->labelText(), "Running OCR");
    EXPECT_EQ(dialog->value(), 30);
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 0);
    auto* cancel = dialog->findChild<QPushButton*>();
    ASSERT_NE(cancel, nullptr);
    cancel->click();
    CallHost<Op::HostProgressPump>(progress);
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 1);
    CallHost<Op::HostProgressSetCancelled>(progress, 0);
    EXPECT_EQ(CallHost<Op::HostProgressIsCancelled>(progress), 0);
    CallHost<Op::HostProgressDestroy>(progress);
    for (QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_EQ(qobject_cast<QProgressDialog*>(widget), nullptr);
}

}  // namespace
}  // namespace pdfhost
