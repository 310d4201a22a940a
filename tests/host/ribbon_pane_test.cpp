// The ribbon, the task panes and the notification surface as plug-ins meet them through the
// tables, the scripted "ribbon" line, and the headless answers to the welcome dialog.
#include <QAction>
#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <sstream>

#include "automation/script_session.h"
#include "host_test_support.h"
#include "script_lines.h"
#include "ui/ribbon_widget.h"
#include "ui/task_pane_dock.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;

// ---- What the test's own "plug-in" records.

struct EntryLog {
    int executed = 0;
    int enabled = 1;
    void* client = nullptr;
};
EntryLog g_entry;

int Execute(void* client) {
    ++g_entry.executed;
    g_entry.client = client;
    return 1;
}
int Enabled(void*) {
    return g_entry.enabled;
}

struct PaneLog {
    int created = 0;
    int destroyed = 0;
    int closed = 0;
    QWidget* parent = nullptr;
    QPointer<QWidget> window;
    HostWideString title = nullptr;
};
PaneLog g_pane;

const char* PaneName(void*) {
    return "TestPane";
}
HostWideString PaneTitle(void*) {
    return g_pane.title;
}
HostWindow CreatePane(void*, HostWindow parent) {
    ++g_pane.created;
    g_pane.parent = reinterpret_cast<QWidget*>(parent);
    g_pane.window = new QWidget(g_pane.parent);
    return reinterpret_cast<HostWindow>(g_pane.window.data());
}
void DestroyPane(void*) {
    ++g_pane.destroyed;
    delete g_pane.window.data();
}
int PaneClosed(void*) {
    ++g_pane.closed;
    return 1;
}

int g_notified = 0;
void Notify(void*, int ready) {
    g_notified += ready;
}

template <typename Handle>
HostRibbonItem AsItem(Handle handle) {
    return reinterpret_cast<HostRibbonItem>(handle);
}

class RibbonAndPanes : public testing::HostFixture {
  protected:
    RibbonAndPanes() {
        g_entry = EntryLog{};
        g_pane = PaneLog{};
        g_notified = 0;
        app_.LoadPlugins();
        frame_ = app_.Frames().front();
    }

    std::vector<Json::Value> Run(const std::string& line) {
        out_.str("");
        session_.HandleLine(line);
        return testing::ParseScriptLines(out_.str());
    }

    bool PaneShownInState() {
        const auto lines = Run(R"({"host":"state"})");
        return !lines.empty() && lines.back()["state"]["paneShown"].asBool();
    }

    // The host's panel with a drop-down "Sablemark" holding one entry.
    HostRibbonItem AddEntry(const wchar_t* name, bool withEnable) {
        const HostRibbonBar bar = CallHost<Op::HostRibbonGetBar>(frame_);
        const HostRibbonCategory category =
            CallHost<Op::HostRibbonFindCategory>(bar, L"Ribbon_Category_Protect");
        const HostRibbonPanel panel =
            CallHost<Op::HostRibbonFindPanel>(category, L"Protect_Panel_Redaction");
        HostRibbonElement element = CallHost<Op::HostRibbonFindElement>(panel, L"Sablemark");
        if (element == nullptr)
            element = CallHost<Op::HostRibbonAddElement>(panel, 8, L"Sablemark", L"Sable Mark", 0);
        const HostRibbonItem entry =
            CallHost<Op::HostRibbonAddSubItem>(element, 0, name, L"Title", 0, 0, 0, 0);
        CallHost<Op::HostRibbonSetExecuteProc>(entry, &Execute);
        if (withEnable)
            CallHost<Op::HostRibbonSetEnableProc>(entry, &Enabled);
        return entry;
    }

    HostPaneRecord PaneRecord() {
        HostPaneRecord record;
        record.setWord(kPaneClientData, &record);
        record.setWord(kPaneGetName, reinterpret_cast<void*>(&PaneName));
        record.setWord(kPaneGetTitle, reinterpret_cast<void*>(&PaneTitle));
        record.setWord(kPaneCreateWindow, reinterpret_cast<void*>(&CreatePane));
        record.setWord(kPaneDestroyWindow, reinterpret_cast<void*>(&DestroyPane));
        record.setWord(kPaneClosed, reinterpret_cast<void*>(&PaneClosed));
        return record;
    }

    HostFrame frame_ = nullptr;
    std::ostringstream out_;
    ScriptSession session_{app_, out_};
};

