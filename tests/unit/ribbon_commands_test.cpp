// The ribbon items the plug-in adds, their enable rules, the sign-in gate in front of every
// entry, what the entries then do, and the one-time greeting.
#include "app/sign_in_gate.h"
#include "attached_plugin.h"
#include "shell_fixture.h"

namespace {

using RibbonTest = ShellFixture;

FakeRibbonNode* Entry(FakeHost& host, HostFrame frame, const std::wstring& name) {
    return host.Find(frame,
                     {L"Ribbon_Category_Protect", L"Protect_Panel_Redaction", L"Sablemark", name});
}

TEST_F(RibbonTest, TheDropDownAndItsEntriesAreBuiltOnceAndEachWindowGetsAPane) {
    const FakeRibbonNode* category = host.Find(frame, {L"Ribbon_Category_Protect"});
    ASSERT_NE(category, nullptr);
    const FakeRibbonNode* button =
        host.Find(frame, {L"Ribbon_Category_Protect", L"Protect_Panel_Redaction", L"Sablemark"});
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->type, 8);
    // Each entry runs a command; only the document-dependent ones ask to be enabled.
    const std::pair<const wchar_t*, bool> entries[] = {
        {L"AutoRedaction", true}, {L"BatchRedact", true}, {L"Profile", false}};
    ASSERT_EQ(button->children.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const FakeRibbonNode& entry = *button->children[i];
        EXPECT_EQ(entry.name, entries[i].first);
        EXPECT_EQ(entry.position, static_cast<int>(i));
        EXPECT_NE(entry.execute, nullptr);
        EXPECT_EQ(entry.enable != nullptr, entries[i].second) << i;
    }
    EXPECT_EQ(host.categoriesAdded, 1);
    EXPECT_EQ(host.elementsAdded, 1);
    ASSERT_EQ(host.paneRecords.size(), 1u);
    EXPECT_EQ(host.paneRecords[0].second->size, sizeof(HostPaneRecord));

    // A second window of the same ribbon: no second drop-down, but a pane host of its own.
    host.ribbons[reinterpret_cast<HostFrame>(0x600)] = std::move(host.ribbons[frame]);
    host.mainWindow = reinterpret_cast<HostWindow>(0x1001);
    app.OnMainFrameCreated(reinterpret_cast<HostFrame>(0x600));
    EXPECT_EQ(host.categoriesAdded, 1);
    EXPECT_EQ(host.elementsAdded, 1);
    EXPECT_EQ(app.panes.size(), 2u);
    EXPECT_EQ(host.paneRecords.size(), 2u);

    app.OnMainFrameClosing(reinterpret_cast<HostFrame>(0x600));
    EXPECT_EQ(app.panes.size(), 1u);
    EXPECT_TRUE(app.panes.contains(reinterpret_cast<HostWindow>(0x1000)));
}

TEST_F(RibbonTest, TheHostsCategoryAndPanelAreReusedAndNoBarMeansNoItems) {
    const HostFrame second = reinterpret_cast<HostFrame>(0x600);
    host.Make(second, {L"Ribbon_Category_Protect", L"Protect_Panel_Redaction", L"HostTool"});
    host.categoriesAdded = 0;
    host.panelsAdded = 0;
    host.mainWindow = reinterpret_cast<HostWindow>(0x1001);
    app.OnMainFrameCreated(second);
    EXPECT_EQ(host.categoriesAdded, 0);
    EXPECT_EQ(host.panelsAdded, 0);
    const FakeRibbonNode* panel =
        host.Find(second, {L"Ribbon_Category_Protect", L"Protect_Panel_Redaction"});
    ASSERT_EQ(panel->children.size(), 2u);
    EXPECT_EQ(panel->children[1]->name, L"Sablemark");

    host.noRibbon = true;
    host.mainWindow = reinterpret_cast<HostWindow>(0x1002);
    app.OnMainFrameCreated(reinterpret_cast<HostFrame>(0x700));
    EXPECT_EQ(host.ribbons.count(reinterpret_cast<HostFrame>(0x700)), 0u);
    EXPECT_EQ(app.panes.size(), 3u);
}

