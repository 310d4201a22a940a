// Progress windows as plug-ins drive them, seen on the scripted output.
#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>

#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

class ProgressTablesTest : public HostFixture {
  protected:
    ProgressTablesTest() { app_.LoadPlugins(); }

    std::vector<std::string> Lines() { return script_.TakeTexts(); }

    Scripted script_{app_};
};

TEST_F(ProgressTablesTest, ShowUpdateAndCloseArePrintedOnlyWhenSomethingChanges) {
    const HostProgress progress = Call<HostProgressNew>(Call<HostAppGetMainWindow>(), 0);
    ASSERT_NE(progress, nullptr);
    Call<HostProgressSetRange>(progress, 0, 100);
    EXPECT_TRUE(Lines().empty()) << "nothing shows before there is something to show";

    Call<HostProgressSetText>(progress, L"Uploading file...");
    Call<HostProgressSetPos>(progress, 0);
    Call<HostProgressPump>(progress);
    Call<HostProgressSetPos>(progress, 0);
    Call<HostProgressSetPos>(progress, 40);
    Call<HostProgressSetText>(progress, L"Uploading file...");
    Call<HostProgressSetText>(progress, L"Almost there");
    Call<HostProgressPump>(progress);
    Call<HostProgressDestroy>(progress);
    EXPECT_EQ(Lines(), (std::vector<std::string>{
                           R"({"progress":"show","title":"Uploading file..."})",
                           R"({"pos":0,"progress":"update"})",
                           R"({"pos":40,"progress":"update"})",
                           R"({"progress":"update","title":"Almost there"})",
                           R"({"progress":"close"})",
                       }));
    // The handle is gone.
    Call<HostProgressSetPos>(progress, 50);
    Call<HostProgressDestroy>(progress);
    EXPECT_TRUE(Lines().empty());
}

TEST_F(ProgressTablesTest, AWindowThatNeverShowedGoesSilentlyAndCancelIsAFlag) {
    const HostProgress quiet = Call<HostProgressNew>(nullptr, 0);
    Call<HostProgressDestroy>(quiet);
    EXPECT_TRUE(Lines().empty());

    const HostProgress progress = Call<HostProgressNew>(nullptr, 1);
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 0);
    Call<HostProgressSetCancelled>(progress, 1);
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 1);
    Call<HostProgressSetCancelled>(progress, 0);
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 0);
    Call<HostProgressSetPos>(progress, 3);
    Call<HostProgressDestroy>(progress);
    EXPECT_EQ(Lines(), (std::vector<std::string>{R"({"progress":"show","title":""})",
                                                 R"({"pos":3,"progress":"update"})",
                                                 R"({"progress":"close"})"}));
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 0);
}

// On the desktop the window is a real progress dialog whose Cancel button the plug-in can ask
// about.
TEST(DesktopProgressWindow, CancelIsSeenUntilAcknowledged) {
    TempFolder profile;
    HostApp app(OptionsOn(profile.Path(), /*headless=*/false));
    const HostProgress progress = Call<HostProgressNew>(nullptr, 1);
    Call<HostProgressSetText>(progress, L"Running OCR");
    Call<HostProgressSetPos>(progress, 30);
    QProgressDialog* dialog = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<QProgressDialog*>(widget); found && found->isVisible())
            dialog = found;
    }
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->labelText(), "Running OCR");
    EXPECT_EQ(dialog->value(), 30);
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 0);
    auto* cancel = dialog->findChild<QPushButton*>();
    ASSERT_NE(cancel, nullptr);
    cancel->click();
    Call<HostProgressPump>(progress);
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 1);
    Call<HostProgressSetCancelled>(progress, 0);
    EXPECT_EQ(Call<HostProgressIsCancelled>(progress), 0);
    Call<HostProgressDestroy>(progress);
    for (QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_EQ(qobject_cast<QProgressDialog*>(widget), nullptr);
}

}  // namespace
}  // namespace pdfhost::testing