TEST_F(RibbonAndPanes, BarsHoldTheProtectCategoryAndTakeElementsAndEntries) {
    const HostRibbonBar bar = CallHost<Op::HostRibbonGetBar>(frame_);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(CallHost<Op::HostRibbonGetBar>(frame_), bar);
    EXPECT_EQ(CallHost<Op::HostRibbonGetBar>(reinterpret_cast<HostFrame>(0x10)), nullptr);

    const HostRibbonCategory category =
        CallHost<Op::HostRibbonFindCategory>(bar, L"Ribbon_Category_Protect");
    ASSERT_NE(category, nullptr);
    EXPECT_EQ(CallHost<Op::HostRibbonFindCategory>(bar, L"Ribbon_Category_View"), nullptr);
    const HostRibbonPanel panel =
        CallHost<Op::HostRibbonFindPanel>(category, L"Protect_Panel_Redaction");
    ASSERT_NE(panel, nullptr);
    // A panel is not a category: nothing is added under the wrong kind of node.
    EXPECT_EQ(CallHost<Op::HostRibbonAddPanel>(reinterpret_cast<HostRibbonCategory>(panel),
                                               L"Inner", L"Inner", 0),
              nullptr);

    const HostRibbonElement element =
        CallHost<Op::HostRibbonAddElement>(panel, 8, L"Sablemark", L"Sable Mark", 0);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(CallHost<Op::HostRibbonFindElement>(panel, L"Sablemark"), element);
    const RibbonNode* shown = app_.Ribbons().FindButton(reinterpret_cast<uintptr_t>(element));
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->elementType, 8);

    const HostRibbonItem second =
        CallHost<Op::HostRibbonAddSubItem>(element, 0, L"Second", L"Second", 1, 0, 0, 0);
    const HostRibbonItem first =
        CallHost<Op::HostRibbonAddSubItem>(element, 0, L"First", L"First", 0, 0, 0, 0);
    EXPECT_EQ(CallHost<Op::HostRibbonItemGetButton>(first),
              reinterpret_cast<HostRibbonButton>(first));
    EXPECT_EQ(CallHost<Op::HostRibbonItemGetButton>(AsItem(element)), nullptr);
    const auto entries = app_.Ribbons().Children(reinterpret_cast<uintptr_t>(element));
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0]->name, L"First");
    EXPECT_EQ(entries[1]->handle, reinterpret_cast<uintptr_t>(second));
}

TEST_F(RibbonAndPanes, TheRibbonLinePressesEntriesTheirEnableProcedureAllows) {
    const HostRibbonItem entry = AddEntry(L"AutoRedaction", true);
    AddEntry(L"Profile", false);

    EXPECT_TRUE(Run(R"({"host":"ribbon","item":"AutoRedaction"})").empty());
    EXPECT_EQ(g_entry.executed, 1);
    EXPECT_EQ(g_entry.client, entry);

    g_entry.enabled = 0;
    auto lines = Run(R"({"host":"ribbon","item":"AutoRedaction"})");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["error"].asString(), "disabled: AutoRedaction");
    EXPECT_EQ(g_entry.executed, 1);

    // Without an enable procedure an entry is always enabled.
    EXPECT_TRUE(Run(R"({"host":"ribbon","item":"Profile"})").empty());
    EXPECT_EQ(g_entry.executed, 2);

    lines = Run(R"({"host":"ribbon","item":"Nope"})");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["error"].asString(), "no ribbon item: Nope");
    lines = Run(R"({"host":"ribbon"})");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].isMember("error"));
}

TEST_F(RibbonAndPanes, TheDesktopRibbonShowsEntriesWithImagesAndKeepsTheirStatesCurrent) {
    for (const wchar_t* name :
         {L"Ribbon_Protect_Sable_Mark_32", L"Ribbon_Protect_Sable_Mark_16",
          L"Ribbon_Protect_Auto Redaction_32", L"Ribbon_Protect_Auto Redaction_16",
          L"Ribbon_Protect_Batch Redaction_32", L"Ribbon_Protect_Batch Redaction_16",
          L"Ribbon_Protect_Profile_32", L"Ribbon_Protect_Profile_16"}) {
        EXPECT_FALSE(ui::RibbonWidget::ImageNamed(name).isNull())
            << QString::fromWCharArray(name).toStdString();
    }
    EXPECT_TRUE(ui::RibbonWidget::ImageNamed(L"Ribbon_Protect_Nothing_32").isNull());

    ui::RibbonWidget ribbon(app_, frame_);
    const HostRibbonItem entry = AddEntry(L"AutoRedaction", true);
    CallHost<Op::HostRibbonSetImages>(entry, L"Ribbon_Protect_Auto Redaction_32",
                                      L"Ribbon_Protect_Auto Redaction_16");
    EXPECT_EQ(ribbon.tabText(0), "Protect");
    auto* button = ribbon.findChild<QToolButton*>("Sablemark");
    ASSERT_NE(button, nullptr);
    ASSERT_NE(button->menu(), nullptr);
    auto* action = ribbon.findChild<QAction*>("AutoRedaction");
    ASSERT_NE(action, nullptr);
    EXPECT_FALSE(action->icon().isNull());
    EXPECT_TRUE(action->isEnabled());

    // A change of the documents asks the enable procedure again.
    g_entry.enabled = 0;
    app_.ActivateOtherTab();
    EXPECT_FALSE(action->isEnabled());
    g_entry.enabled = 1;
    action->setEnabled(true);
    action->trigger();
    EXPECT_TRUE(testing::ProcessEventsUntil([] { return g_entry.executed == 1; }));
}