TEST_F(RibbonTest, AutoRedactionNeedsADocumentAndBatchRedactionNeedsNone) {
    FakeRibbonNode* autoRedaction = Entry(host, frame, L"AutoRedaction");
    FakeRibbonNode* batch = Entry(host, frame, L"BatchRedact");
    EXPECT_EQ(autoRedaction->enable(autoRedaction), 0);
    EXPECT_EQ(batch->enable(batch), 1);
    host.Open(FileDoc(L"/d/a.pdf"));
    EXPECT_EQ(autoRedaction->enable(autoRedaction), 1);
    EXPECT_EQ(batch->enable(batch), 0);
}

TEST_F(RibbonTest, ASignedOutUserMeetsTheWelcomeAtEveryPressAndNotNowStops) {
    host.Open(FileDoc(L"/d/a.pdf"));
    platform.welcomeAnswers = {SignInGate::kCancel, SignInGate::kCancel};
    EXPECT_TRUE(Press(L"AutoRedaction"));
    EXPECT_EQ(platform.welcomeDialogs.size(), 1u);
    EXPECT_EQ(platform.welcomeDialogs[0].first, host.mainWindow);
    EXPECT_FALSE(Pref(L"welcome").empty());
    SetWelcomeStamp(L"stale");
    EXPECT_TRUE(Press(L"Profile"));
    EXPECT_EQ(platform.welcomeDialogs.size(), 2u);
    EXPECT_NE(Pref(L"welcome"), L"stale");
    EXPECT_FALSE(app.pane.shown());
    EXPECT_FALSE(app.accountPage);
    EXPECT_TRUE(host.account.signInTexts.empty());
    EXPECT_TRUE(platform.pageDialogParents.empty());
}

TEST_F(RibbonTest, TheWelcomeAnswersDecideTheSignIn) {
    struct Case {
        const char* what;
        int answer;
        bool signInShows;
        bool signInSignsIn;
        int hasWindow;
        bool opens;
        std::size_t signIns;
    };
    const Case cases[] = {
        {"sign in", SignInGate::kSignIn, true, true, 0, true, 1},
        {"sign in refused", SignInGate::kSignIn, true, false, 0, false, 1},
        {"sign in window not shown", SignInGate::kSignIn, false, false, 0, false, 1},
        // Sign-up in the host's window, then the sign-in that a signed-out user still needs.
        {"sign up", SignInGate::kSignUp, true, true, 1, true, 1},
        {"sign up refused", SignInGate::kSignUp, true, true, 0, false, 0},
        {"not now", SignInGate::kCancel, true, true, 0, false, 0}};
    host.Open(FileDoc(L"/d/a.pdf"));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        host.account.signedIn = false;
        host.account.signInAnswer = c.signInShows ? 1 : 0;
        host.account.signInSignsIn = c.signInSignsIn;
        host.account.hasWindow = c.hasWindow;
        host.account.signInTexts.clear();
        host.account.hasWindowCalls.clear();
        app.pane.SetShown(false);
        platform.welcomeAnswers = {c.answer};
        Press(L"AutoRedaction");
        EXPECT_EQ(app.pane.shown(), c.opens);
        EXPECT_EQ(host.account.signInTexts.size(), c.signIns);
        if (c.answer == SignInGate::kSignUp) {
            EXPECT_EQ(host.account.hasWindowCalls, std::vector<HostWindow>{host.mainWindow});
        }
    }
}

TEST_F(RibbonTest, WithoutTheSignInTableTheCommandsStopAtSignIn) {
    FakeHost bare;  // no "login" table
    AttachedPlugin plugin(bare);
    Brevan& app2 = plugin.app;
    FakePlatform& platform2 = plugin.platform;
    app2.ImportTables();
    ASSERT_EQ(app2.Init(), 1);
    app2.OnMainFrameCreated(frame);
    bare.Open(FileDoc(L"/d/a.pdf"));
    bare.paneCalls.clear();
    platform2.welcomeAnswers = {SignInGate::kSignIn};
    FakeRibbonNode* entry = Entry(bare, frame, L"AutoRedaction");
    ASSERT_NE(entry, nullptr);
    entry->execute(entry);
    EXPECT_EQ(platform2.welcomeDialogs.size(), 1u);
    EXPECT_TRUE(bare.account.signInTexts.empty());  // no sign-in window without the table
    EXPECT_FALSE(app2.pane.shown());
    EXPECT_TRUE(bare.paneCalls.empty());
    app2.Unload();
}

