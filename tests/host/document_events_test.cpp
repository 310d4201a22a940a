// The document lifecycle as plug-ins see it: which hooks fire, in which order, with what.

#include "recording_hooks.h"

namespace pdfhost::testing {
namespace {

using Calls = std::vector<std::string>;

class DocumentEvents : public HostFixture {
  protected:
    DocumentEvents() {
        path_ = WritePdf(files_, "three.pdf", ThreePages());
        Call<HostAppRegisterDocEvents>(hooks_.Record());
    }

    HostDocument& Open() { return OpenPath(path_); }
    HostDocument& Doc(int number) { return *app_.Documents().FindByNumber(number); }

    RecordingHooks hooks_;
    std::string path_;
};

TEST_F(DocumentEvents, AFileThatCannotBeOpenedFiresNothing) {
    const HostApp::OpenResult missing = app_.OpenDocument((files_ / "missing.pdf").string());
    EXPECT_EQ(missing.document, nullptr);
    EXPECT_EQ(Call<HostDocOpen>(L"/no/such.pdf", L"", 1, 0), nullptr);
    EXPECT_TRUE(hooks_.Take().empty());
    EXPECT_TRUE(app_.Documents().All().empty());
}

// Each step, the hooks it fires and the active document after it (0: none).
TEST_F(DocumentEvents, TabChangesFireTheirHooksAndAClosedActiveTabGivesWayToItsNeighbour) {
    Open();
    Open();
    Open();
    hooks_.Take();
    EXPECT_EQ(Call<HostAppGetDocByIndex>(0), Doc(1).Handle());
    const struct {
        std::function<void()> step;
        Calls calls;
        int active;
    } steps[] = {
        {[&] { app_.Activate(Doc(2)); }, {"activate 2"}, 2},
        {[&] { app_.Activate(Doc(2)); }, {}, 2},  // an active tab does not become active again
        {[&] { Call<HostDocClose>(Doc(2).Handle(), 0, 0, 0); }, {"closing 2", "activate 3"}, 3},
        {[&] { app_.CloseDocument(Doc(3)); }, {"closing 3", "activate 1"}, 1},
        {[&] { Open(); }, {"will-open", "did-open 4", "activate 4"}, 4},
        {[&] { app_.CloseDocument(Doc(1)); }, {"closing 1"}, 4},  // a background tab
        {[&] { app_.ActivateOtherTab(); }, {"other-tab"}, 0},
        {[&] { Call<HostAppActivateDoc>(Doc(4).Handle()); }, {"activate 4"}, 4},
        {[&] { app_.CloseDocument(Doc(4)); }, {"closing 4"}, 0},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        step.step();
        EXPECT_EQ(hooks_.Take(), step.calls);
        const HostDocument* active = app_.Documents().Active();
        EXPECT_EQ(active != nullptr ? active->Number() : 0, step.active);
        EXPECT_EQ(Call<HostAppGetActiveDoc>(), active != nullptr ? active->Handle() : nullptr);
    }
}

TEST_F(DocumentEvents, WhileTheActiveTabClosesTheTabTakingItsPlaceCountsAsActive) {
    Open();
    Open();
    hooks_.Take();
    HostDoc seen = nullptr;
    hooks_.duringNextHook = [&] { seen = Call<HostAppGetActiveDoc>(); };
    app_.CloseDocument(Doc(2));
    EXPECT_EQ(seen, Doc(1).Handle());
    // Closing the last one leaves no document: the closing hook sees none.
    hooks_.duringNextHook = [&] { seen = Call<HostAppGetActiveDoc>(); };
    app_.CloseDocument(Doc(1));
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 2", "activate 1", "closing 1"}));
}

TEST_F(DocumentEvents, ModifiedFiresOnceUntilASaveWritesAFullFile) {
    HostDocument& document = Open();
    hooks_.Take();
    EXPECT_EQ(Call<HostDocIsModified>(document.Handle()), 0);
    document.Engine().SetInfoString("Title", "Saved by the host");
    Call<HostDocSetChanged>(document.Handle());
    Call<HostDocSetChanged>(document.Handle());
    EXPECT_EQ(hooks_.Take(), (Calls{"modified 1"}));
    EXPECT_EQ(Call<HostDocIsModified>(document.Handle()), 1);

    EXPECT_EQ(Call<HostDocSave>(document.Handle(), 0, 0, 1, 0), 1);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1"}));
    EXPECT_EQ(Call<HostDocIsModified>(document.Handle()), 0);
    Call<HostDocSetChanged>(document.Handle());
    EXPECT_EQ(hooks_.Take(), (Calls{"modified 1"}));

    // A full save rewrites the file; an incremental one would only append to it.
    const std::string bytes = FileBytes(path_);
    EXPECT_EQ(bytes.find("%%EOF"), bytes.rfind("%%EOF"));
}

TEST_F(DocumentEvents, ANewDocumentIsTemporaryAndCannotBeSavedInPlace) {
    HostDocument& document = app_.NewDocument();
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 1", "activate 1"}));
    EXPECT_EQ(Call<HostDocIsTemporary>(document.Handle()), 1);
    EXPECT_EQ(Call<HostDocGetPageCount>(document.Handle()), 1);
    const HostDoc doc = document.Handle();
    EXPECT_EQ(ReadWide([&](HostWideString s) { Call<HostDocGetFilePath>(doc, s); }), L"");
    EXPECT_EQ(ReadWide([&](HostWideString s) { Call<HostDocGetFileName>(doc, s); }),
              L"Untitled-1.pdf");

    EXPECT_EQ(Call<HostDocSave>(document.Handle(), 0, 0, 1, 0), 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
}

TEST_F(DocumentEvents, HiddenDocumentsHaveNoTabButCloseWithTheHook) {
    Open();
    hooks_.Take();
    const HostDoc hidden = OpenQuietly(path_, /*readOnly=*/true);
    ASSERT_NE(hidden, nullptr);
    EXPECT_TRUE(hooks_.Take().empty());
    EXPECT_EQ(Call<HostAppGetDocCount>(), 1);
    EXPECT_EQ(Call<HostDocGetPageCount>(hidden), 3);
    Call<HostAppActivateDoc>(hidden);
    EXPECT_EQ(app_.Documents().Active()->Number(), 1);

    const HostDoc announced = Call<HostDocOpenHidden>(WideOf(path_).c_str(), nullptr);
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 3"}));

    Call<HostDocClose>(hidden, 0, 0, 0);
    Call<HostDocClose>(announced, 0, 0, 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 2", "closing 3"}));
    EXPECT_EQ(app_.Documents().Active()->Number(), 1);
}

TEST_F(DocumentEvents, HooksMayUnregisterAndCloseWhileTheyRun) {
    RecordingHooks second;
    Call<HostAppRegisterDocEvents>(second.Record());
    Call<HostAppRegisterDocEvents>(second.Record());  // once is enough
    // The first record unregisters the second during will-open: the second hears nothing more.
    hooks_.duringNextHook = [&] { Call<HostAppUnregisterDocEvents>(second.Record()); };
    Open();
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 1", "activate 1"}));
    EXPECT_TRUE(second.Take().empty());

    // Closing from inside the closing hook is ignored; the document goes once.
    hooks_.duringNextHook = [&] { Call<HostDocClose>(Doc(1).Handle(), 0, 0, 0); };
    app_.CloseDocument(Doc(1));
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 1"}));
    EXPECT_TRUE(app_.Documents().All().empty());
}

TEST_F(DocumentEvents, ClosedDocumentHandlesGiveNeutralResults) {
    HostDocument& document = Open();
    const HostDoc handle = document.Handle();
    const NdxDoc pdf = Call<HostDocGetPdfDoc>(handle);
    ASSERT_NE(pdf, nullptr);
    app_.CloseDocument(document);
    EXPECT_EQ(Call<HostDocGetPdfDoc>(handle), nullptr);
    EXPECT_EQ(Call<HostDocGetPageCount>(handle), 0);
    EXPECT_EQ(Call<HostDocGetPermissions>(handle), 0u);
    EXPECT_EQ(Call<NDXDocGetPageCount>(pdf), 0);
    EXPECT_EQ(Call<HostDocGetPageView>(handle, 0), nullptr);
    Call<HostDocSetChanged>(handle);
    Call<HostDocClose>(handle, 0, 0, 0);
    Call<HostAppActivateDoc>(handle);
    EXPECT_EQ(Call<HostDocSave>(handle, 0, 0, 1, 0), 0);
}

}  // namespace
}  // namespace pdfhost::testing