TEST_F(RibbonAndPanes, APaneShowsThePluginsWindowInADockAndReportsEveryHiding) {
    HostPaneRecord record = PaneRecord();
    CallHost<Op::HostAppRegisterPane>(&record);
    EXPECT_FALSE(PaneShownInState());

    HostWideString title = CallHost<Op::HostWideStringNew>();
    CallHost<Op::HostWideStringSet>(title, L"Sable Mark");
    g_pane.title = title;
    CallHost<Op::HostAppShowPane>("TestPane", 1);
    ui::TaskPaneDock* dock = app_.Panes().DockOf("TestPane");
    ASSERT_NE(dock, nullptr);
    EXPECT_EQ(dock->objectName(), "TestPane");
    EXPECT_EQ(dock->windowTitle(), "Sable Mark");
    EXPECT_EQ(g_pane.created, 1);
    EXPECT_EQ(g_pane.parent, dock);
    EXPECT_EQ(dock->widget(), g_pane.window.data());
    EXPECT_TRUE(PaneShownInState());

    CallHost<Op::HostAppShowPane>("TestPane", 1);
    EXPECT_EQ(g_pane.created, 1);
    EXPECT_EQ(g_pane.closed, 0);

    CallHost<Op::HostAppShowPane>("TestPane", 0);
    EXPECT_EQ(g_pane.closed, 1);
    EXPECT_FALSE(PaneShownInState());
    CallHost<Op::HostAppShowPane>("TestPane", 0);
    EXPECT_EQ(g_pane.closed, 1);

    // The user closes the dock.
    CallHost<Op::HostAppShowPane>("TestPane", 1);
    EXPECT_TRUE(PaneShownInState());
    dock->close();
    EXPECT_EQ(g_pane.closed, 2);
    EXPECT_FALSE(PaneShownInState());

    // Unknown panes are left alone.
    CallHost<Op::HostAppShowPane>("OtherPane", 1);
    EXPECT_FALSE(PaneShownInState());

    app_.UnloadPlugins();
    EXPECT_EQ(g_pane.destroyed, 1);
    EXPECT_TRUE(g_pane.window.isNull());
    EXPECT_EQ(app_.Panes().DockOf("TestPane"), nullptr);
    CallHost<Op::HostWideStringDelete>(title);
}

TEST_F(RibbonAndPanes, TheSurfaceTellsEachRecordOnceAndKeepsNoticesOfKnownSources) {
    const HostBubbleSource source = CallHost<Op::HostBubbleCreate>();
    ASSERT_NE(source, nullptr);
    HostBubbleRecord record;
    record.setWord(kBubbleDeclaredSize, reinterpret_cast<void*>(kHostBubbleRecordSize));
    record.setWord(kBubbleNotify, reinterpret_cast<void*>(&Notify));
    CallHost<Op::HostBubbleRegister>(source, &record);
    app_.Bubbles().SurfaceReady();
    app_.Bubbles().SurfaceReady();
    EXPECT_EQ(g_notified, 1);

    CallHost<Op::HostBubbleShow>(source, 0u, 0, L"Hello", 10000, 2, 0);
    CallHost<Op::HostBubbleShow>(reinterpret_cast<HostBubbleSource>(0x10), 0u, 0, L"Stray", 1, 2,
                                 0);
    ASSERT_EQ(app_.Bubbles().Shown().size(), 1u);
    EXPECT_EQ(app_.Bubbles().Shown()[0].text, L"Hello");
    EXPECT_EQ(app_.Bubbles().Shown()[0].milliseconds, 10000);

    CallHost<Op::HostBubbleUnregister>(source, &record);
    HostBubbleRecord later = record;
    CallHost<Op::HostBubbleRegister>(source, &later);
    CallHost<Op::HostBubbleUnregister>(source, &later);
    app_.Bubbles().SurfaceReady();
    EXPECT_EQ(g_notified, 1);
}

// A dialog shaped like the plug-in's welcome dialog: each button ends it with its own code.
class WelcomeLike : public QDialog {
  public:
    WelcomeLike() {
        setObjectName("CSablemarkWelcomeDlg");
        setWindowTitle("Welcome");
        int code = 10;
        for (const char* name : {"SignInButton", "SignUpButton", "CancalButton"}) {
            auto* button = new QPushButton(name, this);
            button->setObjectName(name);
            connect(button, &QPushButton::clicked, this, [this, code] { done(code); });
            ++code;
        }
    }
};

TEST_F(RibbonAndPanes, QueuedWelcomeAnswersPressTheirButtonOrCancel) {
    out_.str("");
    app_.Answers().Queue("welcome", 1);
    {
        WelcomeLike dialog;
        EXPECT_EQ(dialog.exec(), 11);
    }
    auto lines = testing::ParseScriptLines(out_.str());
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["dialog"].asString(), "welcome");
    EXPECT_EQ(lines[0]["title"].asString(), "Welcome");
    EXPECT_EQ(lines[0]["answer"].asInt(), 1);

    out_.str("");
    {
        WelcomeLike dialog;
        EXPECT_EQ(dialog.exec(), 12);
    }
    lines = testing::ParseScriptLines(out_.str());
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0]["answer"].asInt(), 2);
    EXPECT_EQ(lines[1]["unanswered"].asString(), "welcome");
}

}  // namespace
}  // namespace pdfhost
