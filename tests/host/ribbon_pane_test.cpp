// The ribbon, the task panes and the notification surface as plug-ins meet them through the
// tables, the scripted "ribbon" line, the desktop ribbon's tooltips and the feedback of a press,
// and the headless answers to the welcome dialog.
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

#include "host_test_support.h"
#include "script_lines.h"
#include "ui/main_window.h"
#include "ui/ribbon_widget.h"
#include "ui/task_pane_dock.h"

namespace pdfhost::testing {
namespace {

// ---- What the test's own "plug-in" records.

struct EntryLog {
    int executed = 0;
    int enabled = 1;
    void* client = nullptr;
    QMainWindow* window = nullptr;  // whose status text a press notes, with the cursor's shape
    QString status;
    bool busy = false;
};
EntryLog g_entry;

int Execute(void* client) {
    ++g_entry.executed;
    g_entry.client = client;
    if (g_entry.window != nullptr)
        g_entry.status = g_entry.window->statusBar()->currentMessage();
    const QCursor* cursor = QApplication::overrideCursor();
    g_entry.busy = cursor != nullptr && cursor->shape() == Qt::BusyCursor;
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

int g_notified = 0;

class RibbonAndPanes : public HostFixture {
  protected:
    RibbonAndPanes() {
        g_entry = EntryLog{};
        g_pane = PaneLog{};
        g_notified = 0;
        app_.LoadPlugins();
        frame_ = app_.Frames().front();
    }

    bool PaneShownInState() {
        const auto lines = script_.Run({R"({"host":"state"})"});
        return !lines.empty() && lines.back()["state"]["paneShown"].asBool();
    }

    // The host's panel with a drop-down "Sablemark" holding one entry.
    HostRibbonItem AddEntry(const wchar_t* name, bool withEnable) {
        const HostRibbonElement element = Call<HostRibbonFindElement>(Panel(), L"Sablemark");
        const HostRibbonItem entry = Call<HostRibbonAddSubItem>(
            element != nullptr
                ? element
                : Call<HostRibbonAddElement>(Panel(), 8, L"Sablemark", L"Sable Mark", 0),
            0, name, L"Title", 0, 0, 0, 0);
        Call<HostRibbonSetExecuteProc>(entry, &Execute);
        if (withEnable)
            Call<HostRibbonSetEnableProc>(entry, &Enabled);
        return entry;
    }
    HostRibbonPanel Panel() {
        return Call<HostRibbonFindPanel>(
            Call<HostRibbonFindCategory>(Call<HostRibbonGetBar>(frame_),
                                         L"Ribbon_Category_Protect"),
            L"Protect_Panel_Redaction");
    }

    HostFrame frame_ = nullptr;
    Scripted script_{app_};
};

TEST_F(RibbonAndPanes, BarsHoldTheProtectCategoryAndTakeElementsAndEntries) {
    const HostRibbonBar bar = Call<HostRibbonGetBar>(frame_);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(Call<HostRibbonGetBar>(frame_), bar);
    EXPECT_EQ(Call<HostRibbonGetBar>(reinterpret_cast<HostFrame>(0x10)), nullptr);
    ASSERT_NE(Call<HostRibbonFindCategory>(bar, L"Ribbon_Category_Protect"), nullptr);
    EXPECT_EQ(Call<HostRibbonFindCategory>(bar, L"Ribbon_Category_View"), nullptr);
    const HostRibbonPanel panel = Panel();
    ASSERT_NE(panel, nullptr);
    // A panel is not a category: nothing is added under the wrong kind of node.
    EXPECT_EQ(Call<HostRibbonAddPanel>(reinterpret_cast<HostRibbonCategory>(panel), L"Inner",
                                       L"Inner", 0),
              nullptr);

    const HostRibbonElement element =
        Call<HostRibbonAddElement>(panel, 8, L"Sablemark", L"Sable Mark", 0);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(Call<HostRibbonFindElement>(panel, L"Sablemark"), element);

    const HostRibbonItem second =
        Call<HostRibbonAddSubItem>(element, 0, L"Second", L"Second", 1, 0, 0, 0);
    const HostRibbonItem first =
        Call<HostRibbonAddSubItem>(element, 0, L"First", L"First", 0, 0, 0, 0);
    EXPECT_EQ(Call<HostRibbonItemGetButton>(first), reinterpret_cast<HostRibbonButton>(first));
    EXPECT_EQ(Call<HostRibbonItemGetButton>(reinterpret_cast<HostRibbonItem>(element)), nullptr);
    const auto entries = app_.Ribbons().Children(reinterpret_cast<uintptr_t>(element));
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0]->name, L"First");
    EXPECT_EQ(entries[1]->handle, reinterpret_cast<uintptr_t>(second));
}

TEST_F(RibbonAndPanes, TheRibbonLinePressesEntriesTheirEnableProcedureAllows) {
    const HostRibbonItem entry = AddEntry(L"AutoRedaction", true);
    const HostRibbonItem profile = AddEntry(L"Profile", false);
    const struct {
        const char* item;  // null: no item named
        int enabled;
        const char* error;  // null: none
        int executed;
        HostRibbonItem pressed;  // the client of the last press
    } cases[] = {
        {"AutoRedaction", 1, nullptr, 1, entry},
        {"AutoRedaction", 0, "disabled: AutoRedaction", 1, entry},
        // Without an enable procedure an entry is always enabled.
        {"Profile", 0, nullptr, 2, profile},
        {"Nope", 0, "no ribbon item: Nope", 2, profile},
        {nullptr, 0, R"("ribbon" needs an "item" name)", 2, profile},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.item != nullptr ? c.item : "none");
        g_entry.enabled = c.enabled;
        const auto lines = script_.Run(
            {c.item != nullptr ? std::string(R"({"host":"ribbon","item":")") + c.item + "\"}"
                               : R"({"host":"ribbon"})"});
        EXPECT_EQ(g_entry.executed, c.executed);
        EXPECT_EQ(g_entry.client, c.pressed);
        ASSERT_EQ(lines.size(), c.error != nullptr ? 1u : 0u);
        if (c.error != nullptr) {
            EXPECT_EQ(lines[0]["error"].asString(), c.error);
        }
    }
}

