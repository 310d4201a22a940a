// Events to the page: their exact texts, the file id they carry, and which page receives them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bridge/page_events.h"
#include "bridge/page_script.h"
#include "document/document_registry.h"
#include "fake_host.h"
#include "fake_page_dialog.h"
#include "plugin_fixture.h"

namespace {

class PageEventsTest : public PluginFixture {
  protected:
    ~PageEventsTest() override { app.paneDialogs.clear(); }

    // Gives the current main window a pane dialog and forgets what happened so far.
    void AddPane() {
        app.paneDialogs[host.mainWindow] = &pane;
        log.clear();
    }

    // What the pane's page received, as the JSON argument of each call.
    std::vector<std::string> PaneEvents() const {
        const std::string prefix = "pane CallScript __dispatchEvent ";
        std::vector<std::string> events;
        for (const std::string& line : log) {
            if (line.starts_with(prefix))
                events.push_back(line.substr(prefix.size()));
        }
        return events;
    }

    std::string IdOf(HostDoc doc) {
        std::wstring id;
        EXPECT_TRUE(app.documents->findIdByDoc(doc, id));
        return ToUtf8(id);
    }

    std::vector<std::string> log;
    FakePageDialog pane{log, "pane"};
};

// The texts of the document and sign-out events are the pane and account tests' to check; these
// two show the line feed after an event without data and the escaping of a field's value.
TEST_F(PageEventsTest, EventTextsEndInALineFeedAndEscapeTheirValues) {
    const HostDoc doc = host.Open(FileDoc(L"/docs/a.pdf"));
    const std::string id = IdOf(doc);
    AddPane();
    DocOpenFailedEvent(app).Send();
    DocFormFieldChangedEvent(app, doc, L"Name", L"J\u00f6rg \"J\"").Send();
    EXPECT_EQ(PaneEvents(), (std::vector<std::string>{
                                "{\"name\":\"ev-doc-open-failed\"}\n",
                                "{\"data\":{\"fieldName\":\"Name\",\"id\":\"" + id +
                                    "\",\"value\":\"J\\u00f6rg "
                                    "\\\"J\\\"\"},\"name\":\"ev-doc-form-field-changed\"}\n"}));
}

TEST_F(PageEventsTest, FileIdComesFromTheHandleThenFromThePathAndIsNeverMade) {
    const HostDoc known = host.Open(FileDoc(L"/docs/known.pdf"));
    const HostDoc byPath = host.Open(FileDoc(L"/docs/by-path.pdf"));
    const std::string pathId = IdOf(byPath);
    app.documents->forgetDoc(FromUtf8(pathId));
    const HostDoc stranger = host.Open(FileDoc(L"/docs/stranger.pdf"));
    std::wstring strangerId;
    ASSERT_TRUE(app.documents->findIdByDoc(stranger, strangerId));
    app.documents->erase(strangerId);
    const std::size_t records = app.documents->records().size();

    EXPECT_EQ(ToUtf8(DocClosedEvent(app, known).fileId()), IdOf(known));
    EXPECT_EQ(ToUtf8(DocClosedEvent(app, byPath).fileId()), pathId);
    EXPECT_EQ(DocClosedEvent(app, stranger).fileId(), L"");
    EXPECT_EQ(app.documents->records().size(), records);

    AddPane();
    DocSavedEvent(app, stranger).Send();
    EXPECT_EQ(PaneEvents(),
              std::vector<std::string>{"{\"data\":{\"id\":\"\"},\"name\":\"ev-doc-saved\"}\n"});
}

TEST_F(PageEventsTest, OnlyThePaneOfTheCurrentMainWindowReceivesEvents) {
    UserSignOutEvent(app).Send();  // no pane at all: dropped
    FakePageDialog other(log, "other");
    app.paneDialogs[reinterpret_cast<HostWindow>(0x2000)] = &other;
    UserSignOutEvent(app).Send();  // the current window has no pane: dropped
    EXPECT_TRUE(log.empty());

    AddPane();
    UserSignOutEvent(app).Send();
    EXPECT_EQ(log, std::vector<std::string>{
                       "pane CallScript __dispatchEvent {\"name\":\"ev-user-sign-out\"}\n"});
}

TEST(DispatchEventScriptTest, ArgumentsGoInFromTheLastToTheFirstWithNothingBetween) {
    EXPECT_EQ(DispatchEventScript({L"{\"a\":1}\n"}), L" window.__dispatchEvent({\"a\":1}\n);");
    EXPECT_EQ(DispatchEventScript({L"1", L"2", L"3"}), L" window.__dispatchEvent(321);");
    EXPECT_EQ(DispatchEventScript({}), L" window.__dispatchEvent();");
}

}  // namespace
