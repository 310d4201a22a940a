// The task pane record's callbacks, and the host's document and application hooks: which event
// each sends, in which order, and how they keep the pane in step.
#include "app/task_pane_host.h"
#include "document/document_registry.h"
#include "host/extension_tables.h"
#include "shell_fixture.h"
#include "util/utf.h"

namespace {

class PaneAndHooksTest : public ShellFixture {
  protected:
    HostPaneRecord& Record() { return *host.paneRecords.at(0).second; }
    void* Client() { return Record().word(kPaneClientData); }

    template <typename Fn>
    Fn Word(std::size_t word) {
        return reinterpret_cast<Fn>(Record().word(word));
    }
    template <typename Hook>
    Hook DocHook(std::size_t word) {
        return reinterpret_cast<Hook>(host.docEventRecords.at(0)->word(word));
    }
    void* DocClient() { return host.docEventRecords.at(0)->word(kDocEventClientData); }

    // The pane open with its dialog, so that events reach the page.
    void OpenPane() {
        app.pane.SetShown(true);
        host.HostAppShowPane("BrevanTaskPane", 1);
        TakeEvents();
    }
};

TEST_F(PaneAndHooksTest, ThePaneWindowIsMadeOnceAndOnlyWhileTheUserWantsThePane) {
    const auto create = Word<HostPaneCreateFn>(kPaneCreateWindow);
    EXPECT_EQ(Word<HostPaneNameFn>(kPaneGetName)(Client()), std::string("BrevanTaskPane"));
    EXPECT_EQ(create(Client(), host.paneParent), nullptr);
    EXPECT_TRUE(platform.pageDialogParents.empty());

    app.pane.SetShown(true);
    EXPECT_EQ(create(Client(), nullptr), nullptr);
    const HostWindow window = create(Client(), host.paneParent);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(platform.pageDialogLog, (std::vector<std::string>{"pane Reload 0", "pane Show"}));
    EXPECT_EQ(create(Client(), host.paneParent), window);
    EXPECT_EQ(platform.pageDialogParents.size(), 1u);
    EXPECT_EQ(app.ActivePaneDialog(), app.panes.at(host.mainWindow)->dialog());

    Word<HostPaneDestroyFn>(kPaneDestroyWindow)(Client());
    EXPECT_EQ(app.ActivePaneDialog(), nullptr);
    EXPECT_EQ(app.panes.at(host.mainWindow)->dialog(), nullptr);
}

TEST_F(PaneAndHooksTest, TitleAndCaptionShowOnceThePaneIsOpenOnAHostWithItsBrowserTable) {
    const auto title = Word<HostPaneTextFn>(kPaneGetTitle);
    const auto caption = Word<HostPaneTextFn>(kPaneGetCaption);
    const HostExtTable found = app.browserExt->table;
    app.browserExt->table = reinterpret_cast<HostExtTable>(0x77);
    EXPECT_EQ(title(Client()), nullptr);
    EXPECT_EQ(caption(Client()), nullptr);
    app.pane.SetShown(true);
    ASSERT_NE(title(Client()), nullptr);
    EXPECT_EQ(host.HostWideStringData(title(Client())), std::wstring(L"Sable Mark"));
    EXPECT_EQ(caption(Client()), title(Client()));
    app.browserExt->table = nullptr;
    EXPECT_EQ(title(Client()), nullptr);
    app.browserExt->table = found;
}

TEST_F(PaneAndHooksTest, ClosingThePaneForgetsItUnlessThePluginHidesItItself) {
    const auto closed = Word<HostPaneClosedFn>(kPaneClosed);
    app.pane.SetShown(true);
    app.pane.HideByPlugin([&] { EXPECT_EQ(closed(Client()), 1); });
    EXPECT_TRUE(app.pane.shown());
    EXPECT_EQ(closed(Client()), 1);
    EXPECT_FALSE(app.pane.shown());
}

TEST_F(PaneAndHooksTest, OpeningActivatingSavingAndClosingTellThePageInOrder) {
    OpenPane();
    DocHook<HostDocHookNoDoc>(kDocEventWillOpen)(DocClient());
    HostDoc doc = host.Open(FileDoc(L"/d/a.pdf"));
    std::wstring id;
    ASSERT_TRUE(app.documents->findIdByDoc(doc, id));
    // The event of this document named `name`.
    const auto event = [&id](const std::string& name) {
        return R"({"data":{"id":")" + ToUtf8(id) + R"("},"name":")" + name + R"("})";
    };
    EXPECT_EQ(TakeEvents(),
              (std::vector<std::string>{R"({"data":null,"name":"ev-doc-before-open"})",
                                        event("ev-doc-open-success"), event("ev-doc-activate")}));

    DocHook<HostDocHook>(kDocEventModified)(DocClient(), doc);
    app.batchMode = true;
    DocHook<HostDocHook>(kDocEventModified)(DocClient(), doc);
    app.batchMode = false;
    DocHook<HostDocSaveHook>(kDocEventDidSave)(DocClient(), doc, 1);
    FakeControl field{.name = L"form.name", .value = L"Jane"};
    DocHook<HostDocFieldHook>(kDocEventFieldChanged)(DocClient(), doc,
                                                     reinterpret_cast<NdxFormField>(&field));
    EXPECT_EQ(TakeEvents(), (std::vector<std::string>{
                                event("ev-doc-modified"), event("ev-doc-saved"),
                                R"({"data":{"fieldName":"form.name","id":")" + ToUtf8(id) +
                                    R"(","value":"Jane"},"name":"ev-doc-form-field-changed"})"}));

    // The closed event still carries the id; the registry forgets it afterwards.
    host.Close(doc);
    EXPECT_EQ(TakeEvents(), std::vector<std::string>{event("ev-doc-closed")});
    EXPECT_FALSE(app.documents->findIdByDoc(doc, id));
    EXPECT_FALSE(app.pane.shown());
}

TEST_F(PaneAndHooksTest, AStartPageHidesThePaneAndTheNextPdfTabLeavesItHidden) {
    HostDoc doc = host.Open(FileDoc(L"/d/a.pdf"));
    OpenPane();
    host.paneCalls.clear();
    DocHook<HostDocHookNoDoc>(kDocEventOtherTab)(DocClient());
    EXPECT_EQ(TakeEvents(),
              std::vector<std::string>{R"({"data":{"id":"0"},"name":"ev-doc-activate"})"});
    EXPECT_EQ(host.paneCalls, (std::vector<std::pair<std::string, int>>{{"BrevanTaskPane", 0}}));
    EXPECT_FALSE(app.pane.shown());
    EXPECT_FALSE(app.pane.hiding());

    DocHook<HostDocHook>(kDocEventActivate)(DocClient(), doc);
    EXPECT_EQ(host.paneCalls.back(), std::make_pair(std::string("BrevanTaskPane"), 0));
}

TEST_F(PaneAndHooksTest, AChangedAppearanceReloadsTheActivePanesPageWithANewAddress) {
    const auto& record = *host.appEventRecords.at(0);
    const auto changed = reinterpret_cast<HostAppHook>(record.word(kAppEventPageAppearanceChanged));
    ASSERT_NE(changed, nullptr);
    changed(record.word(kAppEventClientData));  // no dialog yet: nothing to reload
    EXPECT_TRUE(platform.pageDialogLog.empty());
    OpenPane();
    changed(record.word(kAppEventClientData));
    EXPECT_EQ(platform.pageDialogLog, std::vector<std::string>{"pane Reload 1"});
}

}  // namespace
