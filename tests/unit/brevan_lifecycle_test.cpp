// The application object's life: what Init registers, what Unload takes down, how the document
// hooks keep the registry and the pane in step, and a configuration that refuses the start.
#include <fstream>

#include "app/doc_event_record.h"
#include "config/brevan_config.h"
#include "plugin_fixture.h"

namespace {

using BrevanLifecycleTest = PluginFixture;

TEST_F(BrevanLifecycleTest, InitRegistersTheHooksAndUnloadTakesEverythingDown) {
    EXPECT_EQ(host.docEventRecords.size(), 1u);
    EXPECT_EQ(host.appEventRecords.size(), 1u);
    ASSERT_TRUE(app.documents);
    EXPECT_EQ(app.Unload(), 1);
    EXPECT_TRUE(host.docEventRecords.empty());
    EXPECT_FALSE(app.config);
    EXPECT_FALSE(app.documents);
    EXPECT_FALSE(app.docEvents);
    EXPECT_EQ(host.liveResources, 0);
    EXPECT_EQ(host.liveStrings, 0);
}

TEST_F(BrevanLifecycleTest, OpenedDocumentsAreRegisteredTemporaryOnesWithoutPath) {
    FakeDoc file;
    file.path = L"/d/one.pdf";
    HostDoc one = host.Open(file);
    FakeDoc temporary;
    temporary.temporary = true;
    temporary.path = L"/tmp/scratch";
    HostDoc two = host.Open(temporary);
    std::wstring id;
    std::wstring path;
    ASSERT_TRUE(app.documents->findIdByDoc(one, id));
    EXPECT_TRUE(app.documents->pathOf(id, path));
    EXPECT_EQ(path, L"/d/one.pdf");
    ASSERT_TRUE(app.documents->findIdByDoc(two, id));
    EXPECT_FALSE(app.documents->pathOf(id, path));
}

TEST_F(BrevanLifecycleTest, ClosingTheLastDocumentHidesThePaneUnlessATemporarySaveClosedIt) {
    HostDoc a = host.Open(FakeDoc{});
    HostDoc b = host.Open(FakeDoc{});
    app.pane.SetShown(true);
    host.paneCalls.clear();
    host.Close(a);
    EXPECT_TRUE(host.paneCalls.empty());
    EXPECT_TRUE(app.pane.shown());
    app.temporarySave.Start(true);
    host.Close(b);
    EXPECT_TRUE(host.paneCalls.empty());
    EXPECT_TRUE(app.pane.shown());
    EXPECT_FALSE(app.temporarySave.underway());

    HostDoc c = host.Open(FakeDoc{});
    host.paneCalls.clear();
    host.Close(c);
    ASSERT_EQ(host.paneCalls.size(), 1u);
    EXPECT_EQ(host.paneCalls[0], std::make_pair(std::string("BrevanTaskPane"), 0));
    EXPECT_FALSE(app.pane.shown());
}

TEST_F(BrevanLifecycleTest, ActivationFollowsTheLastPaneChoice) {
    app.pane.SetShown(true);
    host.paneCalls.clear();
    host.Open(FakeDoc{});
    ASSERT_FALSE(host.paneCalls.empty());
    EXPECT_EQ(host.paneCalls.back().second, 1);
}

TEST_F(BrevanLifecycleTest, SavingRebindsThePathAndNotesASavedTemporaryDocument) {
    FakeDoc doc;
    doc.temporary = true;
    HostDoc handle = host.Open(doc);
    host.Doc(handle).path = L"/d/saved.pdf";
    host.Doc(handle).temporary = false;
    const auto save =
        reinterpret_cast<HostDocSaveHook>(host.docEventRecords[0]->word(kDocEventDidSave));
    void* client = host.docEventRecords[0]->word(kDocEventClientData);
    save(client, handle, 0);
    std::wstring id;
    std::wstring path;
    ASSERT_TRUE(app.documents->findIdByDoc(handle, id));
    EXPECT_FALSE(app.documents->pathOf(id, path));  // a failed save changes nothing
    app.temporarySave.Start(true);
    save(client, handle, 1);
    EXPECT_TRUE(app.documents->pathOf(id, path));
    EXPECT_EQ(path, L"/d/saved.pdf");
    EXPECT_TRUE(app.temporarySave.saved());
}

TEST(BrevanStartTest, BrokenBooleanInTheConfigurationRefusesTheStartWithAMessage) {
    FakeHost host;
    FakePlatform platform;
    const auto folder = host.userData / ToUtf8(deployment::kServiceFolder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "brevan.config") << R"({"logger_output": 1})";
    Brevan app;
    app.Attach(host, platform);
    app.ImportTables();
    EXPECT_EQ(app.Init(), 0);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_NE(host.messages[0].find(L"logger_output"), std::wstring::npos);
    EXPECT_TRUE(host.docEventRecords.empty());
    EXPECT_FALSE(app.config);
}

TEST(BrevanStartTest, CurrentDocumentIsTheBatchDocumentDuringABatch) {
    FakeHost host;
    FakePlatform platform;
    Brevan app;
    app.Attach(host, platform);
    HostDoc active = host.Open(FakeDoc{});
    EXPECT_EQ(app.GetCurrentDoc(), active);
    app.batchMode = true;
    app.batchDocument = nullptr;
    EXPECT_EQ(app.GetCurrentDoc(), nullptr);
}

}  // namespace
