// The application object's life: what Init registers, what Unload takes down, how a save rebinds
// the registry, and which document is current during a batch.
#include "app/doc_event_record.h"
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