TEST_F(RibbonAndPanes, TheDesktopRibbonShowsEntriesWithImagesAndKeepsTheirStatesCurrent) {
    for (const wchar_t* name : {L"Sable_Mark", L"Auto Redaction", L"Batch Redaction", L"Profile"}) {
        for (const wchar_t* size : {L"_32", L"_16"}) {
            const std::wstring image = L"Ribbon_Protect_" + std::wstring(name) + size;
            EXPECT_FALSE(ui::RibbonWidget::ImageNamed(image.c_str()).isNull())
                << QString::fromStdWString(image).toStdString();
        }
    }
    EXPECT_TRUE(ui::RibbonWidget::ImageNamed(L"Ribbon_Protect_Nothing_32").isNull());

    ui::RibbonWidget ribbon(app_, frame_);
    const HostRibbonItem entry = AddEntry(L"AutoRedaction", true);
    Call<HostRibbonSetImages>(entry, L"Ribbon_Protect_Auto Redaction_32",
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
    EXPECT_TRUE(ProcessEventsUntil([] { return g_entry.executed == 1; }));
}

TEST_F(RibbonAndPanes, APaneShowsThePluginsWindowInADockAndReportsEveryHiding) {
    HostPaneRecord record;
    record.setWord(kPaneClientData, &record);
    SetHook(record, kPaneGetName, [](void*) { return "TestPane"; });
    SetHook(record, kPaneGetTitle, [](void*) { return g_pane.title; });
    SetHook(record, kPaneCreateWindow, [](void*, HostWindow parent) {
        ++g_pane.created;
        g_pane.parent = reinterpret_cast<QWidget*>(parent);
        g_pane.window = new QWidget(g_pane.parent);
        return reinterpret_cast<HostWindow>(g_pane.window.data());
    });
    SetHook(record, kPaneDestroyWindow, [](void*) {
        ++g_pane.destroyed;
        delete g_pane.window.data();
    });
    SetHook(record, kPaneClosed, [](void*) {
        ++g_pane.closed;
        return 1;
    });
    Call<HostAppRegisterPane>(&record);
    EXPECT_FALSE(PaneShownInState());

    HostWideString title = Call<HostWideStringNew>();
    Call<HostWideStringSet>(title, L"Sable Mark");
    g_pane.title = title;
    Call<HostAppShowPane>("TestPane", 1);
    ui::TaskPaneDock* dock = app_.Panes().DockOf("TestPane");
    ASSERT_NE(dock, nullptr);
    EXPECT_EQ(dock->objectName(), "TestPane");
    EXPECT_EQ(dock->windowTitle(), "Sable Mark");
    EXPECT_EQ(g_pane.parent, dock);
    EXPECT_EQ(dock->widget(), g_pane.window.data());

    // Each step: the pane shown or hidden by name, or the user closing the dock; then the
    // windows made, the hidings reported, and what the state says.
    const struct {
        const char* name;  // null: the dock is closed
        int show;
        int created;
        int closed;
        bool shown;
    } steps[] = {
        {"TestPane", 1, 1, 0, true},  {"TestPane", 0, 1, 1, false},
        {"TestPane", 0, 1, 1, false}, {"TestPane", 1, 1, 1, true},
        {nullptr, 0, 1, 2, false},    {"OtherPane", 1, 1, 2, false},  // unknown: left alone
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        if (step.name != nullptr)
            Call<HostAppShowPane>(step.name, step.show);
        else
            dock->close();
        EXPECT_EQ(g_pane.created, step.created);
        EXPECT_EQ(g_pane.closed, step.closed);
        EXPECT_EQ(PaneShownInState(), step.shown);
    }

    app_.UnloadPlugins();
    EXPECT_EQ(g_pane.destroyed, 1);
    EXPECT_TRUE(g_pane.window.isNull());
    EXPECT_EQ(app_.Panes().DockOf("TestPane"), nullptr);
    Call<HostWideStringDelete>(title);
}

TEST_F(RibbonAndPanes, TheSurfaceTellsEachRecordOnceAndKeepsNoticesOfKnownSources) {
    const HostBubbleSource source = Call<HostBubbleCreate>();
    ASSERT_NE(source, nullptr);
    HostBubbleRecord record;
    record.setWord(kBubbleDeclaredSize, reinterpret_cast<void*>(kHostBubbleRecordSize));
    SetHook(record, kBubbleNotify, [](void*, int ready) { g_notified += ready; });
    Call<HostBubbleRegister>(source, &record);
    app_.Bubbles().SurfaceReady();
    app_.Bubbles().SurfaceReady();
    EXPECT_EQ(g_notified, 1);

    Call<HostBubbleShow>(source, 0u, 0, L"Hello", 10000, 2, 0);
    Call<HostBubbleShow>(reinterpret_cast<HostBubbleSource>(0x10), 0u, 0, L"Stray", 1, 2, 0);
    ASSERT_EQ(app_.Bubbles().Shown().size(), 1u);
    EXPECT_EQ(app_.Bubbles().Shown()[0].text, L"Hello");
    EXPECT_EQ(app_.Bubbles().Shown()[0].milliseconds, 10000);

    Call<HostBubbleUnregister>(source, &record);
    HostBubbleRecord later = record;
    Call<HostBubbleRegister>(source, &later);
    Call<HostBubbleUnregister>(source, &later);
    app_.Bubbles().SurfaceReady();
    EXPECT_EQ(g_notified, 1);
}

// The desktop's ribbon: an entry of the window's own ribbon, with a tooltip.
class DesktopRibbon : public RibbonAndPanes {
  protected:
    DesktopRibbon() {
        frame_ = HostApp::FrameHandle(window_);
        g_entry.window = &window_;
        Call<HostRibbonSetTooltip>(AddEntry(L"Batch", true), L"Runs over files");
    }

    QAction* Entry() { return window_.findChild<QAction*>(QStringLiteral("Batch")); }

    ui::MainWindow window_{app_};
};

TEST_F(DesktopRibbon, ADisabledEntrysTooltipSaysWhy) {
    const struct {
        bool documentOpen;
        int enabled;
        const char* tooltip;
    } cases[] = {
        {false, 1, "Runs over files"},
        {false, 0, "Runs over files\nUnavailable without an open document: open a PDF file first."},
        {true, 0,
         "Runs over files\nUnavailable while a document is open: close the open documents first."},
        {true, 1, "Runs over files"},
    };
    for (const auto& c : cases) {
        g_entry.enabled = c.enabled;
        if (c.documentOpen && app_.Documents().All().empty())
            Open({.pages = {engine::PageDescription::Blank()}});
        app_.Ribbons().StatesChanged();
        QAction* entry = Entry();
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->isEnabled(), c.enabled == 1);
        EXPECT_EQ(entry->toolTip().toStdString(), c.tooltip) << c.documentOpen << c.enabled;
        // The entry lives in the drop-down's menu, which shows it only when told to.
        auto* menu = qobject_cast<QMenu*>(entry->parent());
        ASSERT_NE(menu, nullptr);
        EXPECT_TRUE(menu->toolTipsVisible());
    }
}