TEST_F(RibbonTest, AutoRedactionOpensThePaneOnHomeAndProfileOnTheAccountPage) {
    host.Open(FileDoc(L"/d/a.pdf"));
    host.account.signedIn = true;
    SetWelcomeStamp(L"2026-01-01 10:00:00");
    host.paneCalls.clear();
    app.accountPage = true;
    EXPECT_TRUE(Press(L"AutoRedaction"));
    EXPECT_EQ(host.paneCalls, (std::vector<std::pair<std::string, int>>{{"BrevanTaskPane", 1}}));
    EXPECT_TRUE(app.pane.shown());
    EXPECT_FALSE(app.accountPage);
    // The pane's dialog was made by the showing, over the host's parent, and loaded once.
    EXPECT_EQ(platform.pageDialogParents, std::vector<HostWindow>{host.paneParent});
    EXPECT_EQ(TakeEvents(), std::vector<std::string>{ToPage("home")});

    // Pressed again with the pane open: the page hears it again.
    EXPECT_TRUE(Press(L"AutoRedaction"));
    EXPECT_EQ(TakeEvents(), std::vector<std::string>{ToPage("home")});
    EXPECT_TRUE(Press(L"Profile"));
    EXPECT_TRUE(app.accountPage);
    EXPECT_EQ(TakeEvents(), std::vector<std::string>{ToPage("my-plan")});
    EXPECT_EQ(platform.pageDialogParents.size(), 1u);
}

TEST_F(RibbonTest, TheInfoStepIsDueOnlyWithoutAWelcomeAndAfterItsDays) {
    host.account.signedIn = true;
    std::time_t now = 0;
    SignInGate gate(app.signInGateServices(), [&now] { return now; });
    std::tm day{};
    day.tm_year = 126;
    day.tm_mon = 2;
    day.tm_mday = 10;
    day.tm_hour = 12;
    day.tm_isdst = -1;
    now = std::mktime(&day);

    EXPECT_EQ(gate.ShowWelcome(false, 3), 2);  // no stamp yet: shown, the fake cancels
    EXPECT_EQ(platform.infoDialogs.size(), 1u);
    EXPECT_EQ(Pref(L"lastTime"), L"2026-03-10 12:00:00");

    now += 2 * 86400;
    platform.infoAnswers = {3};
    EXPECT_EQ(gate.ShowWelcome(false, 3), SignInGate::kNothingShown);
    now += 86400;
    EXPECT_EQ(gate.ShowWelcome(false, 3), 3);
    EXPECT_EQ(platform.infoDialogs.size(), 2u);
    EXPECT_EQ(Pref(L"lastTime"), L"2026-03-13 12:00:00");
    // Without a day count an existing stamp is enough to stay quiet.
    now += 30 * 86400;
    EXPECT_EQ(gate.ShowWelcome(false, -1), SignInGate::kNothingShown);

    SetWelcomeStamp(L"2026-01-01 10:00:00");
    host.preferences.erase({kSection, L"lastTime"});
    EXPECT_EQ(gate.ShowWelcome(false, 3), SignInGate::kNothingShown);
    EXPECT_EQ(platform.infoDialogs.size(), 2u);
    EXPECT_TRUE(platform.welcomeDialogs.empty());
}

TEST_F(RibbonTest, TheGreetingShowsOnceWhenTheSurfaceIsReady) {
    ASSERT_EQ(host.bubbleRecords.size(), 1u);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(host.bubbleRecords[0].second->word(1)), 24u);
    host.NotifyBubbles(0);
    EXPECT_TRUE(host.bubbles.empty());
    app.pluginId = 7;
    host.NotifyBubbles(1);
    ASSERT_EQ(host.bubbles.size(), 1u);
    EXPECT_NE(host.bubbles[0].text.find(L"<b>\"Auto Redaction\"</b>"), std::wstring::npos);
    EXPECT_EQ(host.bubbles[0].pluginId, 7u);
    EXPECT_EQ(host.bubbles[0].milliseconds, 10000);
    EXPECT_EQ(host.bubbles[0].style, 2);
    EXPECT_EQ((host.intPrefs[{kSection, L"Greeting"}]), 1);
    host.NotifyBubbles(1);
    EXPECT_EQ(host.bubbles.size(), 1u);

    app.Unload();
    EXPECT_TRUE(host.bubbleRecords.empty());
}

}  // namespace