TEST_F(DesktopRibbon, APressShowsAtOnceInTheStatusBarAndTheCursor) {
    window_.show();
    Entry()->trigger();
    // The feedback shows before the entry's work, which waits for the next passes of the loop.
    EXPECT_EQ(window_.statusBar()->currentMessage(), QStringLiteral("Opening Title…"));
    EXPECT_EQ(g_entry.executed, 0);
    ASSERT_TRUE(ProcessEventsUntil([] { return g_entry.executed == 1; }));
    EXPECT_EQ(g_entry.status, QStringLiteral("Opening Title…"));
    EXPECT_TRUE(g_entry.busy);
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
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
    script_.out.str("");
    app_.Answers().Queue("welcome", 1);
    EXPECT_EQ(WelcomeLike().exec(), 11);
    EXPECT_EQ(script_.TakeTexts(),
              (std::vector<std::string>{R"({"answer":1,"dialog":"welcome","title":"Welcome"})"}));
    EXPECT_EQ(WelcomeLike().exec(), 12);
    EXPECT_EQ(script_.TakeTexts(),
              (std::vector<std::string>{R"({"answer":2,"dialog":"welcome","title":"Welcome"})",
                                        R"({"unanswered":"welcome"})"}));
}

}  // namespace
}  // namespace pdfhost::testing
